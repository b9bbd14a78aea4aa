#!/usr/bin/env python3
"""Turns the JSON results of the benchmarks into docs/benchmarks.md, on standard output.

    bench_table.py RESULTS-FOLDER

A benchmark is named BM_workload/contender[/argument...]. Each workload becomes a table with one row for
each set of arguments and one column for each contender: the median, and its ratio to the contender
"limit" where there is one. What stands in bench/FAMILY/notes.md follows the family's tables.
"""
import json
import pathlib
import platform
import re
import subprocess
import sys

UNITS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
NOISE = re.compile(r"^(real_time|process_time|manual_time|iterations:.*|repeats:.*|min_time:.*)$")


def medians(document):
    """Yields (workload, arguments, contender, nanoseconds) of one result file."""
    for run in document["benchmarks"]:
        if run.get("error_occurred") or run.get("aggregate_name", "median") != "median":
            continue
        workload, contender, *rest = run["run_name"].removeprefix("BM_").split("/")
        arguments = " ".join(part for part in rest if not NOISE.match(part))
        time = run["real_time"] * UNITS[run["time_unit"]]
        yield workload.replace("_", " "), arguments, contender, time


def natural(text):
    """Orders 16 before 256."""
    return [int(part) if part.isdigit() else part for part in re.split(r"(\d+)", text)]


def shown(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def cell(times, contender):
    if contender not in times:
        return ""
    text = shown(times[contender])
    if "limit" in times and contender != "limit":
        text += f" ({times[contender] / times['limit']:.2f})"
    return text


def tables(document):
    workloads = {}
    for workload, arguments, contender, time in medians(document):
        workloads.setdefault(workload, {}).setdefault(arguments, {})[contender] = time
    for workload, rows in sorted(workloads.items()):
        contenders = sorted({c for times in rows.values() for c in times},
                            key=lambda c: (c != "ours", c != "limit", c))
        print(f"\n### {workload}\n")
        print("| | " + " | ".join(c.replace("_", " ") for c in contenders) + " |")
        print("|---|" + "---:|" * len(contenders))
        for arguments, times in sorted(rows.items(), key=lambda row: natural(row[0])):
            print(f"| {arguments} | " + " | ".join(cell(times, c) for c in contenders) + " |")


def processor():
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.machine()


def main():
    results = sorted(pathlib.Path(sys.argv[1]).glob("bench_*.json"))
    documents = {path.stem.removeprefix("bench_"): json.loads(path.read_text()) for path in results}
    context = next(iter(documents.values()))["context"]
    compiler = subprocess.run(["c++", "--version"], capture_output=True, text=True).stdout.split("\n")[0]
    print("# Benchmarks\n")
    print("Written by `scripts/bench`. Each figure is the median of several repetitions, interleaved at")
    print("random within one run of one program; in parentheses, the ratio to the limit: the bare calls that")
    print("the contract cannot do without. Compare ratios, not times.\n")
    print(f"- Machine: {context['num_cpus']} × {processor()}, {platform.system()} {platform.release()}")
    print(f"- Compiler: {compiler}; build type Release; C library {' '.join(platform.libc_ver())}")
    print(f"- Load average at the start: {', '.join(f'{load:.2f}' for load in context['load_avg'])}")
    if context.get("library_build_type") == "debug":
        print("- Google Benchmark itself is Debian's build, which calls itself a debug build; the timed code is not.")
    for family, document in documents.items():
        print(f"\n## {family}")
        tables(document)
        notes = pathlib.Path("bench") / family / "notes.md"
        if notes.exists():
            print("\n" + notes.read_text().strip())


if __name__ == "__main__":
    main()
