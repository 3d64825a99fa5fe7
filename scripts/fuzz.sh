#!/usr/bin/env bash
# Long fuzzing on demand: builds the libFuzzer targets in the native sanitizer tree and runs one
# target (or all, one after another) for the number of executions asked, niced. Seeds come from
# fuzz/corpus/<target>/ (kept in the repository, read only); what the fuzzer finds on the way goes
# to build/fuzz-corpus/<target>/, crashes to build/fuzz-findings/<target>/.
# Usage: scripts/fuzz.sh [target|all] [runs]     e.g. scripts/fuzz.sh fuzz_ini 10000000
# TC_FUZZ_SECONDS=n ends each target after n seconds even short of the runs (a busy machine).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
what=${1:-all}
runs=${2:-1000000}
jobs=${TC_JOBS:-2}

cmake --preset native >/dev/null
targets=$(cmake --build build/native --target help | sed -n 's/^\(fuzz_[A-Za-z0-9_]*\):.*/\1/p' | sort -u)
if [ "$what" != all ]; then
  echo "$targets" | grep -qx "$what" || { echo "fuzz: no target $what (have: $(echo $targets))" >&2; exit 2; }
  targets=$what
fi

status=0
for target in $targets; do
  cmake --build build/native -j "$jobs" --target "$target" >/dev/null
  work=build/fuzz-corpus/$target
  findings=build/fuzz-findings/$target
  mkdir -p "$work" "$findings"
  seeds=()
  [ -d "fuzz/corpus/$target" ] && seeds=("fuzz/corpus/$target")
  echo "== $target: $runs executions"
  # The large-number target stretches operands past the reciprocal threshold only when asked.
  log=build/fuzz-findings/$target.log
  limit=()
  [ -n "${TC_FUZZ_SECONDS:-}" ] && limit=(-max_total_time="$TC_FUZZ_SECONDS")
  if TC_FUZZ_LONG=1 nice -n 19 "build/native/fuzz/$target" -runs="$runs" "${limit[@]}" -max_len=4096 \
       -print_final_stats=1 -artifact_prefix="$findings/" "$work" "${seeds[@]}" >"$log" 2>&1; then
    result="no finding"
  else
    result="FINDING (see $log and $findings/)"
    status=1
  fi
  grep -E '^#[0-9]+[[:space:]].*cov:' "$log" | tail -n 1 | cut -d' ' -f1-9 || true
  grep -E '^Done [0-9]+ runs' "$log" || true
  grep -E '^stat::(number_of_executed_units|peak_rss_mb)' "$log" || true
  echo "$target: $result"
done
exit $status
