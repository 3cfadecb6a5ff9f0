#!/usr/bin/env bash
# Builds the libFuzzer harnesses (fuzz/) in build-fuzz with clang-14 and runs
# each in turn on a copy of its seed corpus (tests/fuzz-corpus/<Name>/, which
# is never written to), with leak checking on.
#
#   scripts/fuzz.sh [SECONDS]       each harness for SECONDS (default 30)
#   scripts/fuzz.sh -runs=N         each harness for N executions
#   FUZZ_ONLY="Pcx GifFrames" scripts/fuzz.sh ...   only those harnesses
#   FUZZ_SEED=1 scripts/fuzz.sh ...  the same sequence of inputs every run
#                                     (0, the default, a new one each run)
#
# Prints per harness the executions and the edges covered (libFuzzer's last
# "cov:" figure); exits non-zero when any harness finds a crash, a leak or
# undefined behaviour. Findings are kept in build-fuzz/fuzz-findings/<Name>/.
# Needs clang-14 and libclang-rt-14-dev (installed by scripts/setup.sh).
set -uo pipefail

ROOT="$(cd "$(dirname "$0")/.." && pwd)"
BUILD="$ROOT/build-fuzz"
LIMIT="-max_total_time=30"
case "${1:-}" in
  "") ;;
  -runs=*) LIMIT="$1" ;;
  *[!0-9]*) echo "usage: $0 [SECONDS | -runs=N]" >&2; exit 2 ;;
  *) LIMIT="-max_total_time=$1" ;;
esac

HARNESSES=(Mp3Tags LoadTags WavTags MidiTags WmaTags GifFrames Pcx NumericFormat CommandPath
           RegistryStore ThumbnailEntry CddbAnswer Metafile)
if [ -n "${FUZZ_ONLY:-}" ]; then read -r -a HARNESSES <<<"$FUZZ_ONLY"; fi

for tool in clang-14 clang++-14; do
  command -v "$tool" >/dev/null || { echo "fuzz.sh: $tool is missing (scripts/setup.sh installs it)" >&2; exit 2; }
done

LAUNCHER=()
if command -v ccache >/dev/null; then
  export CCACHE_BASEDIR="$ROOT" CCACHE_NOHASHDIR=1
  LAUNCHER=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
if [ ! -f "$BUILD/build.ninja" ]; then
  CC=clang-14 CXX=clang++-14 cmake -S "$ROOT/fuzz" -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DVISTREL_FUZZ=ON "${LAUNCHER[@]}" >/dev/null || { echo "fuzz.sh: configure failed" >&2; exit 2; }
fi
targets=()
for name in "${HARNESSES[@]}"; do targets+=("${name}Fuzz"); done
ninja -C "$BUILD" -j2 "${targets[@]}" >/dev/null || {
  ninja -C "$BUILD" -j1 "${targets[@]}" | tail -30; echo "fuzz.sh: build failed" >&2; exit 2; }

# The harnesses run headless and quietly; Qt's warnings about bad pictures
# would only drown libFuzzer's own lines.
export QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES="*=false"
export ASAN_OPTIONS="detect_leaks=1:allocator_may_return_null=1:${ASAN_OPTIONS:-}"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1:${UBSAN_OPTIONS:-}"

failed=0
printf '%-16s %12s %8s  %s\n' harness executions edges result
for name in "${HARNESSES[@]}"; do
  corpus="$BUILD/fuzz-corpus/$name"
  findings="$BUILD/fuzz-findings/$name"
  log="$BUILD/fuzz-logs/$name.log"
  mkdir -p "$corpus" "$findings" "$(dirname "$log")"
  if [ -d "$ROOT/tests/fuzz-corpus/$name" ]; then cp -n "$ROOT/tests/fuzz-corpus/$name/"* "$corpus/" 2>/dev/null; fi
  dict=()
  if [ -f "$ROOT/fuzz/$name.dict" ]; then dict=("-dict=$ROOT/fuzz/$name.dict"); fi
  "$BUILD/fuzz/${name}Fuzz" "$LIMIT" -seed="${FUZZ_SEED:-0}" -detect_leaks=1 -max_len=4096 -timeout=10 -rss_limit_mb=2048 \
    -print_final_stats=1 "${dict[@]}" -artifact_prefix="$findings/" "$corpus" >"$log" 2>&1
  rc=$?
  stat=$(grep -E '^#[0-9]+' "$log" | grep 'cov:' | tail -1)
  runs=$(grep -E '^stat::number_of_executed_units:' "$log" | awk '{print $2}')
  [ -n "$runs" ] || runs=$(sed -E 's/^#([0-9]+).*/\1/' <<<"$stat")
  edges=$(sed -nE 's/.*cov: ([0-9]+).*/\1/p' <<<"$stat")
  result=ok
  if [ $rc -ne 0 ]; then
    result="FOUND (see $log, $findings)"
    failed=1
  fi
  printf '%-16s %12s %8s  %s\n' "$name" "${runs:-?}" "${edges:-?}" "$result"
done
exit $failed
