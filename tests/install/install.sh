#!/usr/bin/env bash
# The program as a user gets it: installed into a prefix of its own, and as a
# Debian package unpacked into a folder. Each opens on the default book's
# first poem with no book beside it, and the desktop finds its entry, icon
# and metainfo.
source "$(dirname "$0")/../e2e/lib.sh"
build=${2:?usage: $0 path/to/verlis build-folder}
tmp=$(mktemp -d)
shows_first_poem() { # what, the program's folder
  start_program "$2" || return 0
  shows_default "$1"
  # The icon's own blue, 0xff2f3e6e: the window manager puts a stock icon on
  # a window that has none.
  xprop -id "$WIN" -f _NET_WM_ICON 32c ' $0+' _NET_WM_ICON | grep -q '\b4281286254\b' &&
    pass || fail "$1: the window does not show the program's icon"
  keys ctrl+q
  wait_exit
  check "$1: exit status" 0 "$EXIT_STATUS"
}

prefix=$tmp/prefix
cmake --install "$build" --prefix "$prefix" >/dev/null
entry=$(ls "$prefix"/share/applications/*.desktop) && icon=$(sed -n 's/^Icon=//p' "$entry")
check "desktop-file-validate" "" "$(desktop-file-validate "$entry" 2>&1)"
# The whole tree: the metainfo, and the launcher entry it names.
report=$(appstreamcli validate-tree --no-net "$prefix" 2>&1) && pass || fail "appstreamcli: $report"
shows_first_poem "installed" "$prefix/bin"
mkdir "$tmp/alone" && cp "$prefix/bin/verlis" "$tmp/alone/"
XDG_DATA_DIRS="$prefix/share" shows_first_poem "from the data folders" "$tmp/alone"

# The package, made from this build: the release build makes the same one.
cpack --config "$build/CPackConfig.cmake" -B "$tmp/package" >/dev/null
deb=$(ls "$tmp"/package/*.deb) && dpkg-deb -x "$deb" "$tmp/root"
check "package file" "verlis_$(dpkg-deb -f "$deb" Version)_amd64.deb" "$(basename "$deb")"
fields=$(dpkg-deb -f "$deb" Depends Recommends)
for wanted in "libqt6svg6, fonts-noto-cjk | fonts-vlgothic" libqt6widgets6 libuchardet0 "Recommends: qt6-wayland, qt6-translations-l10n"; do
  [[ $fields == *"$wanted"* ]] && pass || fail "the package's Depends and Recommends lack $wanted: $fields"
done
for f in "applications/${entry##*/}" "metainfo/$icon.metainfo.xml" "icons/hicolor/scalable/apps/$icon.svg"; do
  [ -e "$tmp/root/usr/share/$f" ] && pass || fail "the package has no $f"
done
for n in 16 32 48 64 128 256; do # the bitmaps the icon theme asks for, of their sizes
  [[ $(file -b "$tmp/root/usr/share/icons/hicolor/${n}x$n/apps/$icon.png") == "PNG image data, $n x $n,"* ]] &&
    pass || fail "the package has no $n x $n icon"
done
report=$(lintian --pedantic --fail-on error,warning "$deb" 2>&1) && pass || fail "lintian: $report"
[[ $(readelf -d "$tmp/root/usr/bin/verlis") == *BIND_NOW* && $(readelf -W --dyn-syms "$tmp/root/usr/bin/verlis") == *_chk@* ]] &&
  pass || fail "the binary binds late or calls nothing fortified"
shows_first_poem "unpacked package" "$tmp/root/usr/bin"
finish
