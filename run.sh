#!/usr/bin/env bash
# Installs what is missing, builds Release and starts Kelpwick.
set -euo pipefail
cd "$(dirname "$0")"
scripts/install-deps.sh
# Only the program: the tests belong to ./test.sh and the benchmarks to bench/run.sh.
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release -DKW_TESTS=OFF -DKW_BENCH=OFF >/dev/null
cmake --build build -j"$(nproc)" --target kelpwick
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "No display found: starting Kelpwick under xvfb-run (a virtual X server)."
  exec xvfb-run -a -s "-screen 0 1600x1000x24" build/shell/kelpwick "$@"
fi
exec build/shell/kelpwick "$@"
