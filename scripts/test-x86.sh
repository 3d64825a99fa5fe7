#!/usr/bin/env bash
# Builds the win32 preset and runs its tests in the i386 Wine (made once by scripts/x86-env.sh), in
# one Xvfb display: the whole 32-bit suite, or with --core the suites labelled x86-core, which the
# test command runs (the thunks, subclassing, timers, the key hook, the COM server, DrawButton).
# Exits 75, having said why, when the i386 environment cannot be made on this machine.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

preset=win32
case "${1:-}" in
  --core) preset=win32-core ;;
  "") ;;
  *) echo "usage: $0 [--core]" >&2; exit 2 ;;
esac
jobs=${TC_JOBS:-$(nproc)}

started=$SECONDS
if ! scripts/x86-env.sh >/dev/null; then
  echo "== win32: the 32-bit tests were NOT run: the i386 environment could not be made (reason above)"
  exit 75
fi
echo "== win32: i386 environment ($(scripts/x86-env.sh --mode)) ready after $((SECONDS - started)) s"
cmake --preset win32 >/dev/null
cmake --build --preset win32 -j "$jobs"
started=$SECONDS
xvfb-run -a -s "-screen 0 1280x1024x24" bash -c '
  status=0
  ctest --preset "$1" || status=$?
  for prefix in build/win32/wineprefix*/; do
    WINEPREFIX="$PWD/${prefix%/}" wineserver -k 2>/dev/null || true
  done
  exit $status' _ "$preset"
echo "== win32: $preset tests passed in the i386 Wine in $((SECONDS - started)) s"
