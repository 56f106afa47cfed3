#!/usr/bin/env bash
# Configures (once) and builds everything into ./build.
set -euo pipefail
cd "$(dirname "$0")/.."
if [ ! -f build/CMakeCache.txt ]; then
  cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
cmake --build build -j"$(nproc)"
