#!/usr/bin/env bash
# Runs each fuzz target for the given seconds. New inputs go to the build
# folder, never into the seeds; a crash leaves its input there and fails.
set -euo pipefail
build=${1:?usage: run.sh BUILD_DIR SECONDS}
seconds=${2:?usage: run.sh BUILD_DIR SECONDS}
seeds=$(cd "$(dirname "$0")" && pwd)/corpus

symbolizer=/usr/lib/llvm-14/bin/llvm-symbolizer
[ -x "$symbolizer" ] && export ASAN_SYMBOLIZER_PATH=$symbolizer
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
# The book target writes each input to a file: keep those in the build folder.
export TMPDIR=$build/tmp
mkdir -p "$TMPDIR"

passed=0 failed=0
for target in book prefs; do
  work=$build/corpus/$target
  artifacts=$build/artifacts/$target/
  log=$build/fuzz_$target.log
  mkdir -p "$work" "$artifacts"
  # The fuzzer's running commentary goes to its log; the run's outcome here.
  # Inputs may grow past a line's cut (28 KiB) and the reader's chunk (64 KiB)
  # at once: without -len_control=0 they grow a few bytes at a time.
  if "$build/fuzz_$target" -max_total_time="$seconds" -max_len=200000 -len_control=0 -print_final_stats=1 \
       -artifact_prefix="$artifacts" "$work" "$seeds/$target" >"$log" 2>&1; then
    passed=$((passed + 1))
    echo "fuzz_$target: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") runs in ${seconds} s, nothing found"
  else
    failed=$((failed + 1))
    echo "fuzz_$target: FAILED, the input is in $artifacts; the end of $log:"
    tail -n 40 "$log"
  fi
done
echo "fuzz: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
