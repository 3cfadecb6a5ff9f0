#!/usr/bin/env bash
# Builds Vistrel and starts it.
set -euo pipefail
cd "$(dirname "$0")"
scripts/setup.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --target Vistrel
exec build/program/Vistrel "$@"
