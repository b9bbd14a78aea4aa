#!/usr/bin/env bash
# command_line.sh VLRPROPS: options, forms of output, exit statuses. Parts that need root or a missing tool
# are left out with a word.
set -u
vlrprops=$1
command -v jq >/dev/null || { echo "SKIPPED: no jq"; exit 77; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failures=0
fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}
same() { # same WHAT EXPECTED GOT
    [ "$2" = "$3" ] || fail "$1: expected '$2', got '$3'"
}
ends_with() { # ends_with STATUS STDERR-PATTERN COMMAND...: nothing but that error is written
    local status=$1 pattern=$2
    shift 2
    "$@" >"$scratch/out" 2>"$scratch/err"
    same "status of $*" "$status" "$?"
    grep -qE -- "$pattern" "$scratch/err" || fail "$*: no '$pattern' on standard error"
    [ -s "$scratch/out" ] && fail "$*: wrote to standard output"
}

# --- JSON ---
"$vlrprops" --json >"$scratch/all" 2>"$scratch/err" || fail "--json ended with $?"
[ -s "$scratch/err" ] && fail "--json wrote to standard error"
jq -e 'type == "object" and length == 30 and all(.[]; type == "string")' "$scratch/all" >/dev/null ||
    fail "--json is not one object of 30 texts"
mapfile -t names < <("$vlrprops" --help | sed -n '/^Properties:/,$p' | awk 'NR > 1 { print $1 }')
same "the names of the help" "$(jq -r 'keys[]' "$scratch/all" | sort)" "$(printf '%s\n' "${names[@]}" | sort)"
"$vlrprops" --json --file-systems |
    jq -e 'type == "object" and all(.[]; keys == ["free", "total"])' >/dev/null ||
    fail "--json --file-systems is not an object of totals and frees"
same "chosen as JSON" '{"OSType":"Mac OS X","PlatformID":"MAC"}' \
    "$("$vlrprops" --json PlatformID OSType | jq -c .)"

# --- Single values ---
same "one value" "Mac OS X" "$("$vlrprops" OSType)"
same "several values" $'MAC\nApple Macintosh\nMAC' "$("$vlrprops" PlatformID OSOEMId PlatformID)"
for name in "${names[@]}"; do
    case $name in LastUpdate | Free* | CPUSpeed) continue ;; esac
    same "$name" "$(jq -r ".$name" "$scratch/all")" "$("$vlrprops" -- "$name")"
done

# --- Table ---
"$vlrprops" >"$scratch/table"
same "the groups" "Computer Processor Memory Operating-system Disks Network User " \
    "$(grep -E '^[A-Z]' "$scratch/table" | tr ' \n' '- ')"
for name in "${names[@]}"; do
    case $name in LastUpdate | Free* | CPUSpeed) continue ;; esac
    value=$(jq -r ".$name" "$scratch/all")
    [[ "$(grep -E "^  $name( |$)" "$scratch/table" | cut -c25-)" =~ ^"$value"( bytes| MB)?$ ]] ||
        fail "the line of $name does not end in '$value'"
done
same "lines of the table" $((30 + 7 + 6)) "$(wc -l <"$scratch/table")"
grep -q 'logon sessions' "$scratch"/table "$scratch"/all && fail "diagnostics of the library in the output"
if script -qec true /dev/null >/dev/null 2>&1; then
    script -qec "stty cols 40; exec '$vlrprops'" /dev/null </dev/null | tr -d '\r' >"$scratch/terminal"
    grep -q '^  OSType' "$scratch/terminal" || fail "no table on a terminal"
    grep -E '.{41}' "$scratch/terminal" && fail "a line passes the terminal's edge"
else
    echo "left out: no script(1)"
fi

# --- Names that need care ---
if unshare --mount true 2>/dev/null; then
    inside='mount --make-rprivate / && for name; do mkdir -p "$scratch/$name" && mount -t tmpfs -o size=8m tmpfs "$scratch/$name"; done
            "$vlrprops" --json --file-systems >"$scratch/json"; "$vlrprops" --file-systems >"$scratch/lines"
            for name; do umount "$scratch/$name"; rmdir "$scratch/$name"; done'
    odd=$'a "b"\\c\nd\x1b[31m\xc3\xa9'
    export scratch vlrprops
    unshare --mount bash -c "$inside" sh "$odd" $'cut\xff here' $'beyond\xf4\x90\x80\x80'
    same "a name with everything in it" '{"total":"8.00","free":"7.60"}' \
        "$(jq -c --arg name "$scratch/$odd" '.[$name]' "$scratch/json")"
    jq -e --arg name "$scratch/cut" '.[$name]' "$scratch/json" >/dev/null ||
        fail "a name that is no UTF-8 is not listed up to its fault"
    jq -e --arg name "$scratch/beyond"$'\xef\xbf\xbd' '.[$name]' "$scratch/json" >/dev/null ||
        fail "a code above U+10FFFF is not replaced"
    iconv -f UTF-8 -t UTF-8 "$scratch/json" >/dev/null || fail "the JSON is not UTF-8"
    grep -qF 'a "b"\c\u000ad\u001b[31mé' "$scratch/lines" || fail "control characters are not written as escapes"
else
    echo "left out: mounts, which need root"
fi

# --- Errors ---
ends_with 2 "unknown option '--jason'" "$vlrprops" --jason
ends_with 2 "unknown option '-x'" "$vlrprops" OSType -x
ends_with 2 "unknown property 'NoSuch'" "$vlrprops" NoSuch
ends_with 2 "did you mean 'OSType'" "$vlrprops" --json ostype
ends_with 2 "unknown property ''" "$vlrprops" ''
ends_with 2 "takes no property names" "$vlrprops" --file-systems OSType
if [ -w /dev/full ]; then
    for option in "" --json --help --version OSType; do
        ends_with 1 "cannot write" bash -c '"$0" $1 >/dev/full' "$vlrprops" "$option"
    done
fi
ends_with 1 "cannot write" bash -c '"$0" >&-' "$vlrprops"
same "closed input and errors" "Mac OS X" "$("$vlrprops" OSType <&- 2>&-)"
same "the version" "$("$vlrprops" --version)" "vlrprops $("$vlrprops" --version | grep -oE '[0-9]+\.[0-9]+\.[0-9]+')"
"$vlrprops" --help | grep -q '^Usage: vlrprops' || fail "no usage in the help"
"$vlrprops" --help | grep -E '.{81}' && fail "a line of the help is longer than 80"

[ $failures = 0 ] && echo passed
exit $((failures > 0))
