"""Reads what the benchmarks wrote and what bench/workloads.toml says of them."""
import dataclasses
import json
import pathlib
import re
import tomllib

UNITS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
# Parts of a name that say how a benchmark is timed, not what it does.
TIMING = re.compile(r"^(real_time|process_time|manual_time|iterations:.*|repeats:.*|min_time:.*)$")


@dataclasses.dataclass
class Row:
    """One workload with one set of arguments: contender -> nanoseconds, contender -> spread."""
    workload: str
    arguments: tuple
    title: str = ""
    comparison: str = ""
    times: dict = dataclasses.field(default_factory=dict)
    spreads: dict = dataclasses.field(default_factory=dict)

    def ratio(self, contender, to="limit"):
        return self.times[contender] / self.times[to]

    def peers(self):
        """Contenders that do the whole work, the fastest first."""
        names = (name for name in self.times if not name.startswith(("ours", "limit")))
        return sorted(names, key=self.times.get)

    def contenders(self):
        """All columns: ours, the limit, what explains either, the peers."""
        return sorted(self.times, key=lambda name: (name != "ours", name != "limit",
                                                    not name.startswith(("ours", "limit")), name))


def is_wall_clock(run):
    return re.search("/(real|manual)_time", run["run_name"]) is not None


def nanoseconds(run):
    """Wall clock time where a benchmark asks for it, else the thread's processor time; of each thread."""
    time = run["real_time"] * run["threads"] if is_wall_clock(run) else run["cpu_time"]
    return time * UNITS[run["time_unit"]]


def natural(text):
    """Orders 16 before 256."""
    return [int(part) if part.isdigit() else part for part in re.split(r"(\d+)", text)]


def read_rows(documents):
    """workload -> its rows, in the natural order of their arguments."""
    rows = {}
    for document in documents:
        for run in document["benchmarks"]:
            kind = run.get("aggregate_name", "median")
            if run.get("error_occurred") or kind not in ("median", "cv"):
                continue
            workload, contender, *rest = run["run_name"].removeprefix("BM_").split("/")
            arguments = tuple(part for part in rest if not TIMING.match(part))
            row = rows.setdefault((workload, arguments), Row(workload, arguments))
            if kind == "median":
                row.times[contender] = nanoseconds(run)
            else:
                row.spreads[contender] = run["real_time" if is_wall_clock(run) else "cpu_time"]
    workloads = {}
    for _, row in sorted(rows.items(), key=lambda item: [natural(part) for part in item[0][1]]):
        workloads.setdefault(row.workload, []).append(row)
    return workloads


@dataclasses.dataclass
class Goal:
    """One condition: the ratio of ours to something, and the highest value it may take."""
    to: str
    limit: float
    ratio: float

    @property
    def reached(self):
        return self.ratio <= self.limit


class Plan:
    """bench/workloads.toml applied to the results."""

    def __init__(self, rows):
        self.config = tomllib.loads(pathlib.Path("bench/workloads.toml").read_text())
        self.rows = rows
        planned = {entry["name"] for group in self.config["group"] for entry in group["workloads"]}
        self.others = [name for name in sorted(rows) if name not in planned]
        for group in self.config["group"]:
            for entry in group["workloads"]:
                self._entitle(rows.get(entry["name"], []), entry.get("title", ""))
                for row in rows.get(entry["name"], []):
                    row.comparison = entry.get("comparison", "")
        for name in self.others:
            self._entitle(rows[name], name.replace("_", " "))

    def _entitle(self, rows, title):
        names = self.config["arguments"]
        for row in rows:
            arguments = row.arguments if len(rows) > 1 else ()
            parts = [title] + [names.get(part, part.replace(":", " ")) for part in arguments]
            row.title = ", ".join(part for part in parts if part)

    def contender(self, name):
        return self.config["contenders"].get(name, name.replace("_", " "))

    def argument(self, name):
        return self.config["arguments"].get(name, name)

    def groups(self):
        """(group, its rows) for each group that was measured."""
        for group in self.config["group"]:
            rows = [row for entry in group["workloads"] for row in self.rows.get(entry["name"], [])]
            if rows:
                yield group, rows

    def goals(self, row):
        """The conditions for one row, with what was measured."""
        for group in self.config["group"]:
            for entry in group["workloads"]:
                if entry["name"] == row.workload and "ours" in row.times:
                    for reach in entry.get("reach", []):
                        yield from self._goals_of(row, reach)

    def _goals_of(self, row, reach):
        if "at" in reach and reach["at"] not in row.arguments:
            return
        for to, highest in reach.items():
            if to in row.times:
                yield Goal(to, highest, row.ratio("ours", to))
            elif to == "best" and row.peers():
                yield Goal(to, highest, row.ratio("ours", row.peers()[0]))
            elif ":" in to:
                kind = to.split(":")[0] + ":"
                arguments = tuple(to if part.startswith(kind) else part for part in row.arguments)
                for other in self.rows[row.workload]:
                    if other.arguments == arguments and "ours" in other.times:
                        yield Goal(to, highest, row.times["ours"] / other.times["ours"])


def read_documents(folder):
    """family -> the JSON that its program wrote."""
    return {path.stem.removeprefix("bench_"): json.loads(path.read_text())
            for path in sorted(pathlib.Path(folder).glob("bench_*.json"))}
