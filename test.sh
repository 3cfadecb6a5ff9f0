#!/usr/bin/env bash
# Builds Vistrel with its tests and runs every test; exits non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")"
scripts/setup.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure -j"$(nproc)"
