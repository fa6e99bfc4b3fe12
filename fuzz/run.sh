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

for target in book prefs; do
  work=$build/corpus/$target
  artifacts=$build/artifacts/$target/
  mkdir -p "$work" "$artifacts"
  echo "== fuzz_$target for ${seconds} s"
  "$build/fuzz_$target" -max_total_time="$seconds" -print_final_stats=1 \
    -artifact_prefix="$artifacts" "$work" "$seeds/$target"
done
