#!/usr/bin/env bash
# Installs what a fresh Debian machine lacks, builds, and runs every test.
set -euo pipefail
cd "$(dirname "$0")"
./scripts/install-deps.sh
./scripts/build.sh
cd build
QT_QPA_PLATFORM=offscreen ctest --output-on-failure
