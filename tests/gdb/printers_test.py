"""Run inside gdb on gdb_printed: what the printers of tools/gdb show. `0x` stands for any address."""

import re

import gdb

EXPECTED = {
    "null_handle": "null handle",
    "invalid": "invalid handle",
    "*event": "0x event, set",
    "owned_mutex": "0x mutex, owned by thread 0x",
    "file": '0x file N "PATH/gdb_printed"',
    "thread": "0x thread, ended",
    "*shared_lock": "SE lock, held shared 2 times, 1 notification (last created)",
    "*owned_lock": "SE lock, owned by the thread of event 0x 1 time (last granted exclusively)",
    "*counted": "list of 2 items = {0x, 0x}",
    "both_ends": "locked list of 3 items, SE lock, free (last released) = {0x, 0x, 0x}",
}


def shown(expression):
    text = gdb.execute(f"print {expression}", to_string=True).split(" = ", 1)[1].strip()
    text = re.sub(r"0x[0-9a-f]+", "0x", text)
    return re.sub(r'file \d+ "/.*/', 'file N "PATH/', text)


try:
    for setting in "breakpoint pending on", "print symbol off", "print address on", "width 0":
        gdb.execute(f"set {setting}")
    for command in "break everything_is_made", "run", "up":
        gdb.execute(command)
    found = {expression: shown(expression) for expression in EXPECTED}
    failures = [f"print {key}\n  expected {EXPECTED[key]}\n  found    {found[key]}"
                for key in EXPECTED if found[key] != EXPECTED[key]]
except gdb.error as error:
    failures = [str(error)]
print("\n".join(failures))
gdb.execute(f"quit {1 if failures else 0}")
