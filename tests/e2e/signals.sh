#!/usr/bin/env bash
# Asked to end by a signal, as a session, a service manager or a closed
# terminal asks, the program ends as a user's quit does: a style chosen in
# that run is in the preferences file, and the exit status is 0.
source "$(dirname "$0")/lib.sh"
dir=$(install_program "$DATA/Verlis.txt")
bold=0
for signal in TERM HUP; do
  start_program "$dir"
  keys super+ctrl+b # bold toggles each run
  bold=$((1 - bold))
  copied_poem >/dev/null # the program handles its input in order: the key has been taken
  kill -s "$signal" "$APP_PID"
  wait_exit
  check "exit status after SIG$signal" 0 "$EXIT_STATUS"
  check "bold byte after SIG$signal" "$bold" "$(od -An -tu1 -j 16 -N1 "$PREFS" | tr -d ' ')"
done
finish
