#!/usr/bin/env python3
"""Every include of source/ and of the public headers keeps to the table of docs/architecture.md."""
import re
import sys
from pathlib import Path

sys.path.insert(0, "scripts")
from house import folders  # noqa: E402

# A header that programs look for in another one, which still shows it to them.
KEPT = {("thread.h", "dynamic_library.h")}

FOLDERS = folders()
OWNER = {header: folder.name for folder in FOLDERS.values() for header in folder.headers}
bad = 0


def report(words):
    global bad
    print(words)
    bad = 1


def check(file, folder):
    for line in Path(file).read_text().splitlines():
        included = re.match(r'#include "([^"]+)"', line)
        if not included:
            continue
        path = included.group(1)
        first, _, name = path.partition("/")
        target = OWNER.get(name) if first == "vlrcomn" else first
        if name == "types.h" or target in ("support", folder.name) or target in folder.below:
            continue
        if (Path(file).name, name) not in KEPT:
            report(f"{file}: {folder.name}/ may not include {path}")


for folder in FOLDERS.values():
    for below in folder.below:
        if below not in FOLDERS or FOLDERS[below].floor >= folder.floor:
            report(f"the table: {folder.name}/ cannot stand on {below}")
    for file in sorted(Path("source", folder.name).rglob("*")):
        if file.suffix in (".h", ".cpp"):
            check(file, folder)
    for header in folder.headers:
        check(Path("include/vlrcomn", header), folder)

listed = set(FOLDERS)
for missing in sorted(listed ^ {path.name for path in Path("source").iterdir() if path.is_dir()}):
    report(f"{missing}/ is in the table or in source/, not in both")
for header in sorted({path.name for path in Path("include/vlrcomn").glob("*.h")} ^ (set(OWNER) | {"types.h"})):
    report(f"{header} is in the table or in include/, not in both")
sys.exit(bad)
