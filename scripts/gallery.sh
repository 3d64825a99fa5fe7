#!/usr/bin/env bash
# Builds the gallery (win64 preset, build/win64) and runs it under Wine: the live window when a
# display is set, otherwise under Xvfb writing build/gallery/swatches.png and screenshot.png.
# TC_GALLERY_BUILD names another build tree.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
scripts/bootstrap.sh
build=${TC_GALLERY_BUILD:-build/win64}
cmake --preset win64 -B "$build" >/dev/null
cmake --build "$build" --target tarnwick-gallery -j2
exe=$build/demo/tarnwick-gallery.exe
if [ -n "${DISPLAY:-}" ]; then
  exec scripts/wine-run.sh "$exe" "$@"
fi
out="$root/build/gallery"
mkdir -p "$out"
rm -f "$out/swatches.png" "$out/screenshot.png"
# Wine reaches the host's root as drive Z:.
winpath() { printf 'Z:%s' "$1" | tr '/' '\\'; }
xvfb-run -a -s "-screen 0 1280x1024x24" scripts/wine-run.sh "$exe" \
  --swatches "$(winpath "$out/swatches.png")" --screenshot "$(winpath "$out/screenshot.png")" "$@"
for f in swatches.png screenshot.png; do
  [ -s "$out/$f" ] || { echo "gallery: $out/$f was not written" >&2; exit 1; }
done
echo "gallery: wrote $out/swatches.png and $out/screenshot.png"
