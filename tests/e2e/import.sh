#!/usr/bin/env bash
# A book imported through the real menu and the real open dialog, typed as a
# user would; then the first poem of that book is composed and copied.
source "$(dirname "$0")/lib.sh"
book=$(mktemp --suffix=.txt)
for p in 1 2; do for l in {1..14}; do echo "本${p}の${l}行"; done; done >"$book"
start_program "$(install_program "$DATA/Verlis.txt")"

# "ファイル" is the first menu of the bar, at the top left of the window.
bounded 10 xdotool mousemove --window "$WIN" 20 10 click 1
sleep 0.4
keys Down Down Down Return # 終了, Verlisについて..., 読み込み...
dialog=$(wait_window 'ファイル選択')
if [ -z "$dialog" ]; then fail "no open dialog titled ファイル選択"; else
  timeout -k 2 10 xdotool windowactivate --sync "$dialog" >/dev/null || true
  sleep 0.3
  bounded 20 xdotool type --delay 10 "$book"
  keys Return
  wait_until 20 "the open dialog to close" eval '! _visible ファイル選択' || fail "the open dialog stayed open"
fi

keys ctrl+r # the import page shows; aligning composes the new book's first poem
check "the imported book's first poem" "$(for l in {1..14}; do echo "本1の${l}行"; case $l in 4 | 8 | 11) echo ;; esac; done)" "$(copied_poem)"
keys ctrl+w
wait_exit
finish
