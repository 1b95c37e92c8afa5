#!/usr/bin/env bash
# Installs what is missing, builds with AddressSanitizer and UBSan, runs every test.
set -euo pipefail
cd "$(dirname "$0")"
scripts/install-deps.sh
BUILD=build-asan
cmake -S . -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DKW_SANITIZE=ON -DKW_BENCH=OFF \
  -DCMAKE_CXX_FLAGS="-O1" >/dev/null
cmake --build "$BUILD" -j"$(nproc)"
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
cd "$BUILD" && ctest --output-on-failure -j"$(nproc)"
