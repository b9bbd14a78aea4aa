"""The table of docs/architecture.md that says which folder of source/ may include which.

The lints read it here, and so does the picture of the house (scripts/house_map.py): one fact, one home.
"""
import re
from pathlib import Path

PAGE = Path("docs/architecture.md")


class Folder:
    def __init__(self, floor, name, headers, below):
        self.floor, self.name, self.headers, self.below = floor, name, headers, below


def folders():
    """The rows of the table by the folder's name, in their order."""
    table = PAGE.read_text().split("<!-- house -->")[1].split("<!-- end -->")[0]
    rows = [[cell.strip() for cell in line.strip()[1:-1].split("|")] for line in table.splitlines()
            if line.startswith("| ")][1:]
    found = {}
    for floor, name, headers, below in rows:
        name = name.strip("`/")
        found[name] = Folder(int(floor), name, re.findall(r"`(\w+\.h)`", headers),
                             re.findall(r"\w+", below))
    return found
