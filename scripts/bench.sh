#!/usr/bin/env bash
# Runs the benchmarks on demand: the native ones from an optimised (Release, no sanitizer) tree,
# the Windows ones from the win64 tree under Wine. Each prints its figures and its ratio to the
# baseline it measures in the same run. Optional argument: a substring of the benchmark names.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
scripts/bootstrap.sh
# GMP is the large-number benchmark's baseline, needed by nothing else.
if ! ls /usr/include/gmp.h /usr/include/*/gmp.h >/dev/null 2>&1; then
  SUDO=""; [ "$(id -u)" -eq 0 ] || SUDO="sudo"
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq libgmp-dev >/dev/null 2>&1 || \
    echo "bench: libgmp-dev could not be installed; the large-number benchmark is skipped" >&2
fi
filter=${1:-}
jobs=${TC_JOBS:-$(nproc)}

cmake -S . -B build/bench-native -G Ninja -DCMAKE_BUILD_TYPE=Release \
      -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ >/dev/null
native=$(cmake --build build/bench-native --target help | sed -n 's/^\(bench_[A-Za-z0-9_]*\):.*/\1/p' | sort -u)
cmake --preset win64 >/dev/null
windows=$(cmake --build build/win64 --target help | sed -n 's/^\(bench_[A-Za-z0-9_]*\):.*/\1/p' | sort -u)

for target in $native; do
  [[ -z "$filter" || "$target" == *"$filter"* ]] || continue
  cmake --build build/bench-native -j "$jobs" --target "$target" >/dev/null
  echo "== $target (native, Release)"
  exe=$(find build/bench-native -name "$target" -type f -perm -u+x | head -n 1)
  "$exe"
done

selected=()
for target in $windows; do
  [[ -z "$filter" || "$target" == *"$filter"* ]] || continue
  cmake --build build/win64 -j "$jobs" --target "$target" >/dev/null
  selected+=("$(find build/win64 -name "$target.exe" -type f | head -n 1)")
done
if [ ${#selected[@]} -ne 0 ]; then
  xvfb-run -a -s "-screen 0 1280x1024x24" bash -c '
    for exe in "$@"; do echo "== $(basename "$exe" .exe) (win64 under Wine)"; scripts/wine-run.sh "$exe"; done' _ "${selected[@]}"
fi
