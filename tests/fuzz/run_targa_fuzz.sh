#!/usr/bin/env bash
# Fuzzes the Targa decoder with libFuzzer for a number of seconds (default 60):
#   tests/fuzz/run_targa_fuzz.sh [seconds]
# Needs clang. New inputs that reach new code are added to tests/fuzz/corpus
# (keep it small: merge with -merge=1 and keep the short files).
set -euo pipefail
cd "$(dirname "$0")"
ROOT=$(cd ../.. && pwd)
SECONDS_TO_RUN=${1:-60}
OUT=${TMPDIR:-/tmp}/kelpwick-fuzz
mkdir -p "$OUT" corpus
FLAGS=(-std=c++20 -g -O1 -I"$ROOT" -fno-omit-frame-pointer)
clang++ "${FLAGS[@]}" FuzzReplay.cpp TargaFuzz.cpp "$ROOT/file/TargaReader.cpp" -o "$OUT/seeds"
"$OUT/seeds" --write-seeds "$OUT/seeds-corpus"
clang++ "${FLAGS[@]}" -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=undefined \
  TargaFuzz.cpp "$ROOT/file/TargaReader.cpp" -o "$OUT/targa_fuzzer"
"$OUT/targa_fuzzer" -max_total_time="$SECONDS_TO_RUN" -max_len=70000 -rss_limit_mb=2048 \
  corpus "$OUT/seeds-corpus"
