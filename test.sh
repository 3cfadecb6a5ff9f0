#!/usr/bin/env bash
# Builds Vistrel with its tests and runs every test; exits non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")"
scripts/setup.sh
# Folders depend one way; the kernel and the controls stay below the rest.
python3 scripts/structure-check.py
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure -j"$(nproc)"
# CI also runs every fuzzer over the program's own parsers for a short while.
if [ "${CI:-}" = "true" ]; then
  # A fixed seed: the same inputs every run, so that a red run can be repeated.
  FUZZ_SEED=1 scripts/fuzz.sh 30
fi
