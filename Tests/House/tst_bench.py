#!/usr/bin/env python3
"""Compares revisions of a small repository, whose benchmarks are scripts, with dev/bench --compare."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

DEV = pathlib.Path(__file__).resolve().parents[2] / "dev"

# Builds by copying: the programs of the sources that it was told to configure.
CMAKE = """#!/bin/sh
set -e
sources=.
build=build/release
targets=
while [ $# -gt 0 ]; do
    case "$1" in
    -S) sources=$2; shift ;;
    -B) build=$2; shift ;;
    --build) [ "$2" = --preset ] || build=$2; shift ;;
    --target) shift; targets=$*; break ;;
    esac
    shift
done
mkdir -p "$build/Benchmarks"
[ -n "$targets" ] || echo "$sources" > "$build/sources"
for target in $targets; do
    cp "$(cat "$build/sources")/Benchmarks/$target.cpp" "$build/Benchmarks/$target"
    chmod +x "$build/Benchmarks/$target"
done
"""

# A benchmark that takes the times, of one run after the other, and writes down that it ran.
PROGRAM = """#!/usr/bin/env python3
import json, os, pathlib, sys
TIMES = %r
side = "then" if "compare" in sys.argv[0] else "now"
log = pathlib.Path(os.environ["BENCH_LOG"])
runs = [line for line in (log.read_text().splitlines() if log.exists() else []) if line.startswith(side)]
with log.open("a") as file:
    print(side, *[word for word in sys.argv[1:] if "_out" not in word], file=file)
out = [word.split("=", 1)[1] for word in sys.argv if word.startswith("--benchmark_out=")][0]
rows = []
for name, times in TIMES.items():
    if not times:
        sys.exit("broken")
    time = times[len(runs) %% len(times)]
    for repetition in (0.5, 1.5):
        rows.append({"name": name, "run_name": name, "run_type": "iteration", "cpu_time": time * repetition,
                     "time_unit": "us"})
    rows.append({"name": name + "_median", "run_name": name, "run_type": "aggregate", "aggregate_name": "median",
                 "cpu_time": time, "time_unit": "us"})
pathlib.Path(out).write_text(json.dumps({"benchmarks": rows}))
"""


class BenchTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.root = pathlib.Path(self.folder.name) / "a repository"
        self.log = pathlib.Path(self.folder.name) / "log"
        for name in ("dev", "Benchmarks", "tools"):
            (self.root / name).mkdir(parents=True)
        for name in ("bench", "bench-report.py"):
            shutil.copy(DEV / name, self.root / "dev" / name)
        (self.root / "tools/cmake").write_text(CMAKE)
        (self.root / "tools/cmake").chmod(0o755)
        (self.root / ".gitignore").write_text("/build/\n")
        self.git("init", "-q", "-b", "main")
        self.git("config", "user.name", "Tester")
        self.git("config", "user.email", "tester@example.org")

    def tearDown(self):
        self.folder.cleanup()

    def git(self, *arguments):
        subprocess.run(["git", *arguments], cwd=self.root, check=True, capture_output=True)

    def commit(self, tag, **programs):
        for name, times in programs.items():
            (self.root / "Benchmarks" / f"{name}.cpp").write_text(PROGRAM % times)
        self.git("add", "-A")
        self.git("commit", "-q", "--allow-empty", "-m", tag)
        self.git("tag", tag)

    def bench(self, *arguments):
        environment = dict(os.environ, BENCH_LOG=str(self.log), PATH=f"{self.root}/tools:{os.environ['PATH']}")
        return subprocess.run(["dev/bench", *arguments], cwd=self.root, capture_output=True, text=True, env=environment)

    def sides(self):
        return [line.split()[0] for line in self.log.read_text().splitlines()]

    def test_ratio_is_the_median_of_turns(self):
        self.commit("old", bench_a={"walk": [1000.0]})
        # One busy moment changes nothing.
        self.commit("new", bench_a={"walk": [1500.0, 9000.0, 1500.0]})

        done = self.bench("--compare", "old", "--runs", "3", "bench_a")

        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout, "| program | benchmark | old | now | ratio |\n|---|---|---|---|---|\n"
                                      "| bench_a | walk | 1 ms | 1.5 ms | 1.50 |\n")
        self.assertEqual(self.sides(), ["now", "then", "then", "now", "now", "then"])

    def test_works_that_measured_themselves_count_as_they_say(self):
        programs = {"then": {"start/manual_time": [1000.0]}, "now": {"start/manual_time": [3000.0]}}
        for tag, times in programs.items():
            text = (PROGRAM % times).replace('"cpu_time": time', '"cpu_time": 7.0, "real_time": time')
            (self.root / "Benchmarks/bench_a.cpp").write_text(text)
            self.git("add", "-A")
            self.git("commit", "-q", "-m", tag)
            self.git("tag", tag)

        done = self.bench("--compare", "then", "--runs", "1", "bench_a")

        self.assertIn("| bench_a | start/manual_time | 1 ms | 3 ms | 3.00 |", done.stdout)

    def test_a_filter_that_nothing_passes_leaves_nothing_to_compare(self):
        program = PROGRAM.replace('pathlib.Path(out).write_text(json.dumps({"benchmarks": rows}))',
                                  'pathlib.Path(out).write_text("")')
        (self.root / "Benchmarks/bench_a.cpp").write_text(program % {"walk": [1.0]})
        self.git("add", "-A")
        self.git("commit", "-q", "-m", "old")
        self.git("tag", "old")

        done = self.bench("--compare", "old", "--runs", "1", "bench_a", "--", "--benchmark_filter=fly")

        self.assertEqual(done.returncode, 2)
        self.assertIn("nothing to compare", done.stderr)
        self.assertNotIn("Traceback", done.stderr)

    def test_what_is_not_committed_counts_as_now(self):
        self.commit("old", bench_a={"walk": [1000.0]})
        (self.root / "Benchmarks/bench_a.cpp").write_text(PROGRAM % {"walk": [250.0]})

        done = self.bench("--compare", "HEAD", "--runs", "1", "bench_a")

        self.assertIn("| 0.25 |", done.stdout)

    def test_another_revision_takes_over_the_folder(self):
        self.commit("old", bench_a={"walk": [1000.0]})
        self.commit("middle", bench_a={"walk": [2000.0]})
        self.commit("new", bench_a={"walk": [4000.0]})
        self.assertIn("| 4.00 |", self.bench("--compare", "old", "--runs", "1", "bench_a").stdout)

        self.assertIn("| 2.00 |", self.bench("--compare", "middle", "--runs", "1", "bench_a").stdout)

        shutil.rmtree(self.root / "build")
        self.assertIn("| 4.00 |", self.bench("--compare", "old", "--runs", "1", "bench_a").stdout)

    def test_limit_decides_the_exit_status(self):
        self.commit("old", bench_a={"walk": [100.0], "run": [100.0]})
        self.commit("new", bench_a={"walk": [120.0], "run": [100.0]})
        for limit, status in (("1.1", 1), ("1.25", 0), ("2", 0)):
            with self.subTest(limit=limit):
                done = self.bench("--compare", "old", "--runs", "1", "--limit", limit, "bench_a")

                self.assertEqual(done.returncode, status, done.stderr)
                self.assertEqual(done.stdout.count("over the limit"), status)

    def test_what_one_side_lacks_is_named(self):
        self.commit("old", bench_a={"walk": [1.0], "crawl": [1.0]})
        self.commit("new", bench_a={"walk": [1.0], "run": [1.0]}, bench_b={"swim": [1.0]})

        done = self.bench("--compare", "old", "--runs", "1", "bench_a", "bench_b")

        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("\nnew: bench_a: run\n", done.stdout)
        self.assertIn("\ngone: bench_a: crawl\n", done.stdout)
        self.assertIn("old does not have bench_b", done.stderr)

    def test_arguments_go_to_both_sides(self):
        self.commit("old", bench_a={"walk": [1.0]})

        self.bench("--compare", "old", "--runs", "1", "bench_a", "--", "--benchmark_filter=walk")

        self.assertEqual(self.log.read_text(), "now --benchmark_filter=walk\nthen --benchmark_filter=walk\n")

    def test_program_that_fails_is_told(self):
        self.commit("old", bench_a={"walk": []})

        done = self.bench("--compare", "old", "--runs", "1", "bench_a")

        self.assertEqual(done.returncode, 2)
        self.assertIn("broken", done.stderr)
        self.assertIn("bench_a failed (now)", done.stderr)

    def test_wrong_usage_is_refused(self):
        self.commit("old", bench_a={"walk": [1.0]})
        for arguments, reason in ((["--compare"], "--compare needs a value"),
                                  (["--compare", "nothing"], "there is no revision nothing"),
                                  (["--compare", "old", "bench_none"], "old does not have bench_none"),
                                  (["--runs", "3"], "belong to --compare"),
                                  (["--limit", "3"], "belong to --compare"),
                                  (["--compare", "old", "--runs", "0"], "no number of runs"),
                                  (["--compare", "old", "--limit", "x"], "no ratio"),
                                  (["--fast"], "unknown argument --fast")):
            with self.subTest(arguments=arguments):
                done = self.bench(*arguments)

                self.assertEqual(done.returncode, 2)
                self.assertIn(reason, done.stderr)
                self.assertEqual(done.stdout, "")
                self.assertFalse(self.log.exists())


if __name__ == "__main__":
    unittest.main()
