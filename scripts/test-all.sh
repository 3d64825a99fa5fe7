#!/usr/bin/env bash
# Builds every preset and runs every test: native (sanitizers, fuzz runs), win64 under Wine in one
# Xvfb display, and a build of win32 (its tests need a 32-bit Wine, which these machines lack).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
scripts/bootstrap.sh

jobs=${TC_JOBS:-$(nproc)}

echo "== native: configure, build, test"
cmake --preset native >/dev/null
cmake --build --preset native -j "$jobs"
ctest --preset native

echo "== win64: configure, build, test under Wine"
cmake --preset win64 >/dev/null
cmake --build --preset win64 -j "$jobs"
xvfb-run -a -s "-screen 0 1280x1024x24" bash -c '
  status=0
  ctest --preset win64 || status=$?
  for prefix in build/win64/wineprefix build/win64/wineprefix-com; do
    WINEPREFIX="$PWD/$prefix" wineserver -k 2>/dev/null || true
  done
  exit $status'

echo "== win32: configure, build"
cmake --preset win32 >/dev/null
cmake --build --preset win32 -j "$jobs"
echo "== all presets built; native and win64 tests passed"
