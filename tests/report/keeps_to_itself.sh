#!/usr/bin/env bash
# keeps_to_itself.sh PROBE OBJECTS: what collecting a report writes, starts and reads with somebody logged on. The
# words on standard output are those quoted in logged_on_users.h. "TZ" is read by the C library and the time helpers.
. "$(dirname "$0")/../support/skip.sh"
probe=$1 objects=$2
failures=0
fail() { echo "FAILED: $*" && failures=1; }

words='^(Some changes happen in the logon sessions\.|-?[0-9]+  .*  .*  .* '
words+='|Network User logged on .* |Local User Logged on .* |found group struct .*\. '
words+='|Coming out from the logon session collections\.)$'
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$probe" "$scratch/records" >"$scratch/out" 2>"$scratch/err" || fail "the probe ended with $?: 1 a thread, 2 a descriptor too many"
grep -avE "$words" "$scratch/out" && fail "standard output holds more than the quoted words"
[ -s "$scratch/err" ] && fail "standard error is not empty: $(cat "$scratch/err")"
[ "$(grep -ac '^Some changes' "$scratch/out")" = 2 ] || fail "two reports should list the users twice"
grep -aq '^Local User Logged on nobody-here' "$scratch/out" ||
    echo "this C library has no login records: nobody was logged on"

command -v nm >/dev/null || skip "no nm"
mapfile -t all < <(find "$objects" -name '*.o' | grep -E '/((sysprops|network|session)/|vlrcomn_platform\.dir)')
[ ${#all[@]} -ge 30 ] || fail "the objects of the library are not where they are looked for"
only() { # only FILES SYMBOLS: no other object imports one of the symbols
    nm --undefined-only --print-file-name --demangle "${all[@]}" 2>/dev/null | sed -E 's,:.* U , ,; s,@.*$,,' |
        grep -E " ($2)$" | grep -vE "$1" && fail "imports that are not allowed there"
}
only /run_command 'pthread_create|thrd_create|std::thread::.*|v?fork|clone|posix_spawnp?|popen|system'
only '^$' 'v?syslog|openlog|closelog'
only /misc_collector 'getenv|secure_getenv|environ|__environ|setenv|putenv|unsetenv'
exit $failures
