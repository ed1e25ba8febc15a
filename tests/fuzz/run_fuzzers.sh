#!/usr/bin/env bash
# Builds the readers with clang, libFuzzer and AddressSanitizer in a build of their own, then
# fuzzes them for a bounded time. Usage: run_fuzzers.sh SOURCE_DIR BUILD_DIR SECONDS
set -euo pipefail
source_dir=$(realpath "$1")
build_dir=$(realpath -m "$2")
seconds=${3:-20}
launcher=()
command -v ccache >/dev/null 2>&1 && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S "$source_dir/tests/fuzz" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_COMPILER=clang++ -DCORVANE_SOURCE_DIR="$source_dir" "${launcher[@]}" >/dev/null
cmake --build "$build_dir" >/dev/null
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/corpus"
cd "$work"
"$build_dir/reader_fuzzer" -max_total_time="$seconds" -rss_limit_mb=2048 -max_len=4096 \
    -timeout=10 -print_final_stats=1 "$work/corpus"
