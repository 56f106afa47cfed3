#!/usr/bin/env bash
# Installs what a fresh Debian machine lacks, builds, and starts the program.
set -euo pipefail
cd "$(dirname "$0")"
./scripts/install-deps.sh
./scripts/build.sh
exec ./build/src/dovrex "$@"
