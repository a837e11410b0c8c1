#!/usr/bin/env python3
"""What dev/bench --compare prints: bench-report.py FOLDER REVISION [LIMIT].

FOLDER holds what Google Benchmark wrote, as SIDE-ROUND-NUMBER-PROGRAM.json, SIDE being "now" or "then". Exit status 1
when a benchmark takes more than LIMIT times as long as then, 2 when there is nothing to compare.
"""

import json
import pathlib
import statistics
import sys

UNITS = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}


def times_of(text):
    """Time in ms by benchmark: the median where a program repeats, the mean of its repetitions otherwise.

    Processor time, but for works that measured themselves: those of other processes."""
    if not text.strip():
        return {}  # what the library writes when no benchmark passes the filter
    medians = {}
    single = {}
    for run in json.loads(text)["benchmarks"]:
        name = run.get("run_name", run["name"])
        time = run["real_time" if name.endswith("/manual_time") else "cpu_time"] * UNITS[run["time_unit"]]
        if run.get("aggregate_name") == "median":
            medians[name] = time
        elif run.get("run_type", "iteration") == "iteration":
            single.setdefault(name, []).append(time)
    return {**{name: statistics.mean(times) for name, times in single.items()}, **medians}


def read(folder):
    """By side and by program and benchmark: the times of the rounds, in their order."""
    sides = {"now": {}, "then": {}}
    for file in sorted(folder.glob("*.json"), key=lambda file: [int(part) for part in file.name.split("-")[1:3]]):
        side, _, _, program = file.stem.split("-", 3)
        for name, time in times_of(file.read_text()).items():
            sides[side].setdefault((program, name), []).append(time)
    return sides["now"], sides["then"]


def main(folder, revision, limit=None):
    now, then = read(pathlib.Path(folder))
    shared = [key for key in now if key in then]
    print(f"| program | benchmark | {revision} | now | ratio |\n|---|---|---|---|---|")
    slow = 0
    for key in shared:
        ratios = [a / b for a, b in zip(now[key], then[key]) if b > 0.0]
        if not ratios:
            continue
        ratio = statistics.median(ratios)
        is_slow = limit is not None and ratio > float(limit)
        slow += is_slow
        old, new = (f"{statistics.median(times):.3g} ms" for times in (then[key], now[key]))
        print(f"| {key[0]} | {key[1]} | {old} | {new} | {ratio:.2f}{' (over the limit)' if is_slow else ''} |")
    for side, other, text in ((now, then, "new"), (then, now, "gone")):
        names = [f"{program}: {name}" for program, name in side if (program, name) not in other]
        if names:
            print(f"\n{text}: " + "; ".join(names))
    if not shared:
        print("dev/bench: nothing to compare", file=sys.stderr)
        return 2
    return 1 if slow else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
