# Helpers for the end-to-end tests: the real program in a real X server.
# Sourced by the scripts; scripts/xsession.sh has set DISPLAY and HOME.
set -euo pipefail

PROGRAM=${1:?usage: $0 path/to/verlis}
PREFS="$HOME/.config/Verlis Preferences"
FAILURES=0
PASSES=0

fail() { echo "FAIL: $*"; FAILURES=$((FAILURES + 1)); }
pass() { PASSES=$((PASSES + 1)); }
check() { # check "what" expected actual
  if [ "$2" == "$3" ]; then pass; else fail "$1: expected [$2], got [$3]"; fi
}

# A copy of the program in a folder of its own, with the given book beside it
# (or none): prints the folder.
install_program() {
  local dir
  dir=$(mktemp -d)
  cp "$PROGRAM" "$dir/verlis"
  [ -n "${1:-}" ] && cp "$1" "$dir/Verlis.txt"
  echo "$dir"
}

# Starts the program and waits for its window; sets APP_PID and WIN.
start_program() {
  "$1/verlis" &
  APP_PID=$!
  WIN=$(wait_window '詩篇')
  [ -n "$WIN" ] || { fail "no window 詩篇 appeared"; return 1; }
  wait_framed "$WIN"
  xdotool windowactivate --sync "$WIN" >/dev/null 2>&1 || true
  sleep 0.4
}

# Waits until the window manager has put its frame around a window: before
# that its position is the one asked for, not where it will stand.
wait_framed() {
  local root
  root=$(xwininfo -root | awk '/Window id:/ {print $4}')
  for _ in $(seq 200); do
    [ "$(xwininfo -tree -id "$1" | awk '/Parent window id:/ {print $4}')" != "$root" ] && return 0
    sleep 0.02
  done
}

# Waits for a visible window of that name; prints its id, or nothing.
wait_window() {
  local id=""
  for _ in $(seq 600); do
    id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | sed -n 1p || true)
    [ -n "$id" ] && break
    sleep 0.05
  done
  echo "$id"
}

# Waits for the program to end; prints its exit status.
wait_exit() {
  local status=0
  for _ in $(seq 200); do kill -0 "$APP_PID" 2>/dev/null || break; sleep 0.05; done
  if kill -0 "$APP_PID" 2>/dev/null; then
    kill "$APP_PID"; fail "the program did not end"
  fi
  wait "$APP_PID" || status=$?
  echo "$status"
}

keys() { xdotool key --delay 40 "$@"; sleep 0.15; }

# The reading page as the clipboard gets it after select all and copy. The
# clipboard is emptied first and read until the copy has arrived, so that a
# slow machine is waited for rather than misread.
copied_poem() {
  local text=""
  printf '' | xclip -selection clipboard
  keys ctrl+a ctrl+c
  for _ in $(seq 100); do
    text=$(xclip -o -selection clipboard 2>/dev/null || true)
    [ -n "$text" ] && break
    sleep 0.05
  done
  printf '%s' "$text"
}

finish() {
  echo "$PASSES passed, $FAILURES failed"
  [ "$FAILURES" -eq 0 ]
}
