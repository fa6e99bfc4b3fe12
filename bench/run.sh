#!/usr/bin/env bash
# make bench: the micro benchmarks on the offscreen platform, then start-up
# against the reference window in a real X server.
set -euo pipefail
build=${1:-build/dev}
here=$(cd "$(dirname "$0")" && pwd)

QT_QPA_PLATFORM=offscreen "$build/bench/micro_bench" 2>/dev/null
echo
"$here/../scripts/xsession.sh" "$here/startup.sh" "$build/bench" "${RUNS:-15}"
