#!/usr/bin/env bash
# Builds Vistrel with its tests and runs every test; exits non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")"
scripts/setup.sh
# Folders depend one way; the kernel and the controls stay below the rest.
python3 scripts/structure-check.py
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
started=$(date +%s)
cmake --build build
echo "test.sh: the build took $(( $(date +%s) - started )) s"
export QT_QPA_PLATFORM=offscreen
started=$(date +%s)
ctest --test-dir build --output-on-failure -j"$(nproc)"
echo "test.sh: the suite took $(( $(date +%s) - started )) s"
# CI also runs every fuzzer over the program's own parsers for a short while,
# and the whole suite again with the address and undefined-behaviour
# sanitizers (its own build folder, build-asan).
if [ "${CI:-}" = "true" ]; then
  stage() { echo "test.sh: $1 took $(( $(date +%s) - $2 )) s"; }
  started=$(date +%s)
  # A fixed seed: the same inputs every run, so that a red run can be repeated.
  FUZZ_SEED=1 scripts/fuzz.sh 30
  stage "fuzzing" "$started"
  started=$(date +%s)
  scripts/sanitize.sh
  stage "the sanitized build and suite" "$started"
fi
