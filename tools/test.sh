#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test through ctest.
# --sanitize: the same with AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/setup.sh
bash tools/build.sh "$@"
dir=build
[ "${1:-}" = "--sanitize" ] && dir=build-sanitize
jobs=$(nproc 2>/dev/null || echo 2)
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ctest --test-dir "$dir" --output-on-failure -j "$jobs"
