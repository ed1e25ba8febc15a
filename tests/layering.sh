#!/usr/bin/env bash
# The model knows nothing of what is built on it: core/ includes nothing from the pipeline, the
# remote administration, the window or the program layer.
set -euo pipefail
cd "$1"
if grep -nE '#include "(pipeline|remote|ui|app|database|streaming|onvif)/' core/*.h core/*.cpp; then
    echo "core/ includes a layer above it (lines above)"
    exit 1
fi
echo "1 passed, 0 failed"
