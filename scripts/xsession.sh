#!/usr/bin/env bash
# Runs a command inside a fresh X server with a window manager and a
# temporary HOME, as a user's desktop would be: scripts/xsession.sh CMD...
set -euo pipefail

for display in $(seq 90 140); do
  [ -e "/tmp/.X${display}-lock" ] || [ -e "/tmp/.X11-unix/X${display}" ] || break
done
export DISPLAY=":${display}"

tmp_home=$(mktemp -d)
cleanup() {
  kill "${wm_pid:-}" "${xvfb_pid:-}" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$tmp_home"
}
trap cleanup EXIT

Xvfb "$DISPLAY" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
xvfb_pid=$!
for _ in $(seq 100); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.05; done
HOME="$tmp_home" openbox >/dev/null 2>&1 &
wm_pid=$!
for _ in $(seq 100); do xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q window && break; sleep 0.05; done
sleep 0.3 # the window manager announces itself a moment before it manages windows

export HOME="$tmp_home"
export XDG_CONFIG_HOME="$tmp_home/.config"
unset QT_QPA_PLATFORM
"$@"
