#!/usr/bin/env bash
# Lines of the tests against lines of the program (tests/**/*.cpp|h against src/**/*.cpp|h).
# Prints both counts and the share; fails when the tests pass the share given (36 by default), so
# that a suite that grows faster than the code is seen.
set -euo pipefail
cd "$(dirname "$0")/.."
limit="${1:-36}"
count() { find "$1" \( -name '*.cpp' -o -name '*.h' \) -print0 | xargs -0 cat | wc -l; }
tests=$(count tests)
src=$(count src)
percent=$((tests * 100 / src))
echo "tests ${tests} lines, src ${src} lines: ${percent} % (at most ${limit} %)"
[ $((tests * 100)) -le $((src * limit)) ]
