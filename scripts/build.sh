#!/usr/bin/env bash
# Configures (once) and builds everything into ./build.
set -euo pipefail
cd "$(dirname "$0")/.."
# ccache keys paths relative to the checkout, so a fresh clone in another folder reuses the objects
# of an earlier build of the same sources.
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
if [ ! -f build/CMakeCache.txt ]; then
  cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
cmake --build build -j"$(nproc)"
