#!/usr/bin/env bash
# The window moved and resized by the window manager is recorded and put
# back there, and starts and closes without a touch neither move nor grow it.
# (The record's bytes after each way of ending: start.sh and signals.sh.)
source "$(dirname "$0")/lib.sh"
here=$(cd "$(dirname "$0")" && pwd)
dir=$(install_program "$here/../../data/Verlis.txt")

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
