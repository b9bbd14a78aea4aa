#!/usr/bin/env bash
# hardened.sh ARCHIVE LIBRARY PROGRAM: an optimised build carries the marks of cmake/hardening.cmake.
set -euo pipefail
# has WORDS COMMAND...: the command's report on the file has a line with the words
has() { "${@:2}" "$file" | grep -E "$1" >/dev/null || { echo "$file: no $1"; exit 1; }; }
for file in "${@:2}"; do
    has GNU_RELRO readelf -Wl
    has BIND_NOW readelf -d
    has 'UND __stack_chk_fail' readelf -W --dyn-syms
    has 'UND __[a-z]+_chk' readelf -W --dyn-syms
    has 'Type: *DYN' readelf -h
done
has 'Flags:.* PIE' readelf -d  # the program
# The linker marks what it links when the C library's own start files are marked, too; Debian's are not.
if readelf -h "$file" | grep 'Machine:.*X86' >/dev/null; then
    [ "$(readelf -n "$1" | grep -c 'IBT, SHSTK')" = "$(ar t "$1" | wc -l)" ] || { echo "$1: no IBT, SHSTK"; exit 1; }
fi
