#!/usr/bin/env bash
# Every C and C++ file is laid out by clang-format 14; other releases break some lines elsewhere.
set -euo pipefail
. "$(dirname "$0")/../support/skip.sh"
command -v clang-format >/dev/null || skip 'no clang-format'
[[ $(clang-format --version) == *' version 14.'* ]] || elsewhere 'not clang-format 14'
find include source tools tests bench fuzz examples -name '*.h' -o -name '*.cpp' -o -name '*.c' |
    xargs -r -P 2 -n 20 clang-format --dry-run -Werror
