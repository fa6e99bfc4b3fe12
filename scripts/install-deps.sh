#!/usr/bin/env bash
# Installs the Debian packages that a job needs: scripts/install-deps.sh JOB...
# with JOB one of run, test, bench, fuzz, package, format, tidy. Only what is
# missing is installed, so a second run costs one dpkg query a package. An
# entry a|b is met by any of its packages, and brings the first where none is.
set -euo pipefail

run=(
  build-essential cmake pkg-config
  qt6-base-dev libuchardet-dev # the toolkit's package brings the OpenGL headers its Gui module wants
  libicu-dev              # charset detection, a second opinion on short Central European books
  libxcb1-dev             # the X server's keyboard map, for the line keys
  libqt6svg6              # the SVG icon: its icon engine and image plugin
  qt6-translations-l10n   # the toolkit's dialogs in Japanese
  "fonts-vlgothic|fonts-noto-cjk|fonts-ipafont-gothic|fonts-takao-gothic" # Japanese text
)
format=(clang-format)
tidy=("${run[@]}" clang-tidy)
test=(
  "${run[@]}" "${format[@]}"
  # a real X server with a window manager, real keys, layouts and the clipboard
  xvfb openbox xdotool xclip x11-utils x11-xkb-utils xkb-data
  fonts-noto-cjk
  # the install and package checks
  desktop-file-utils appstream lintian dpkg-dev file binutils
)
bench=("${run[@]}" libbenchmark-dev xvfb openbox xdotool x11-utils)
# clang with libFuzzer, and the symbolizer for readable crash reports
fuzz=("${run[@]}" clang libclang-rt-14-dev llvm-14)
# the libraries' packages (dpkg-shlibdeps, which looks at the files with
# file), and the package's check
package=("${run[@]}" dpkg-dev file lintian)

installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed'; }

[ $# -gt 0 ] || { echo "usage: $0 run|test|bench|fuzz|package|format|tidy..." >&2; exit 2; }
wanted=()
for job in "$@"; do
  case $job in
    run | test | bench | fuzz | package | format | tidy) declare -n list=$job; wanted+=("${list[@]}") ;;
    *) echo "$0: no job named $job" >&2; exit 2 ;;
  esac
done

missing=()
for entry in "${wanted[@]}"; do
  IFS='|' read -r -a choices <<<"$entry"
  met=false
  for p in "${choices[@]}"; do installed "$p" && met=true && break; done
  $met || [[ " ${missing[*]} " == *" ${choices[0]} "* ]] || missing+=("${choices[0]}")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "Need root or sudo to install: ${missing[*]}" >&2; exit 1; }
  sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
