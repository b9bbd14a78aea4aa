#!/usr/bin/env python3
"""site_pages.py FOLDER: writes the pages of the site that follow from the tree, for Doxygen to read.

The examples, the sources of the tests by folder, the manual from docs/man, the table of the house, and for each
header where its tests and its manual stand. Run by scripts/docs; nothing here lists a file by hand.
"""
import itertools
import re
import subprocess
import sys
from pathlib import Path

from house import folders

OUT = Path(sys.argv[1])
HOUSE = folders()
EXAMPLES = sorted(path for path in Path("examples").iterdir() if path.suffix in (".c", ".cpp"))
MANUAL = sorted(Path("docs/man").glob("*.[1-8]"))
TESTS = sorted(path for path in Path("tests").iterdir() if path.is_dir())
HEADERS = sorted(path.name for path in Path("include/vlrcomn").glob("*.h"))
FOLDER = {header: folder.name for folder in HOUSE.values() for header in folder.headers}


def man_title(path):
    return f"{path.stem}({path.suffix[1:]})"


def man_ref(path):
    return f'@ref man_{path.stem} "{man_title(path)}"'


def test_ref(name):
    return f'@ref tests_{name} "tests/{name}"'


def page_of(header):
    """The page that Doxygen makes of a header."""
    return header.replace("_", "__").replace(".", "_8") + ".html"


def head_comment(path):
    """The first paragraph of the comment at a file's head, if it has one."""
    lines = path.read_text().splitlines() if path.exists() else []
    paragraph = itertools.takewhile(lambda line: re.match(r"(//|/\*| \*|#) \S", line), lines)
    return " ".join(line.strip("/*# ") for line in paragraph)


def block(*lines):
    return "/**\n" + "\n".join(lines) + "\n*/\n"


def examples():
    for path in EXAMPLES:
        yield block(f"@example {path.name}")


def examples_list():
    """The examples as links with their words."""
    for path in EXAMPLES:
        words = head_comment(path).partition(": ")[2]
        yield f"- [{path.name}]({path.name.replace('.', '_8')}-example.html){': ' * bool(words)}{words}\n"


def sources(folder):
    found = sorted(path for path in folder.rglob("*") if path.suffix in (".c", ".cpp", ".h", ".py", ".sh"))
    return found or [folder / "CMakeLists.txt"]  # which then is all that there is


def tests():
    yield block("@page tests Tests",
                "The folders of `tests/`: one for each family of `source/`, and those that test the whole.\n",
                *(f'- @subpage tests_{folder.name} "tests/{folder.name}"' for folder in TESTS))
    for folder in TESTS:
        headers = HOUSE[folder.name].headers if folder.name in HOUSE else []
        what = f"Tests of {', '.join(headers)}." if headers else head_comment(folder / "CMakeLists.txt")
        yield block(f"@page tests_{folder.name} tests/{folder.name}", "@tableofcontents", what,
                    *(f"@section tests_{re.sub(r'[^a-z0-9]', '_', str(path.relative_to('tests')))} {path.name}\n"
                      f"@include {path.relative_to('tests')}" for path in sources(folder)))


def manual():
    yield block("@page manual Manual", "The pages that `man` shows where the library is installed.\n",
                *(f'- @subpage man_{path.stem} "{man_title(path)}"' for path in MANUAL))
    for path in MANUAL:
        text = subprocess.run(
            ["mandoc", "-T", "html", "-O", "fragment,includes=%I,"
             "man=man_%N.html;https://manpages.debian.org/%N.%S", path.name],
            cwd=path.parent, check=True, capture_output=True, text=True).stdout
        text = re.sub(r'href="vlrcomn/([^"]+)"', lambda found: f'href="{page_of(found[1])}"', text)
        (OUT / f"{path.name}.html").write_text(text)
        what = re.search(r"^\.Nd (.*)", path.read_text(), re.M)[1]
        yield block(f"@page man_{path.stem} {man_title(path)}", f"@brief {what}\n", f"@htmlinclude {path.name}.html")


def manual_of(*headers):
    """The manual pages whose synopsis includes one of the headers."""
    return ", ".join(man_ref(path) for path in MANUAL
                     if any(f"\n.In vlrcomn/{header}\n" in path.read_text() for header in headers))


def headers():
    for name in HEADERS:
        manual_page = manual_of(name)
        yield block(f"@file vlrcomn/{name}", "@see " + (f"the manual page {manual_page}, " if manual_page else "") +
                    f"its tests in {test_ref(FOLDER.get(name, 'headers'))}")


def house():
    """The table under the picture: from a folder to its headers, tests and manual."""
    yield "| folder | headers | tests | manual |\n|---|---|---|---|\n"
    for folder in HOUSE.values():
        if folder.headers:
            yield (f"| `{folder.name}/` | {', '.join(folder.headers)} | {test_ref(folder.name)} "
                   f"| {manual_of(*folder.headers)} |\n")


OUT.mkdir(parents=True, exist_ok=True)
for name, made in (("examples.dox", examples), ("manual.dox", manual), ("tests.dox", tests), ("headers.dox", headers),
                   ("house.txt", house), ("examples.txt", examples_list)):
    (OUT / name).write_text("".join(made()))
