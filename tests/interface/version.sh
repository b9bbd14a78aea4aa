#!/usr/bin/env bash
# version.sh LIBRARY VLRPROPS VERSION: file name, soname, program and records carry the project's version.
set -euo pipefail
[ "$(basename "$1")" = "libvlrcomn.so.$3" ]
readelf -d "$1" | grep -F "soname: [libvlrcomn.so.${3%%.*}]" >/dev/null
[ "$("$2" --version)" = "vlrprops $3" ]
cd "$(dirname "$0")/../.."
[[ $(grep -m 1 '^## [0-9]' CHANGELOG.md) == "## $3, "????-??-?? && -e abi/vlrcomn-${3%.*}.abi ]]
