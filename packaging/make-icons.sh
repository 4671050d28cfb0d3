#!/usr/bin/env bash
# Renders packaging/veltra.svg into the icons of the packages, and the installer's picture. The results are kept under version control, so that a build needs
# none of these tools; run this after a change of the drawing.
set -euo pipefail
. "$(dirname "$0")/../scripts/lib.sh"

# shellcheck disable=SC2046
ensure_packages $(packages_icons)

drawing=$veltra_root/packaging/veltra.svg
icon=$veltra_root/packaging/windows/veltra.ico
images=$veltra_root/packaging/linux/icons
mkdir -p "$images"

render() { rsvg-convert --width "$1" --height "$1" --output "$images/$1.png" "$drawing"; }

bitmaps=()
for size in 16 24 32 48 64 128; do
    render $size
    bitmaps+=("$images/$size.png")
done
# Only the largest image stays a PNG: some readers know the smaller sizes as bitmaps alone.
render 256
icotool --create --output="$icon" "${bitmaps[@]}" --raw="$images/256.png"
picture=$veltra_root/packaging/windows/installer.bmp
rsvg-convert --output "$picture.png" "${picture%.bmp}.svg"
convert "$picture.png" -alpha off -type truecolor "BMP3:$picture"
rm "$picture.png"
say "Wrote ${icon#"$veltra_root"/}: $(icotool --list "$icon" | wc -l) images, $(stat -c %s "$icon") bytes"
