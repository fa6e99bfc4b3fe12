#!/usr/bin/env bash
# Starts the real program on its default book and without one, looks at the
# window, saves a screenshot and closes it.
source "$(dirname "$0")/lib.sh"
here=$(cd "$(dirname "$0")" && pwd)
out_dir=$(dirname "$PROGRAM")

dir=$(install_program "$here/../../data/Verlis.txt")
start_program "$dir"
size=$(bounded 10 xwininfo -id "$WIN" | awk '/Width:/ {w=$2} /Height:/ {h=$2} END {print w "x" h}')
bar=$((${size#*x} - 516))
check "window width" 552 "${size%x*}"
if [ "$bar" -ge 10 ] && [ "$bar" -le 60 ]; then pass; else fail "client height 516 below a menu bar: window is $size"; fi
bounded 20 import -window root "$out_dir/e2e-start.png"
poem=$(copied_poem)
first=$(sed -n 1,4p <<<"$poem" | tr '\n' '|')
check "first stanza of the default book" "$(grep -v '^$' "$here/../../data/Verlis.txt" | sed -n 1,4p | tr '\n' '|')" "$first"
keys alt+F4 # the window manager closes it, as with the close box
wait_exit
check "exit status after closing" 0 "$EXIT_STATUS"
record() { od -An -tx1 -N 20 "$PREFS" | tr -d ' \n'; } # size, name, geometry, styles
check "record after the close box" "0b0673797374656d0064006402280204""00000000" "$(record)"

# Without a book: the import page and no message.
rm -f "$PREFS"
dir=$(install_program)
start_program "$dir"
check "windows of the program" 1 "$(bounded 10 xdotool search --onlyvisible --pid "$APP_PID" 2>/dev/null | wc -l)"
bounded 20 import -window root "$out_dir/e2e-no-book.png"
keys ctrl+q
wait_exit
check "exit status after quitting" 0 "$EXIT_STATUS"
check "record after Ctrl+Q" "0b0673797374656d0064006402280204""00000000" "$(record)"
finish
