#!/usr/bin/env bash
# Runs the registration tests in a Wine prefix made afresh for each run: registering changes a
# prefix, and a registration left by an earlier run would hide a fault.
# Usage: registration-prefix.sh PREFIX EXE [ARGS...]
set -euo pipefail
prefix=$1; exe=$2; shift 2
run="$(cd "$(dirname "$0")/../.." && pwd)/scripts/wine-run.sh"
export WINEPREFIX=$prefix
if [ -d "$prefix" ]; then wineserver -k 2>/dev/null || true; fi
rm -rf "$prefix" "$prefix.lock"
# wine-run.sh makes the prefix (with its crash settings) and runs the tests in it.
status=0
"$run" "$exe" "$@" || status=$?
wineserver -k 2>/dev/null || true
exit $status
