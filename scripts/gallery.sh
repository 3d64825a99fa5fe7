#!/usr/bin/env bash
# Builds the gallery (win64 preset, build/win64) and runs it under Wine: the live window when a
# display is set, otherwise under Xvfb writing build/gallery/swatches.png and screenshot.png.
# TC_GALLERY_BUILD names another build tree.
#   scripts/gallery.sh --dpis "96 144 192"   renders the swatch sheet and every page at each DPI
#                                            into build/gallery/<N>dpi/ (swatches.png, page<P>.png)
# Other arguments go to the gallery (--dpi N, --page P, ...).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
dpis=""
if [ "${1:-}" = "--dpis" ]; then
  dpis=${2:?--dpis needs a list such as "96 144 192"}
  shift 2
fi
scripts/bootstrap.sh
build=${TC_GALLERY_BUILD:-build/win64}
cmake --preset win64 -B "$build" >/dev/null
cmake --build "$build" --target tarnwick-gallery -j2
exe=$build/demo/tarnwick-gallery.exe
if [ -n "${DISPLAY:-}" ] && [ -z "$dpis" ]; then
  exec scripts/wine-run.sh "$exe" "$@"
fi
out="$root/build/gallery"
mkdir -p "$out"
# Wine reaches the host's root as drive Z:.
winpath() { printf 'Z:%s' "$1" | tr '/' '\\'; }
if [ -n "$dpis" ]; then
  # One page per TC_GALLERY_PAGE line in demo/.
  pages=$(cat demo/*.cpp | grep -c '^TC_GALLERY_PAGE(')
  for dpi in $dpis; do
    dir="$out/${dpi}dpi"
    rm -rf "$dir"
    mkdir -p "$dir"
    for ((page = 0; page < pages; page++)); do
      args=(--dpi "$dpi" --page "$page" --screenshot "$(winpath "$dir/page$page.png")")
      [ "$page" -eq 0 ] && args+=(--swatches "$(winpath "$dir/swatches.png")")
      if [ -n "${DISPLAY:-}" ]; then
        scripts/wine-run.sh "$exe" "${args[@]}" "$@"
      else
        xvfb-run -a -s "-screen 0 1280x1024x24" scripts/wine-run.sh "$exe" "${args[@]}" "$@"
      fi
      [ -s "$dir/page$page.png" ] || { echo "gallery: $dir/page$page.png was not written" >&2; exit 1; }
    done
    echo "gallery: wrote $dir (swatches.png, page0.png ... page$((pages - 1)).png)"
  done
  exit 0
fi
rm -f "$out/swatches.png" "$out/screenshot.png"
xvfb-run -a -s "-screen 0 1280x1024x24" scripts/wine-run.sh "$exe" \
  --swatches "$(winpath "$out/swatches.png")" --screenshot "$(winpath "$out/screenshot.png")" "$@"
for f in swatches.png screenshot.png; do
  [ -s "$out/$f" ] || { echo "gallery: $out/$f was not written" >&2; exit 1; }
done
echo "gallery: wrote $out/swatches.png and $out/screenshot.png"
