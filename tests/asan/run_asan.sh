#!/bin/sh
# Builds the test program and its test plug-ins with AddressSanitizer and UndefinedBehavior-
# Sanitizer in a build folder of their own, and runs the tests that feed the pipeline bad
# frames, garbage readings and damaged files.
# Usage: run_asan.sh <source dir> <build dir>
set -e
source_dir=$(cd "$1" && pwd)
build_dir=$2
mkdir -p "$build_dir"
build_dir=$(cd "$build_dir" && pwd)
flags="-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined"
if [ ! -f "$build_dir/build.ninja" ]; then
    cmake -S "$source_dir" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
        -DCMAKE_CXX_COMPILER_LAUNCHER=ccache \
        -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_C_FLAGS="$flags" \
        -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" \
        -DCMAKE_MODULE_LINKER_FLAGS="-fsanitize=address,undefined" \
        -DCMAKE_SHARED_LINKER_FLAGS="-fsanitize=address,undefined" >/dev/null
fi
cmake --build "$build_dir" --target corvane_tests
export ASAN_OPTIONS=detect_leaks=0:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
"$build_dir/tests/corvane_tests" --gtest_brief=1 \
    --gtest_filter='RecognitionThreads.*:FrameConverter.*:RegionCutter.*:MotionArea.*:SearchArea.*:TransitLine.*:Template*:Damaged*:WorkerThread*:FrameRing*'
