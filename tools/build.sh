#!/usr/bin/env bash
# Configures and builds Tavlorin in build/ (or build-sanitize/ with --sanitize).
set -euo pipefail
cd "$(dirname "$0")/.."
dir=build
extra=()
if [ "${1:-}" = "--sanitize" ]; then
  dir=build-sanitize
  extra=(-DTAVLORIN_SANITIZE=ON -DTAVLORIN_BENCH=OFF -DCMAKE_BUILD_TYPE=Debug)
fi
jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B "$dir" -G Ninja "${extra[@]}" >/dev/null
cmake --build "$dir" -j "$jobs"
