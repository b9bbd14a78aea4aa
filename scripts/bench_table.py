#!/usr/bin/env python3
"""Turns the JSON results of the benchmarks into a document, on standard output.

    bench_table.py RESULTS-FOLDER SETTINGS [PICTURE]

bench/workloads.toml gives the order, the titles and the ratios to reach; bench/FAMILY/notes.md the remarks: a
section "## workload" of it follows that workload's table. With PICTURE, all ratios are drawn there.
"""
import pathlib
import platform
import re
import subprocess
import sys
import tempfile

import bench_chart
from bench_results import Plan, read_documents, read_rows

NOISY = 0.2


def shown(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def span(values):
    """0.30–0.72 of several, 0.30 of one."""
    texts = [f"{value:.2f}" if value < 10 else f"{value:.0f}" for value in (min(values), max(values))]
    return texts[0] if texts[0] == texts[1] else "–".join(texts)


def line(cells):
    print("| " + " | ".join(cells) + " |")


def mark(goals):
    return "" if not goals else "yes" if all(goal.reached for goal in goals) else "**no**"


def faster_peer(row):
    """The best peer where it is faster than ours, "" where none is; None where there is no comparison."""
    if not row.peers() or "ours" not in row.times:
        return None
    best = row.peers()[0]
    return best if row.ratio("ours", best) > 1 else ""


class Document:
    def __init__(self, plan, notes):
        self.plan = plan
        self.notes = notes

    def goal_texts(self, goals):
        """One text for each thing that ours is compared with."""
        limits = {}
        for goal in goals:
            limits.setdefault(goal.to, {})[f"{goal.limit:g}"] = None
        for to, several in limits.items():
            of = ("" if to == "limit" else " of the best peer" if to == "best"
                  else f" of {self.plan.argument(to) if ':' in to else self.plan.contender(to)}")
            yield f"≤ {', '.join(several)}{of}"

    def goal_text(self, goal):
        return next(self.goal_texts([goal]))

    def summary(self):
        line(["workload", "limit", "ours to the limit", "to reach", "reached", "ours to the best peer"])
        line(["---", "---", "---:", "---", "---", "---:"])
        for group, rows in self.plan.groups():
            goals = [goal for row in rows for goal in self.plan.goals(row)]
            bounded = [row.ratio("ours") for row in rows if {"ours", "limit"} <= row.times.keys()]
            beside = [row.ratio("ours", row.peers()[0]) for row in rows
                      if row.peers() and "ours" in row.times]
            line([group["title"], group["limit"], span(bounded) if bounded else "",
                  "; ".join(self.goal_texts(goals)), mark(goals),
                  span(beside) if beside else ""])

    def leads(self):
        """What a reader wants to know first, out of this run's figures."""
        compared = [row for _, rows in self.plan.groups() for row in rows
                    if faster_peer(row) is not None and not row.comparison]
        behind = [row for row in compared if faster_peer(row)]
        print(f"**We lead** in {len(compared) - len(behind)} of {len(compared)} rows with peers.")
        others = [f"{group['title']}: {row.title} ({self.plan.contender(row.peers()[0])} {row.comparison}; "
                  f"{row.ratio('ours', row.peers()[0]):.2f})"
                  for group, rows in self.plan.groups() for row in rows if row.comparison and row.peers()]
        if others:
            print(f"\n{len(others)} more are comparisons only, since the best peer does not do the same (what it does, the ratio "
                  f"of ours): {', '.join(others)}.")
        self.reasons("A peer is faster", lambda row: [
            f"{self.plan.contender(peer)} ({row.ratio('ours', peer):.2f})"
            for peer in [faster_peer(row)] if peer and not row.comparison])
        self.reasons("A ratio is missed", lambda row: [
            f"{goal.ratio:.2f} instead of {self.goal_text(goal)}"
            for goal in self.plan.goals(row) if not goal.reached])

    def reasons(self, heading, cases_of):
        """A list of groups with what cases_of(row) says of their rows, and why; nothing without any."""
        items = []
        for group, rows in self.plan.groups():
            cases = [f"{row.title + ': ' if row.title else ''}{'; '.join(cases_of(row))}"
                     for row in rows if cases_of(row)]
            if cases:
                items.append(f"- **{group['title']}**: {'; '.join(cases)}. {group.get('why', '')}".rstrip())
        if items:
            print(f"\n{heading}, with the ratio of ours, and why:\n\n" + "\n".join(items))

    def table(self, rows):
        contenders = []
        for row in rows:
            contenders += [name for name in row.contenders() if name not in contenders]
        limited = any("limit" in row.times for row in rows)
        goals = {id(row): list(self.plan.goals(row)) for row in rows}
        with_goals = any(goals.values())
        line([""] + [self.plan.contender(name) for name in contenders]
             + (["to reach", "reached"] if with_goals else []))
        line(["---"] + ["---:"] * len(contenders) + (["---", "---"] if with_goals else []))
        for row in rows:
            cells = [row.title]
            for name in contenders:
                cells.append(self.cell(row, name, limited))
            if with_goals:
                texts = [self.goal_text(goal) + ("" if goal.to == "limit" else f" ({goal.ratio:.2f})")
                         for goal in goals[id(row)]]
                cells += ["; ".join(texts), mark(goals[id(row)])]
            line(cells)

    def cell(self, row, name, limited):
        if name not in row.times:
            return ""
        text = shown(row.times[name])
        if limited and name != "limit" and "limit" in row.times:
            text += f" ({row.ratio(name):.2f})"
        return text + (" ~" if row.spreads.get(name, 0) > NOISY else "")

    def remarks(self, rows):
        for name in dict.fromkeys(row.workload for row in rows):
            if name in self.notes:
                print("\n" + self.notes[name])

    def groups(self):
        for group, rows in self.plan.groups():
            print(f"\n## {group['title']}\n\nLimit: {group['limit']}.\n")
            # A table of its own for each set of contenders keeps the tables narrow.
            tables = {}
            for row in rows:
                tables.setdefault(tuple(sorted(row.times)), []).append(row)
            for index, part in enumerate(tables.values()):
                if index:
                    print()
                self.table(part)
            self.remarks(rows)

    def others(self):
        if self.plan.others:
            print("\n## Other workloads\n\nNo ratio is set for these.")
        for name in self.plan.others:
            print()
            self.table(self.plan.rows[name])
            self.remarks(self.plan.rows[name])


def read_notes():
    """workload -> its remarks."""
    notes = {}
    for path in sorted(pathlib.Path("bench").glob("*/notes.md")):
        parts = re.split(r"^## (.*)\n", path.read_text(), flags=re.MULTILINE)
        notes.update((name.strip(), text.strip()) for name, text in zip(parts[1::2], parts[2::2]))
    return notes


def output_of(*command):
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    return done.stdout.strip()


def processor():
    for text in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if text.startswith("model name"):
            return text.split(":", 1)[1].strip()
    return platform.machine()


def peer_versions():
    listed = pathlib.Path("scripts/packages/bench.txt").read_text().splitlines()
    packages = [text for text in listed if text and not text.startswith("#")]
    versions = output_of("dpkg-query", "-W", "-f", "${Package} ${Version}\n", *packages)
    return ", ".join(versions.splitlines())


def build_type():
    cache = pathlib.Path("build/bench/CMakeCache.txt")
    found = re.search(r"^CMAKE_BUILD_TYPE:\w+=(.*)$", cache.read_text(), re.MULTILINE)
    return found.group(1) if found else "unknown"


def circumstances(documents, settings):
    context = next(iter(documents.values()))["context"]
    # Of each program at its start: the machine may become busy in between.
    load = max((document["context"]["load_avg"] or [0])[0] for document in documents.values())
    unoptimised = [name for name, document in documents.items()
                   if document["context"].get("optimised") != "yes"]
    if unoptimised:
        print(f"> **Warning: {', '.join(unoptimised)} not optimised. These figures say nothing.**\n")
    # The threads of the program before count as well, up to two of them.
    if load > context["num_cpus"]:
        print(f"> **Warning: the machine was busy (load {load:.1f}). Measure again.**\n")
    compiler = output_of("c++", "--version").split("\n")[0]
    folder = output_of("df", "--output=fstype", tempfile.gettempdir()).split("\n")[-1]
    return [
        f"Machine: {context['num_cpus']} × {processor()}, {platform.system()} {platform.release()}; "
        f"highest load {load:.2f}; files on {folder}.",
        f"Build: {compiler}, build type {build_type()}, C library {' '.join(platform.libc_ver())}.",
        f"Settings: {settings}; a second thread is parked in every program, since the C library takes "
        "cheaper locks where there is only one.",
        f"Peers, as Debian packages: {peer_versions()}.",
    ] + (["Google Benchmark calls its own library, Debian's package, a debug build. That slows only "
          "what it does between two measurements; the timed code is ours, built as said above."]
         if context.get("library_build_type") == "debug" else [])


def main():
    results, settings, *picture = sys.argv[1:]
    documents = read_documents(results)
    plan = Plan(read_rows(documents.values()))
    document = Document(plan, read_notes())
    print("# Benchmarks\n")
    print("Written by `scripts/bench`, which runs everything on one machine in one run. The limit is the bare\n"
          "calls that the work cannot do without; a ratio to it stands in parentheses behind a time.\n"
          "Compare ratios, not times.\n")
    facts = circumstances(documents, settings)
    if picture:
        bench_chart.draw(plan, pathlib.Path(picture[0]))
        print(f"![All ratios to the limit]({pathlib.Path(picture[0]).name})\n")
    document.summary()
    print()
    document.leads()
    print("\n## Circumstances\n")
    for fact in facts:
        print(f"- {fact}")
    print("- A time is the median of the repetitions: processor time of the measuring thread, or wall clock\n"
          "  time where threads, processes or files are waited for. With two threads it is the time that each\n"
          f"  needs. \"~\" marks a spread above {NOISY:.0%} (standard deviation to mean).")
    document.groups()
    document.others()


if __name__ == "__main__":
    main()
