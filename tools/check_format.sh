#!/usr/bin/env bash
# Every source in the one layout of .clang-format. Usage: tools/check_format.sh [CLANG_FORMAT]
# Mend with: git ls-files '*.cpp' '*.h' | xargs clang-format-14 -i
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
git -c 'safe.directory=*' ls-files -z --cached --others --exclude-standard -- 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' 'bench/*.cpp' 'bench/*.h' |
  xargs -0 -r -n 64 -P 2 "${1:-clang-format-14}" --dry-run -Werror
