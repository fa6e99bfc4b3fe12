#!/usr/bin/env bash
# Real key presses turn the lines; the copied reading page must match the book.
source "$(dirname "$0")/lib.sh"

book=$(mktemp)
for p in $(seq 1 10); do
  for l in $(seq 1 14); do echo "第${p}頁の${l}行目"; done
  echo
done >"$book"
dir=$(install_program "$book")
pages=(0 0 0 0 0 0 0 0 0 0 0 0 0 0)

expected_poem() {
  local l
  for l in $(seq 0 13); do
    echo "第$((pages[l] + 1))頁の$((l + 1))行目"
    case $l in 3 | 7 | 10) echo ;; esac
  done
}
turn() { # turn LINE STEP
  pages[$1]=$(((pages[$1] + $2 + 10) % 10))
}
turn_all() { local l; for l in $(seq 0 13); do turn "$l" "$1"; done; }
expect() { check "$1" "$(expected_poem)" "$(copied_poem)"; }

start_program "$dir"
expect "the first poem"
keys ctrl+bracketright; turn_all 1; expect "all lines forwards"
keys ctrl+bracketright ctrl+bracketright; turn_all 1; turn_all 1; expect "all lines forwards twice"
keys ctrl+bracketleft; turn_all -1; expect "all lines back"

line_keys=(1 2 3 4 5 6 7 8 9 0 u i o p)
for l in $(seq 0 13); do
  keys "ctrl+shift+${line_keys[l]}"; turn "$l" 1
done
expect "each line forwards with Ctrl+Shift"
for l in 9 10 11 12 13 0; do
  keys "ctrl+alt+${line_keys[l]}" "ctrl+alt+${line_keys[l]}"; turn "$l" -1; turn "$l" -1
done
expect "lines 10 to 14 and 1 back twice with Ctrl+Alt"

keys ctrl+r
for l in $(seq 1 13); do pages[l]=${pages[0]}; done
expect "reset on the first line's page"

keys ctrl+shift+r
shuffled=$(copied_poem)
ok=1
row=0
for l in $(seq 1 14); do
  got=$(echo "$shuffled" | grep -v '^$' | sed -n "${l}p")
  [[ "$got" =~ ^第([1-9]|10)頁の${l}行目$ ]] || ok=0
done
check "a shuffled poem keeps every line in its place" 1 "$ok"
check "a shuffled poem has 17 rows" 17 "$(echo "$shuffled" | wc -l)"

keys ctrl+w
wait_exit
check "exit status" 0 "$EXIT_STATUS"
finish
