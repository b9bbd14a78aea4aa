#!/usr/bin/env bash
# command_line.sh VLRPROPS: options, forms of output, exit statuses.
set -u
. "$(dirname "$0")/../support/skip.sh"
vlrprops=$1
command -v jq >/dev/null || skip "no jq"
scratch=$(realpath "$(mktemp -d)")
trap 'rm -rf "$scratch"' EXIT
failures=0
fail() { echo "FAILED: $*"; failures=1; }
same() { [ "$2" = "$3" ] || fail "$1: expected '$2', got '$3'"; } # same WHAT EXPECTED GOT
ends_with() { # ends_with STATUS STDERR-PATTERN COMMAND...: nothing but that error is written
    "${@:3}" >"$scratch/out" 2>"$scratch/err"
    same "status of ${*:3}" "$1" "$?"
    grep -qE -- "$2" "$scratch/err" || fail "${*:3}: no '$2' on standard error"
    [ -s "$scratch/out" ] && fail "${*:3}: wrote to standard output"
}

# --- Every property as JSON, alone and in the table ---
"$vlrprops" --json >"$scratch/all" || fail "--json ended with $?"
jq -e 'length == 30 and all(.[]; type == "string")' "$scratch/all" >/dev/null || fail "no 30 texts in JSON"
same "lines of the table" $((30 + 7 + 6)) "$("$vlrprops" | wc -l)"
same "the agent's report" 0 "$("$vlrprops" | cat - "$scratch/all" | grep -c BootTime)"
"$vlrprops" --json --all >"$scratch/all"
"$vlrprops" --all >"$scratch/table"
mapfile -t names < <("$vlrprops" --list)
same "the names of the help" "${names[*]}" \
    "$("$vlrprops" --help | sed '1,/^Properties:/d' | grep -oE '^  [A-Z]\w+' | tr -d ' ' | paste -sd ' ')"
same "the names of the list" "$(jq -r 'keys[]' "$scratch/all" | sort)" "$(printf '%s\n' "${names[@]}" | sort)"
for name in "${names[@]}"; do
    case $name in LastUpdate | *Disk* | Free* | CPUSpeed) continue ;; esac
    value=$(jq -r ".$name" "$scratch/all")
    same "$name" "$value" "$("$vlrprops" -- "$name")"
    [[ "$(grep -E "^  $name( |$)" "$scratch/table" | cut -c25-)" =~ ^"$value"( bytes| MB)?$ ]] ||
        fail "the line of $name does not end in '$value'"
done
same "several as JSON" '{"OSType":"Mac OS X","PlatformID":"MAC"}' "$("$vlrprops" --json PlatformID osTYPE | jq -c .)"

# --- Readable, and for programs ---
memory=$("$vlrprops" TotalPhysicalMemory)
boot=$("$vlrprops" BootTime)
same "a readable size" "$(numfmt --to=iec-i --round=nearest --format=%.1f "$memory")B" \
    "$("$vlrprops" --human TotalPhysicalMemory | tr -d ' ')"
same "a readable time" "$(date -u -d "@$boot" '+%F %T UTC')" "$(TZ=XYZ-3 "$vlrprops" --human BootTime)"
same "JSON for people" "$memory" "$("$vlrprops" --json --human TotalPhysicalMemory | jq -r '.[]')"
same "typed values" "[$memory,null,\"0409\",$boot]" "$(LANG=C "$vlrprops" --json=typed --all |
    jq -c '[.TotalPhysicalMemory, .CPUSerialNumber, .DefaultLangID, .BootTime]')"
jq -e --slurpfile texts "$scratch/all" '(.CPUSpeed | . == null or . > 0) and .NumOfCPU > 0 and
    (.DomainName == null) == ($texts[0].DomainName == "UnKnownDomain") and
    (.UserName == null) == ($texts[0].UserName == "NA")' <("$vlrprops" --json=typed) >/dev/null ||
    fail "what is not found is not null"
for options in --help --all --file-systems '--human --all'; do
    LANG=C script -qec "stty cols 40; '$vlrprops' $options" /dev/null </dev/null | tr -d '\r' >"$scratch/narrow"
    if [ ! -s "$scratch/narrow" ]; then left_out "a terminal, which is not to be had here"; else
        same "lines over 40 columns of $options" "" "$(grep -E '.{41}' "$scratch/narrow")"
    fi
done

# --- A mount namespace: names of file systems that need care, and a machine without a null device ---
export scratch vlrprops
odd=$'a "b"\\c\nd\x1b[31m\xc3\xa9'
# Overlays, since memory is no disk; their size is that of the memory behind them.
unshare --mount bash -c '
    memory=$scratch/memory
    mkdir "$memory" && mount -t tmpfs -o size=8m tmpfs "$memory" || exit
    for name; do
        mkdir "$scratch/$name" "$memory/upper$((++count))" "$memory/work$count"
        mount -t overlay -o "lowerdir=/etc,upperdir=$memory/upper$count,workdir=$memory/work$count" \
            overlay "$scratch/$name" || exit
    done
    "$vlrprops" --json --file-systems >"$scratch/json"
    "$vlrprops" --json=typed --file-systems >"$scratch/typed"
    "$vlrprops" --file-systems >"$scratch/lines"
    "$vlrprops" --human --file-systems >"$scratch/human"
    mount -t tmpfs none /dev || exit
    "$vlrprops" --json >"$scratch/mixed" 2>&-
    echo $? >"$scratch/status"' bash "$odd" $'cut\xff here' $'beyond\xf4\x90\x80\x80' 2>/dev/null
if [ ! -e "$scratch/status" ]; then left_out "mounts of its own, which are not to be had here"; else
    for name in "$odd" cut beyond; do
        same "$name" '{"total":"8.00","free":"7.60"}' "$(jq -c --arg name "$scratch/$name" '.[$name]' "$scratch/json")"
    done
    same "sizes of programs" '{"total":8388608,"free":7969178}' \
        "$(jq -c --arg name "$scratch/cut" '.[$name]' "$scratch/typed")"
    same "sizes of people" "8.0 MiB 7.6 MiB" "$(grep "$scratch/cut" "$scratch/human" | awk '{ print $1, $2, $3, $4 }')"
    same "file systems in memory" null "$(jq -c --arg name "$scratch/memory" '.[$name]' "$scratch/json")"
    iconv -f UTF-8 -t UTF-8 "$scratch/json" >/dev/null || fail "the JSON is not UTF-8"
    grep -qF 'a "b"\c\u000ad\u001b[31mé' "$scratch/lines" || fail "control characters are not written as escapes"
    same "status where diagnostics would get into the report" 1 "$(cat "$scratch/status")"
    same "that report" "" "$(cat "$scratch/mixed")"
fi

# --- Errors ---
ends_with 2 "unknown option '--jason'" "$vlrprops" --jason
ends_with 2 "unknown property 'CPUTyp' .did you mean 'CPUType'" "$vlrprops" --json CPUTyp
ends_with 2 "unknown property 'addressip'$" "$vlrprops" addressip
ends_with 2 "--all takes no property names" "$vlrprops" --all CPUType
ends_with 2 "unknown property 'a.u001b.u009bb'" "$vlrprops" $'a\x1b\xc2\x9bb\xff'
ends_with 1 "cannot write" bash -c '"$0" >&-' "$vlrprops"
[ ! -w /dev/full ] || ends_with 1 "cannot write" bash -c '"$0" --json >/dev/full' "$vlrprops"
same "closed input and errors" "Mac OS X" "$("$vlrprops" OSType <&- 2>&-)"

exit $failures
