# Helpers for the end-to-end tests: the real program in a real X server. Sourced by the
# scripts; scripts/xsession.sh has set DISPLAY, HOME, TMPDIR and the XDG folders, and takes
# away whatever the run leaves behind. Every wait has a bound, and says what it waited for.
set -euo pipefail

PROGRAM=${1:?usage: $0 path/to/verlis}
PREFS="$HOME/.config/Verlis Preferences"
DATA=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../data" && pwd)
FAILURES=0 PASSES=0

fail() { echo "FAIL: $*"; FAILURES=$((FAILURES + 1)); }
pass() { PASSES=$((PASSES + 1)); }
check() { [ "$2" == "$3" ] && pass || fail "$1: expected [$2], got [$3]"; } # check "what" expected actual
finish() { echo "$PASSES passed, $FAILURES failed"; [ "$FAILURES" -eq 0 ]; }

bounded() { # bounded SECONDS CMD...: CMD for at most SECONDS
  local status=0
  timeout -k 2 "$@" || status=$?
  ((status != 124 && status != 137)) || echo "gave up after $1 s waiting for: ${*:2}" >&2
  return "$status"
}
wait_until() { # wait_until SECONDS "what it waits for" CMD...: CMD again until it succeeds
  local deadline=$((EPOCHSECONDS + $1))
  until "${@:3}"; do
    ((EPOCHSECONDS < deadline)) || { echo "gave up after $1 s waiting for $2" >&2; return 1; }
    sleep 0.05
  done
}

# Prints a new folder that holds a copy of the program and, if given, a book beside it.
install_program() {
  local dir
  dir=$(mktemp -d) && cp "$PROGRAM" "$dir/verlis"
  [ -z "${1:-}" ] || cp "$1" "$dir/Verlis.txt"
  echo "$dir"
}

# Waits for a visible window of that name; prints its id, or nothing.
wait_window() {
  wait_until 20 "a visible window named $1" _visible "$1" &&
    timeout 5 xdotool search --onlyvisible --name "$1" 2>/dev/null | sed -n 1p || true
}
_visible() { timeout 5 xdotool search --onlyvisible --name "$1" >/dev/null 2>&1; }

# Starts the program and waits for its window; sets APP_PID and WIN. It waits for the window
# manager's frame: before it, the window stands where it asked to, not where it will stand.
start_program() {
  "$1/verlis" &
  APP_PID=$!
  WIN=$(wait_window '詩篇')
  [ -n "$WIN" ] || { fail "no window 詩篇 appeared"; return 1; }
  wait_until 10 "the window manager's frame around window $WIN" _framed ||
    { fail "the window manager did not take window 詩篇"; return 1; }
  timeout -k 2 10 xdotool windowactivate --sync "$WIN" >/dev/null || true # the keys that follow tell
  sleep 0.4
}
_framed() { timeout 5 xwininfo -tree -id "$WIN" | grep 'Parent window id:' | grep -vq 'the root window'; }

# Waits for the program to end and sets EXIT_STATUS. Call it alone in the
# script's own shell, never inside $(...): only that shell can wait for it.
wait_exit() {
  wait_until 15 "the program (pid $APP_PID) to end" _ended ||
    { kill -KILL "$APP_PID" 2>/dev/null || true; fail "the program did not end"; }
  EXIT_STATUS=0
  wait "$APP_PID" || EXIT_STATUS=$?
}
_ended() { [[ $(cat "/proc/$APP_PID/stat" 2>/dev/null) != *") "[!Z]* ]]; } # gone, or a zombie

keys() { bounded $((10 + $# / 4)) xdotool key --delay 15 "$@"; sleep 0.15; }

# The reading page as the clipboard gets it after select all and copy. The clipboard is emptied
# first and read until the copy has arrived: a slow machine is waited for, not misread.
copied_poem() {
  # xclip stays behind to serve the empty selection: keep it off our output.
  printf '' | timeout 5 xclip -selection clipboard >/dev/null 2>&1 ||
    fail "xclip did not take the clipboard within 5 s"
  keys ctrl+a ctrl+c
  wait_until 10 "the copied text on the clipboard" _copied || true
  timeout 5 xclip -o -selection clipboard 2>/dev/null || true
}
_copied() { [ -n "$(timeout 5 xclip -o -selection clipboard 2>/dev/null)" ]; }

# The reading page opens on the default book's first stanza: shows_default WHAT
shows_default() {
  check "$1: first stanza" "$(grep -v '^$' "$DATA/Verlis.txt" | sed -n 1,4p)" "$(copied_poem | sed -n 1,4p)"
}
