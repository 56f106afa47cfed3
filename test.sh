#!/usr/bin/env bash
# Installs what a fresh Debian machine lacks, builds, and runs every test.
set -euo pipefail
cd "$(dirname "$0")"
./scripts/install-deps.sh
./scripts/build.sh
cd build
QT_QPA_PLATFORM=offscreen ctest --output-on-failure
cd ..
# The suite's size against the code's, shown after every run (the aim: at most 36 %).
./scripts/test-ratio.sh || true
