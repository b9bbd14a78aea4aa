#!/usr/bin/env bash
# keeps_to_itself.sh PROBE OBJECTS: what collecting a report writes, starts and reads. The words on standard
# output are those quoted in logged_on_users.h; the objects of the properties stack neither log nor start
# threads, and ask for no environment variable but LANG ("TZ" is the C library's and the time helpers').
set -u
probe=$1
objects=$2
failures=0
fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

# --- What is written ---
words='^(Some changes happen in the logon sessions\.'
words+='|-?[0-9]+  .*  .*  .* '
words+='|Network User logged on .* |Local User Logged on .* |found group struct .*\. '
words+='|Coming out from the logon session collections\.)$'
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$probe" >"$scratch/out" 2>"$scratch/err" || fail "the probe ended with $?: 1 a thread, 2 a descriptor too many"
grep -avE "$words" "$scratch/out" && fail "standard output holds more than the quoted words"
[ -s "$scratch/err" ] && fail "standard error is not empty: $(cat "$scratch/err")"
[ "$(grep -ac '^Some changes' "$scratch/out")" = 2 ] || fail "two reports should list the users twice"

# --- What is called ---
command -v nm >/dev/null || { echo "SKIPPED: no nm"; exit 77; }
imports() { # imports FILE...: "file symbol" for each undefined symbol, demangled and without version
    nm --undefined-only --print-file-name --demangle "$@" 2>/dev/null |
        sed -E 's,^([^:]*):.* U ,\1 ,; s,@.*$,,'
}
mapfile -t stack < <(find "$objects" -name '*.o' | grep -E '/(sysprops|network|session)/')
mapfile -t platform < <(find "$objects/vlrcomn_platform.dir" -name '*.o')
if [ ${#stack[@]} -lt 20 ] || [ ${#platform[@]} -lt 5 ]; then
    fail "the objects of the library are not where they are looked for"
fi
all=("${stack[@]}" "${platform[@]}")
imports "${all[@]}" | grep -E ' (pthread_create|thrd_create|std::thread::.*|fork|vfork|clone|posix_spawnp?)$' |
    grep -v '/run_command' && fail "a thread or a process is started outside run_command"
imports "${all[@]}" | grep -E ' (v?syslog|openlog|closelog)$' && fail "something writes to the log"
imports "${all[@]}" | grep -E ' (popen|system)$' | grep -vE '/run_command|/directory_domain' &&
    fail "a command is run outside run_command"
imports "${all[@]}" | grep -E ' (printf|vprintf|puts|putchar|perror|stdout|stderr|std::c(out|err|log)|wprintf)$' |
    grep -vE '/session/' && fail "something outside the session family writes to the standard streams"
imports "${all[@]}" | grep -E ' (getenv|secure_getenv|environ|__environ|setenv|putenv|unsetenv)$' |
    grep -vE '/misc_collector' && fail "something else reads or changes the environment"
collector=$(find "$objects" -name 'misc_collector*.o')
[ "$(imports "$collector" | grep -c ' getenv$')" = 1 ] || fail "the collector of LANG was not found"
strings -a "$collector" | grep -qx LANG || fail "the variable that it reads is not LANG"

[ $failures = 0 ] && echo "passed: ${#all[@]} objects"
exit $((failures > 0))
