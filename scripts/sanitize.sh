#!/usr/bin/env bash
# Builds the program and every test with AddressSanitizer and
# UndefinedBehaviorSanitizer (-DVISTREL_SANITIZE=ON) in build-asan and runs
# the whole test suite there, with leak checking on.
#
#   scripts/sanitize.sh
#
# Prints the time of the build and of the test run; exits non-zero when the
# configuration or the build fails, or when any test fails or reports a
# leak, a memory error or undefined behaviour. Leaks inside system libraries
# are suppressed by tests/sanitizer/lsan.supp, each entry with its reason.
set -uo pipefail

ROOT="$(cd "$(dirname "$0")/.." && pwd)"
BUILD="$ROOT/build-asan"
JOBS="$(nproc)"

# The same compiler cache as the main build (CMakeLists.txt puts ccache in
# front of the compiler when it is there); shared across build folders.
export CCACHE_BASEDIR="$ROOT" CCACHE_NOHASHDIR=1

if [ ! -f "$BUILD/build.ninja" ] || ! grep -q '^VISTREL_SANITIZE:BOOL=ON$' "$BUILD/CMakeCache.txt" 2>/dev/null; then
  cmake -S "$ROOT" -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVISTREL_SANITIZE=ON >/dev/null || {
    echo "sanitize.sh: configure failed" >&2; exit 2; }
fi

start=$(date +%s)
cmake --build "$BUILD" -j"$JOBS"
built=$?
echo "sanitize.sh: build took $(( $(date +%s) - start )) s"
[ "$built" -eq 0 ] || { echo "sanitize.sh: build failed" >&2; exit 2; }

export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS="detect_leaks=1:${ASAN_OPTIONS:-}"
export LSAN_OPTIONS="suppressions=$ROOT/tests/sanitizer/lsan.supp:${LSAN_OPTIONS:-}"
# Any undefined behaviour ends the test that ran into it, with its stack.
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1:${UBSAN_OPTIONS:-}"

start=$(date +%s)
# The package is made and checked from the plain build; the checked build
# runs everything else.
ctest --test-dir "$BUILD" -j"$JOBS" --output-on-failure -E '^InstalledPackage$'
tested=$?
echo "sanitize.sh: tests took $(( $(date +%s) - start )) s"
[ "$tested" -eq 0 ] || { echo "sanitize.sh: tests failed" >&2; exit 1; }
