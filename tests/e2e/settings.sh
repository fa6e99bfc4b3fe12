#!/usr/bin/env bash
# A style toggled from the keyboard is in the preferences file after Ctrl+W
# and comes back at the next start; the window stands where it stood.
source "$(dirname "$0")/lib.sh"
here=$(cd "$(dirname "$0")" && pwd)
dir=$(install_program "$here/../../data/Verlis.txt")

byte_at() { od -An -tu1 -j "$1" -N1 "$PREFS" | tr -d ' '; }

start_program "$dir"
keys super+ctrl+b
keys ctrl+w
wait_exit
check "exit status" 0 "$EXIT_STATUS"
check "file length for the font name system" 68 "$(stat -c %s "$PREFS")"
check "size byte" 11 "$(byte_at 0)"
check "font name" "system" "$(dd if="$PREFS" bs=1 skip=2 count=6 2>/dev/null)"
check "bold byte" 1 "$(byte_at 16)"
check "italic byte" 0 "$(byte_at 17)"
check "geometry (left, top, width, height)" "0064 0064 0228 0204" \
  "$(od -An -tx1 -j 8 -N 8 "$PREFS" | tr -d ' \n' | sed 's/..../& /g; s/ $//')"

# Bold again: the toggle turns it off, so the stored byte must have been read.
start_program "$dir"
keys super+ctrl+b
keys ctrl+w
wait_exit
check "bold read back and toggled off" 0 "$(byte_at 16)"

# Moved and resized by the window manager: recorded, and put back there.
geometry() { bounded 10 xwininfo -id "$WIN" | awk '/Absolute upper-left X:/ {x=$4} /Absolute upper-left Y:/ {y=$4} /Width:/ {w=$2} /Height:/ {h=$2} END {print x "," y " " w "x" h}'; }
start_program "$dir"
bar=$(($(bounded 10 xwininfo -id "$WIN" | awk '/Height:/ {print $2}') - 516))
bounded 10 xdotool windowmove "$WIN" 300 200 windowsize "$WIN" 700 $((600 + bar))
sleep 0.5
moved=$(geometry)
keys ctrl+w
wait_exit
check "moved and resized geometry (left, top, width, height)" "012c 00c8 02bc 0258" \
  "$(od -An -tx1 -j 8 -N 8 "$PREFS" | tr -d ' \n' | sed 's/..../& /g; s/ $//')"
start_program "$dir"
check "the window back where it was moved" "$moved" "$(geometry)"
keys ctrl+w
wait_exit

# Ten starts and closes without touching the window: it neither moves nor grows.
first=""
for run in $(seq 10); do
  start_program "$dir"
  where=$(geometry)
  [ -z "$first" ] && first=$where
  keys ctrl+w
  wait_exit
  check "window at run $run" "$first" "$where"
done
finish
