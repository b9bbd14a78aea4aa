#!/usr/bin/env python3
"""check_links.py FILE...: every relative link of the Markdown or HTML files leads to a file, and to a place in it.

Links to other machines are not followed. A place is a heading in Markdown, an id or a name in HTML. In Markdown, a
path between backquotes that begins with a folder of the tree or of source/ has to be there as well.
"""
import os
import re
import sys
from functools import lru_cache
from glob import glob
from html import unescape
from pathlib import Path
from urllib.parse import unquote


BLOCKS = re.compile(r"^```.*?^```", re.M | re.S)  # of code


def links(path):
    text = path.read_text()
    if path.suffix == ".md":
        return re.findall(r"\]\(([^()\s]+)\)", re.sub(r"`[^`\n]*`", "", BLOCKS.sub("", text)))
    text = re.sub(r"<script.*?</script>", "", text, flags=re.S)
    return map(unescape, re.findall(r'<[^>]*\s(?:href|src|data)="([^"]*)"', text))


def lost_paths(path):
    """What Markdown names between backquotes and the tree does not have, nor cmake/ as a template."""
    for name in re.findall(r"`([\w.-]+/[\w./*-]*)`", BLOCKS.sub("", path.read_text())):
        roots = [root for root in (Path("."), Path("source")) if (root / name.split("/")[0]).is_dir()]
        if roots and not name.startswith("build/") and not any(
                map(glob, [f"cmake/{Path(name).name}.in", *(str(root / name) for root in roots)])):
            yield name


@lru_cache(None)
def places(path):
    if path.suffix == ".md":
        headings = re.findall(r"^#+ (.*)", BLOCKS.sub("", path.read_text()), re.M)
        return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}
    return set(re.findall(r'\s(?:id|name)="([^"]*)"', path.read_text()))


bad, seen = [], 0
for file in map(Path, sys.argv[1:]):
    bad += [f"{file}: there is no {name}" for name in lost_paths(file)] if file.suffix == ".md" else []
    for link in links(file):
        name, _, place = unquote(link).partition("#")
        if re.match(r"\w+:|//", link):
            continue
        target = Path(os.path.normpath(file.parent / name)) if name else file
        seen += 1
        if not target.exists() or place and target.suffix in (".md", ".html") and place not in places(target):
            bad.append(f"{file}: {link} leads nowhere")
assert seen, "no links: nothing was read"
sys.exit("\n".join(bad) or 0)
