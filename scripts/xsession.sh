#!/usr/bin/env bash
# Runs a command inside a fresh X server with a window manager and a
# temporary HOME, as a user's desktop would be: scripts/xsession.sh CMD...
# Everything the run writes goes under that temporary folder, which goes
# with the server when the command ends; every wait has a bound.
set -euo pipefail

tmp_home=$(mktemp -d)
running() {
  local state
  state=$(awk '{print $3}' "/proc/$1/stat" 2>/dev/null) && [ "$state" != Z ]
}
cleanup() {
  local pid exe
  # Programs that the command left running from the temporary folder.
  for exe in /proc/[0-9]*/exe; do
    if [[ "$(readlink "$exe" 2>/dev/null)" == "$tmp_home"/* ]]; then
      kill -KILL "${exe//[^0-9]/}" 2>/dev/null || true
    fi
  done
  for pid in ${wm_pid:-} ${xvfb_pid:-}; do
    kill "$pid" 2>/dev/null || true
    for _ in $(seq 100); do running "$pid" || break; sleep 0.05; done
    kill -KILL "$pid" 2>/dev/null || true
  done
  rm -rf "$tmp_home"
}
trap cleanup EXIT
trap "exit 129" HUP; trap "exit 130" INT; trap "exit 143" TERM # cleaned up too
give_up() { echo "xsession: $*" >&2; exit 1; }

export HOME="$tmp_home"
export TMPDIR="$tmp_home/tmp"
export XDG_CONFIG_HOME="$tmp_home/.config" XDG_CACHE_HOME="$tmp_home/.cache"
export XDG_DATA_HOME="$tmp_home/.local/share" XDG_RUNTIME_DIR="$tmp_home/run"
mkdir -p "$TMPDIR"
mkdir -m 700 "$XDG_RUNTIME_DIR"

# The server takes a free display and writes its number once it is ready.
: >"$tmp_home/display"
Xvfb -displayfd 3 -screen 0 "${XSESSION_SCREEN:-1280x1024}x24" -nolisten tcp 3>"$tmp_home/display" >/dev/null 2>&1 &
xvfb_pid=$!
deadline=$((EPOCHSECONDS + 20))
until [ "$(wc -l <"$tmp_home/display")" -ge 1 ]; do
  running "$xvfb_pid" || give_up "Xvfb failed to start"
  ((EPOCHSECONDS < deadline)) || give_up "gave up after 20 s waiting for Xvfb to report its display"
  sleep 0.05
done
export DISPLAY=":$(head -1 "$tmp_home/display")"

openbox >/dev/null 2>&1 &
wm_pid=$!
# The window manager announces itself a moment before it manages windows, and
# a window mapped in between stays without frame or focus: a probe window
# has to get its frame first, and is made anew while it doesn't.
probe() {
  [ -z "${probe_pid:-}" ] || kill "$probe_pid" 2>/dev/null || true
  xev -name xsession-probe >/dev/null 2>&1 &
  probe_pid=$! probe_made=$EPOCHSECONDS
}
framed() {
  local id tree
  id=$(timeout 5 xdotool search --name '^xsession-probe$' 2>/dev/null | sed -n 1p) && [ -n "$id" ] &&
    tree=$(timeout 5 xwininfo -tree -id "$id") && grep -q 'Parent window id:' <<<"$tree" &&
    ! grep -q 'Parent window id:.*the root window' <<<"$tree"
}
deadline=$((EPOCHSECONDS + 20))
probe
until framed; do
  running "$wm_pid" || give_up "openbox failed to start"
  ((EPOCHSECONDS < deadline)) || give_up "gave up after 20 s waiting for openbox to frame a window"
  ((EPOCHSECONDS < probe_made + 2)) || probe
  sleep 0.05
done
kill "$probe_pid"

unset QT_QPA_PLATFORM
# Ended here, below the test's own ctest timeout (60 s unless it says
# otherwise in XSESSION_SECONDS), so that the cleanup still runs.
limit=${XSESSION_SECONDS:-50}
status=0
timeout -k 5 "$limit" "$@" || status=$?
[ "$status" -ne 124 ] || echo "xsession: gave up after $limit s waiting for $* to finish" >&2
exit "$status"
