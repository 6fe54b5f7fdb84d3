#!/usr/bin/env bash
# Installs what is missing, builds, and starts the program's main job on the embedded default:
# a demonstration radio polled by the real worker and refresh loop, one line per change.
# Extra arguments go to the poll (for example --seconds 30). Stop it with Ctrl-C.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/setup.sh
bash tools/build.sh >/dev/null
exec build/tavlorin-cli radio --model "TS-2000: Demo" poll "$@"
