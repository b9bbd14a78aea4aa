#!/usr/bin/env python3
"""Draws the house as docs/house.svg from the table of docs/architecture.md.

    scripts/house_map.py            writes the picture
    scripts/house_map.py --check    fails when the picture is not that of the table

A box is a folder of source/ with its headers; a line leads down to a folder that it may include. What a folder
reaches by way of another one is not drawn again.
"""
import sys
from html import escape
from pathlib import Path

from house import folders

PICTURE = Path("docs/house.svg")
WIDTH, BOX, LINE, GAP, MARGIN = 1180, 214, 15, 62, 20
STYLE = """
    :root { color-scheme: light dark; }
    text { font: 12px system-ui, sans-serif; fill: #1f2933; }
    .name { font-weight: 600; font-size: 14px; }
    .floor { fill: #7b8794; }
    rect { fill: #f5f7fa; stroke: #7b8794; }
    path { fill: none; stroke: #7b8794; }
    @media (prefers-color-scheme: dark) {
      text { fill: #e4e7eb; }
      .floor { fill: #9aa5b1; }
      rect { fill: #323f4b; stroke: #9aa5b1; }
      path { stroke: #9aa5b1; }
    }
"""


def reached(house, name):
    """Every folder below `name`."""
    below = set(house[name].below)
    return below.union(*(reached(house, other) for other in below)) if below else below


def direct(house, name):
    """What `name` includes and reaches no other way."""
    below = house[name].below
    return [one for one in below if not any(one in reached(house, other) for other in below if other != one)]


def place(house):
    """The box of each folder: left, top, height."""
    boxes, top = {}, MARGIN
    for floor in sorted({folder.floor for folder in house.values()}, reverse=True):
        row = [folder for folder in house.values() if folder.floor == floor]
        height = max(28 + LINE * max(len(folder.headers), 1) for folder in row)
        step = (WIDTH - 2 * MARGIN) / len(row)
        for index, folder in enumerate(row):
            boxes[folder.name] = (MARGIN + step * index + (step - BOX) / 2, top, height)
        top += height + GAP
    return boxes, top - GAP + MARGIN


def draw(house):
    boxes, height = place(house)
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height:g}" role="img">',
             "<title>The folders of source/ and what they may include</title>", f"<style>{STYLE}</style>"]
    for name in house:
        left, top, tall = boxes[name]
        targets = direct(house, name)
        for index, below in enumerate(targets):
            other = boxes[below]
            x0, y0 = left + BOX * (index + 1) / (len(targets) + 1), top + tall
            x1, y1 = other[0] + BOX / 2, other[1]
            parts.append(f'<path d="M{x0:g} {y0:g}C{x0:g} {y0 + GAP:g} {x1:g} {y1 - GAP:g} {x1:g} {y1:g}"/>')
    for folder in house.values():
        left, top, tall = boxes[folder.name]
        parts.append(f'<rect x="{left:g}" y="{top:g}" width="{BOX}" height="{tall:g}" rx="6"/>')
        parts.append(f'<text class="name" x="{left + 10:g}" y="{top + 19:g}">{escape(folder.name)}/</text>')
        for index, words in enumerate(folder.headers or ["no public header"]):
            style = "" if folder.headers else ' class="floor"'
            parts.append(f'<text{style} x="{left + 10:g}" y="{top + 36 + LINE * index:g}">{escape(words)}</text>')
    return "\n".join([*parts, "</svg>", ""])


picture = draw(folders())
if sys.argv[1:] == ["--check"]:
    if picture != PICTURE.read_text():
        sys.exit(f"{PICTURE} is not the picture of the table any more: run scripts/house_map.py")
else:
    PICTURE.write_text(picture)
