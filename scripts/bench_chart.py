"""Draws the ratios to the limit as an SVG: one line for each workload, on a logarithmic scale."""
import html
import math

LABELS, PLOT, NAMES = 370, 430, 230
TOP, ROW, HEADING = 64, 17, 24
# Every class is coloured twice, since not every viewer knows CSS variables.
COLOURS = """text {{ fill: {ink}; }} .soft {{ fill: {soft}; }} .back {{ fill: {back}; }} .grid {{ stroke: {grid}; }}
.limit {{ stroke: {limit}; }} .ours {{ fill: {ours}; }} .best {{ fill: {peer}; }}
.peer {{ fill: none; stroke: {peer}; }}"""
LIGHT = dict(ink="#1f2328", soft="#59636e", grid="#d1d9e0", back="#ffffff", ours="#0969da", peer="#9a6700",
             limit="#cf222e")
DARK = dict(ink="#f0f6fc", soft="#9198a1", grid="#3d444d", back="#0d1117", ours="#4493f8", peer="#d29922",
            limit="#f85149")
STYLE = ("svg { font: 12px system-ui, sans-serif; } .title { font-weight: 600; }\n" + COLOURS.format(**LIGHT)
         + "\n@media (prefers-color-scheme: dark) {\n" + COLOURS.format(**DARK) + "\n}")


def plain(text):
    return html.escape(text.replace("`", ""))


class Picture:
    def __init__(self, lowest, highest):
        self.low = math.floor(math.log10(lowest) * 2) / 2
        self.high = math.ceil(math.log10(highest) * 2) / 2
        self.parts = []
        self.y = TOP

    def x(self, ratio):
        return LABELS + PLOT * (math.log10(ratio) - self.low) / (self.high - self.low)

    def add(self, text):
        self.parts.append(text)

    def text(self, x, text, kind="", anchor="start", y=None):
        self.add(f'<text x="{x:.1f}" y="{(self.y if y is None else y):.1f}" class="{kind}" '
                 f'text-anchor="{anchor}">{text}</text>')

    def mark(self, ratio, kind, title):
        x, y = self.x(ratio), self.y - 4
        tip = f"<title>{plain(title)}: {ratio:.2f}</title>"
        if kind == "best":
            self.add(f'<path d="M{x:.1f} {y - 5}l5 5l-5 5l-5 -5z" class="best">{tip}</path>')
        else:
            radius = 5 if kind == "ours" else 3
            self.add(f'<circle cx="{x:.1f}" cy="{y}" r="{radius}" class="{kind}">{tip}</circle>')

    def row(self, plan, row):
        self.y += ROW
        self.text(LABELS - 12, plain(row.title), "soft", "end")
        peers = row.peers()
        for name in reversed(peers[1:]):
            self.mark(row.ratio(name), "peer", plan.contender(name))
        beside = f'{row.ratio("ours"):.2f}'
        if peers:
            self.mark(row.ratio(peers[0]), "best", plan.contender(peers[0]))
            beside += f" · {plain(plan.contender(peers[0]))} {row.ratio(peers[0]):.2f}"
        self.mark(row.ratio("ours"), "ours", "libvlrcomn")
        self.text(LABELS + PLOT + 12, beside, "soft")

    def frame(self):
        """The scale, drawn under the marks once the height is known."""
        bottom = self.y + 10
        lines = []
        for power in range(math.ceil(self.low), math.floor(self.high) + 1):
            ratio = 10.0 ** power
            x = self.x(ratio)
            kind = "limit" if power == 0 else "grid"
            lines.append(f'<line x1="{x:.1f}" x2="{x:.1f}" y1="{TOP - 4}" y2="{bottom}" class="{kind}"/>')
            self.text(x, "limit = 1" if power == 0 else f"{ratio:g}", "soft", "middle", TOP - 10)
        self.parts = lines + self.parts
        return bottom + 10

    def legend(self):
        self.text(16, "Time as a ratio to the limit: left is faster", "title", y=24)
        x, self.y = LABELS, 28
        for kind, words in (("ours", "libvlrcomn"), ("best", "the fastest peer"), ("peer", "other peers")):
            self.add(f'<g transform="translate({x - self.x(1):.1f} 0)">')
            self.mark(1.0, kind, words)
            self.add("</g>")
            self.text(x + 10, words, "soft", y=28)
            x += 130


def draw(plan, path):
    groups = [(group, [row for row in rows if {"ours", "limit"} <= row.times.keys()])
              for group, rows in plan.groups()]
    groups = [(group, rows) for group, rows in groups if rows]
    ratios = [row.ratio(name) for _, rows in groups for row in rows
              for name in ["ours", *row.peers()]] or [1.0]
    picture = Picture(min(*ratios, 0.5), max(*ratios, 2.0))
    for group, rows in groups:
        picture.y += HEADING
        picture.text(16, plain(group["title"]), "title")
        if len(rows) == 1 and not rows[0].title:
            picture.y -= ROW
        for row in rows:
            picture.row(plan, row)
    height = picture.frame()
    picture.legend()
    width = LABELS + PLOT + NAMES
    path.write_text(
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" '
        f'height="{height}" role="img"><title>Ratios of all workloads to their limits</title>'
        f'<style>{STYLE}</style><rect width="{width}" height="{height}" class="back"/>\n'
        + "\n".join(picture.parts) + "\n</svg>\n")
