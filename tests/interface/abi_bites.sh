#!/usr/bin/env bash
# abi_bites.sh LIBRARY: the check lets additions pass and nothing else; the older interface is made by doctoring
# the description of the present one.
set -euo pipefail
cd "$(dirname "$0")/../.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# against NAME EXPECTED-STATUS SED-SCRIPT
against() {
    local status=0
    sed -E "$3" abi/vlrcomn-*.abi >"$work/older.abi"
    ! cmp -s "$work/older.abi" abi/vlrcomn-*.abi || { echo "$1: nothing to doctor"; exit 1; }
    scripts/check-abi "$library" "$work/older.abi" >"$work/report" 2>&1 || status=$?
    [ "$status" != 77 ] || { cat "$work/report"; exit 77; }
    [ "$status" = "$2" ] || { echo "$1: status $status"; cat "$work/report"; exit 1; }
}
library=$1
against 'a name added' 0 "/elf-symbol name='oruGetTickCount'/d; /mangled-name='oruGetTickCount'/,/<.function-decl>/d"
against 'a name gone' 1 's/oruGetTickCount/oruGetTickCounts/g'
against 'members exchanged' 1 "s/'wstrOSType'/'x'/; s/'wstrOSVersion'/'wstrOSType'/; s/'x'/'wstrOSVersion'/"
against 'a record of another size' 1 "/name='oruFindData'/s/size-in-bits='[0-9]+'/size-in-bits='2304'/"
against 'a value changed' 1 "s/(name='SyslogInfo' value)='3'/\1='4'/"
against 'a damaged description' 1 '$d'
