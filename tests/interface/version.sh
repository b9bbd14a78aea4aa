#!/usr/bin/env bash
# version.sh LIBRARY VLRPROPS VERSION: file name, soname and program carry the project's version.
set -euo pipefail
[ "$(basename "$1")" = "libvlrcomn.so.$3" ]
readelf -d "$1" | grep -F "soname: [libvlrcomn.so.${3%%.*}]" >/dev/null
[ "$("$2" --version)" = "vlrprops $3" ]
