#!/bin/sh
# scripts/icons.sh: draws the sizes of the program's icon anew from packaging/icons/scalable/apps/quillmere.svg.
# They are kept, so that who builds needs nothing that reads SVG.
set -eu
cd "$(dirname "$0")/../packaging/icons"
command -v rsvg-convert >/dev/null || { echo "icons: missing package: librsvg2-bin" >&2; exit 1; }
for size in 16 24 32 48 64 128 256; do
    mkdir -p "${size}x$size/apps"
    rsvg-convert -w $size -h $size scalable/apps/quillmere.svg -o "${size}x$size/apps/quillmere.png"
done
