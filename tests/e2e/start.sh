#!/usr/bin/env bash
# The real program on its default book: its size and first stanza. Moved
# partly off the screen, its title bar in reach, resized by the window manager
# and closed by the close box, it is recorded and put back there, and starts
# and closes without a touch neither move nor grow it. Stored out of reach, it
# comes wholly onto the screen. Then without a book: the import page alone,
# and quit by Ctrl+Q.
source "$(dirname "$0")/lib.sh"
dir=$(install_program "$DATA/Verlis.txt")
geometry() { # x y width height of a window, the program's by default
  bounded 10 xwininfo -id "${1:-$WIN}" | awk '/Absolute upper-left X:/ {x=$4} /Absolute upper-left Y:/ {y=$4}
    /Width:/ {w=$2} /Height:/ {h=$2} END {print x, y, w, h}'
}
frame() { geometry "$(bounded 10 xwininfo -tree -id "$WIN" | awk '/Parent window id:/ {print $4}')"; } # the window manager's
record() { od -An -tx1 -N 20 "$PREFS" | tr -d ' \n'; } # size, name, left, top, width, height, styles
stored() { # the record of a window at LEFT TOP WIDTH HEIGHT, black on white
  printf '\x0b\x06system'
  for v in "$@"; do printf "$(printf '\\x%02x\\x%02x' $((v >> 8 & 255)) $((v & 255)))"; done
  printf '\0%.0s' {1..44}; printf '\x3f\xf0\0\0\0\0\0\0'
}
inside() { read -r x y w h <<<"$(frame)" && ((x >= 0 && y >= 0 && x + w <= ${screen% *} && y + h <= ${screen#* })); }

start_program "$dir"
read -r _ _ width height <<<"$(geometry)" && bar=$((height - 516))
check "window width" 552 "$width"
((bar >= 10 && bar <= 60)) && pass || fail "client height 516 below a menu bar: window is $width x $height"
shows_default "default book"
bounded 10 xdotool windowmove "$WIN" -100 200 windowsize "$WIN" 700 $((600 + bar))
sleep 0.5
moved=$(geometry)
keys alt+F4 # the window manager closes it, as with the close box
wait_exit
check "exit status after the close box" 0 "$EXIT_STATUS"
check "record after the close box" "0b0673797374656d""ff9c00c802bc0258""00000000" "$(record)"
for run in 1 2 3 4; do # back where it was moved, and neither moves nor grows
  start_program "$dir"
  check "window at start $run" "$moved" "$(geometry)"
  keys ctrl+w
  wait_exit
done

screen=$(bounded 10 xwininfo -root | awk '/Width:/ {w=$2} /Height:/ {h=$2} END {print w, h}')
for geometry in "3000 2500 552 516" "-975 -1451 25772 26894"; do
  stored $geometry >"$PREFS"
  start_program "$dir"
  wait_until 5 "the window stored at $geometry inside the screen" inside || fail "stored at $geometry: frame $(frame) on $screen"
  keys ctrl+q
  wait_exit
done

rm -f "$PREFS"
start_program "$(install_program)"
check "windows of the program" 1 "$(bounded 10 xdotool search --onlyvisible --pid "$APP_PID" 2>/dev/null | wc -l)"
keys ctrl+q
wait_exit
check "record after Ctrl+Q" "0b0673797374656d""0064006402280204""00000000" "$(record)"
finish
