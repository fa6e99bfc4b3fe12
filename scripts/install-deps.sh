#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing need.
# Only what is missing is installed, so a second run costs one dpkg query.
set -euo pipefail

packages=(
  build-essential cmake pkg-config
  qt6-base-dev qt6-qpa-plugins libgl-dev
  libqt6svg6              # the SVG icon: its icon engine and image plugin
  qt6-translations-l10n   # the toolkit's dialogs in Japanese
  libuchardet-dev
  libxcb1-dev             # the X server's keyboard map, for the line keys
  libbenchmark-dev
  # make fuzz: clang with libFuzzer, and the symbolizer for readable crash reports
  clang libclang-rt-14-dev llvm-14
  # a real X server for the end-to-end tests
  xvfb openbox xdotool xclip x11-utils imagemagick
  # Japanese text on screen
  fonts-noto-cjk
  # the install and package checks
  desktop-file-utils appstream lintian dpkg-dev file binutils
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
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
