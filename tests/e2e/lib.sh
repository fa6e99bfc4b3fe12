# Helpers for the end-to-end tests: the real program in a real X server.
# Sourced by the scripts; scripts/xsession.sh has set DISPLAY, HOME and TMPDIR.
# Every wait has a bound, and says what it was waiting for when it gives up.
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

# Runs a command for at most SECONDS: bounded SECONDS CMD...
bounded() {
  local seconds=$1 status=0
  shift
  timeout -k 2 "$seconds" "$@" || status=$?
  [ "$status" -ne 124 ] && [ "$status" -ne 137 ] || echo "gave up after $seconds s waiting for: $*" >&2
  return "$status"
}

# Repeats a command until it succeeds, for at most SECONDS:
# wait_until SECONDS "what it waits for" CMD...
wait_until() {
  local seconds=$1 what=$2
  local deadline=$((EPOCHSECONDS + seconds))
  shift 2
  until "$@"; do
    if ((EPOCHSECONDS >= deadline)); then
      echo "gave up after $seconds s waiting for $what" >&2
      return 1
    fi
    sleep 0.05
  done
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
  wait_framed "$WIN" || { fail "the window manager did not take window 詩篇"; return 1; }
  timeout -k 2 10 xdotool windowactivate --sync "$WIN" >/dev/null 2>&1 ||
    echo "gave up after 10 s waiting for window 詩篇 to be activated" >&2
  sleep 0.4
}

# Waits until the window manager has put its frame around a window: before
# that its position is the one asked for, not where it will stand.
wait_framed() {
  local root
  root=$(bounded 10 xwininfo -root | awk '/Window id:/ {print $4}')
  wait_until 10 "the window manager's frame around window $1" _framed "$1" "$root"
}
_framed() { [ "$(timeout 5 xwininfo -tree -id "$1" | awk '/Parent window id:/ {print $4}')" != "$2" ]; }

# Waits for a visible window of that name; prints its id, or nothing.
wait_window() {
  wait_until 20 "a visible window named $1" _visible "$1" || true
  timeout 5 xdotool search --onlyvisible --name "$1" 2>/dev/null | sed -n 1p || true
}
_visible() { timeout 5 xdotool search --onlyvisible --name "$1" >/dev/null 2>&1; }

# Whether a process runs (a zombie has ended).
running() {
  local state
  state=$(awk '{print $3}' "/proc/$1/stat" 2>/dev/null) && [ "$state" != Z ]
}

# Waits for the program to end and sets EXIT_STATUS. Only the script's own
# shell can wait for its child: not inside $(...).
wait_exit() {
  EXIT_STATUS=""
  if [ "$BASHPID" != "$$" ]; then
    echo "wait_exit can't wait for the program in a subshell: call it alone and read EXIT_STATUS" >&2
    echo "(run in a subshell)"
    return 1
  fi
  if ! wait_until 15 "the program (pid $APP_PID) to end" _ended; then
    kill -KILL "$APP_PID" 2>/dev/null || true
    fail "the program did not end"
  fi
  EXIT_STATUS=0
  wait "$APP_PID" || EXIT_STATUS=$?
}

_ended() { ! running "$APP_PID"; }

keys() { bounded 10 xdotool key --delay 40 "$@"; sleep 0.15; }

# The reading page as the clipboard gets it after select all and copy. The
# clipboard is emptied first and read until the copy has arrived, so that a
# slow machine is waited for rather than misread.
copied_poem() {
  # xclip stays behind to serve the empty selection: keep it off our output.
  printf '' | timeout 5 xclip -selection clipboard >/dev/null 2>&1 ||
    fail "xclip did not take the clipboard within 5 s"
  keys ctrl+a ctrl+c
  wait_until 10 "the copied text on the clipboard" _copied || true
  timeout 5 xclip -o -selection clipboard 2>/dev/null || true
}
_copied() { [ -n "$(timeout 5 xclip -o -selection clipboard 2>/dev/null)" ]; }

finish() {
  echo "$PASSES passed, $FAILURES failed"
  [ "$FAILURES" -eq 0 ]
}
