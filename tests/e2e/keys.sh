#!/usr/bin/env bash
# Real key presses turn the lines; the copied reading page must match the book.
source "$(dirname "$0")/lib.sh"
book=$(mktemp)
for p in {1..10}; do for l in {1..14}; do echo "第${p}頁の${l}行目"; done; echo; done >"$book"
start_program "$(install_program "$book")"

pages=(0 0 0 0 0 0 0 0 0 0 0 0 0 0)
turn() { local l; for l in "${@:2}"; do pages[l]=$(((pages[l] + $1 + 10) % 10)); done; } # turn STEP LINE...
expect() { # the copied page against the book at the pages turned so far
  check "$1" "$(for l in {0..13}; do echo "第$((pages[l] + 1))頁の$((l + 1))行目"
    case $l in 3 | 7 | 10) echo ;; esac; done)" "$(copied_poem)"
}
expect "the first poem"
keys ctrl+bracketright; turn 1 {0..13}; expect "all lines forwards"
keys ctrl+bracketleft ctrl+bracketleft; turn -2 {0..13}; expect "all lines back, page 1 to 10"
line_keys=(1 2 3 4 5 6 7 8 9 0 u i o p)
press() { # press STEP MODIFIERS FIRST LAST: line l's key l - FIRST + 1 times, so that a key on the wrong line shows
  local l n list=()
  for l in $(seq "$3" "$4"); do
    for n in $(seq $((l - $3 + 1))); do list+=("$2+${line_keys[l]}"); done
    turn $(($1 * (l - $3 + 1))) "$l"
  done
  keys "${list[@]}"
}
press 1 ctrl+shift 0 8; press -1 ctrl+alt 9 13; expect "lines 1 to 9 forwards with Ctrl+Shift, 10 to 14 back with Ctrl+Alt"
keys ctrl+r; first=${pages[0]}; pages=("${pages[@]/*/$first}"); expect "reset on the first line's page"
press 1 ctrl+shift 9 13; press -1 ctrl+alt 0 8; expect "lines 10 to 14 forwards with Ctrl+Shift, 1 to 9 back with Ctrl+Alt"

# AZERTY: the top row types & é " ' ( - è _ ç à and needs Shift for its digits,
# the brackets need AltGr. The reader presses the keys that carry the digits.
bounded 10 setxkbmap fr
line_keys=(ampersand eacute quotedbl apostrophe parenleft minus egrave underscore ccedilla agrave u i o p)
keys ctrl+bracketright; turn 1 {0..13}
press 1 ctrl+shift 0 6; press -1 ctrl+alt 7 13; press -1 ctrl+alt+shift 0 9; expect "French layout: Ctrl+Shift forwards, Ctrl+Alt back with Shift or without"
# Programmer Dvorak: [ carries 7 and the key after 0 carries 8; Ctrl+[ stays all lines.
bounded 10 setxkbmap us dvp; keys ctrl+alt+bracketleft ctrl+shift+exclam ctrl+bracketleft
turn -1 6; turn 1 7; turn -1 {0..13}; expect "Programmer Dvorak: the keys that carry 7 and 8"

keys ctrl+shift+r # every line in its place, and not all on one page (a chance of 1 in 10^13)
random=$(copied_poem | grep -v '^$')
check "a random poem's lines" "$(seq 14)" "$(sed -E 's/^第([1-9]|10)頁の([0-9]+)行目$/\2/' <<<"$random")"
[ "$(grep -o '^第[0-9]*頁' <<<"$random" | sort -u | wc -l)" -gt 1 ] && pass || fail "a random poem all on one page: $random"
keys ctrl+w
wait_exit
check "exit status after Ctrl+W" 0 "$EXIT_STATUS"
finish
