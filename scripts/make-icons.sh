#!/usr/bin/env bash
# Renders the icon's fixed sizes, data/icons/NxN/verlis.png, from the drawing
# data/verlis.svg, for desktops that want a bitmap. Run by hand when the
# drawing changes and commit what it writes: the build only installs them.
# Needs rsvg-convert (Debian's librsvg2-bin).
set -euo pipefail
cd "$(dirname "$0")/.."
for size in 16 32 48 64 128 256; do
  mkdir -p "data/icons/${size}x$size"
  rsvg-convert --width "$size" --height "$size" --output "data/icons/${size}x$size/verlis.png" data/verlis.svg
done
