#!/usr/bin/env bash
# Runs every benchmark program of a build. Each prints an operation beside its floor; the
# ratios go into docs/performance.md.
set -euo pipefail
build=${1:-build}
for b in "$build"/bench/bench_*; do
  [ -x "$b" ] || continue
  echo "== $(basename "$b")"
  "$b" --benchmark_min_time=1
done
