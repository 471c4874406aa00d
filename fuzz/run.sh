#!/bin/sh
# Builds the rule-list fuzzer with clang and runs it for the given seconds (default 180).
set -eu
cd "$(dirname "$0")/.."
cmake -S . -B build-fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DOBRINTA_TESTS=OFF -DOBRINTA_SANITIZE=ON \
    -DCMAKE_CXX_FLAGS=-fsanitize=fuzzer-no-link >/dev/null
cmake --build build-fuzz --target rulelist_fuzzer
mkdir -p fuzz/corpus-work
./build-fuzz/rulelist_fuzzer -max_total_time="${1:-180}" -max_len=4096 fuzz/corpus-work fuzz/corpus
