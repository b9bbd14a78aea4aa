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
PUBLIC = Path("include/vlrcomn")


def complaints():
    for folder in FOLDERS.values():
        for below in folder.below:
            if below not in FOLDERS or FOLDERS[below].floor >= folder.floor:
                yield f"the table: {folder.name}/ cannot stand on {below}"
        for file in [*Path("source", folder.name).rglob("*.[hc]*"), *(PUBLIC / header for header in folder.headers)]:
            for path in re.findall(r'^#include "([^"]+)"', file.read_text(), re.M):
                first, _, name = path.partition("/")
                target = OWNER.get(name) if first == "vlrcomn" else first
                if name != "types.h" and target not in ("support", folder.name, *folder.below) and \
                        (file.name, name) not in KEPT:
                    yield f"{file}: {folder.name}/ may not include {path}"
    for missing in set(FOLDERS) ^ {path.name for path in Path("source").iterdir() if path.is_dir()}:
        yield f"{missing}/ is in the table or in source/, not in both"
    for header in {path.name for path in PUBLIC.glob("*.h")} ^ {*OWNER, "types.h"}:
        yield f"{header} is in the table or in include/, not in both"


sys.exit("\n".join(sorted(complaints())) or 0)
