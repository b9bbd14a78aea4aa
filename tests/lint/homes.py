#!/usr/bin/env python3
"""homes.py LIBRARY OBJECTS: each exported name is defined in the folder of a header that declares it, and a type
of an internal header stands in the file that bears its name, if there is one.

OBJECTS is the folder with the objects of the library's core, one folder below it for each of source/.
"""
import re
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, "scripts")
from house import folders  # noqa: E402


def defined(files, *options):
    """(file, linker name) of every name that the files define."""
    out = subprocess.run(["nm", "-A", "-P", "--defined-only", *options, *map(str, files)], check=True,
                         capture_output=True, text=True).stdout
    return [(line.split(": ")[0], line.split(": ")[1].split()[0]) for line in out.splitlines()]


def words(header):
    """Every word of a header outside its comments."""
    text = re.sub(r"/\*.*?\*/|//[^\n]*", " ", Path("include/vlrcomn", header).read_text(), flags=re.S)
    return set(re.findall(r"\w+", text))


def misplaced_types():
    """Types of internal headers that the name of another file promises: FileRecord belongs to file_record."""
    stems = {file.stem for file in Path("source").rglob("*.*") if file.suffix in (".h", ".cpp")}
    for header in sorted(Path("source").rglob("*.h")):
        for name in re.findall(r"^(?:struct|class)\b[^;{()]*?(?:\([^()]*\) )?(\w+)(?: final)?(?: :[^;{]*)? \{",
                               header.read_text(), re.M):
            stem = re.sub(r"(?<=[a-z0-9])(?=[A-Z])", "_", name).lower()
            if stem in stems - {header.stem} and header.name != "platform.h":  # that is whole for who answers it
                yield f"{header}: {name} belongs to the files {stem}"


library, objects = sys.argv[1], Path(sys.argv[2])
exported = {name for _, name in defined([library], "-D")}
pairs = [(Path(file).relative_to(objects), name)
         for file, name in defined(sorted(objects.rglob("*.o"))) if name in exported]
readable = subprocess.run(["c++filt"], input="\n".join(name for _, name in pairs), check=True,
                          capture_output=True, text=True).stdout.splitlines()
declared = {folder.name: set().union(*map(words, folder.headers)) for folder in folders().values()}
bad = [*misplaced_types()]
for (file, _), name in zip(pairs, readable):
    plain = re.sub(r"\[abi:\w+\]|^(vtable|typeinfo|typeinfo name) for |<.*", "", name.split("(")[0]).split(" ")[-1]
    parts = [part.lstrip("~") for part in plain.split("::")]
    own = parts[-2:] if len(parts) > 1 and parts[-2][0].isupper() else parts[-1:]  # a class and its member
    if not declared[file.parts[0]].issuperset(own):
        bad.append(f"{file}: no header of {file.parts[0]}/ declares {name}")
assert len(pairs) > 400, "the objects lie elsewhere now"
sys.exit("\n".join(bad) or 0)
