#!/usr/bin/env python3
"""Breaks lines of a small project in a temporary folder with dev/mutants, and sees which breaks its tests notice."""

import contextlib
import hashlib
import importlib.machinery
import importlib.util
import io
import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import threading
import unittest
import unittest.mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
LOADER = importlib.machinery.SourceFileLoader("mutants", str(ROOT / "dev" / "mutants"))
mutants = importlib.util.module_from_spec(importlib.util.spec_from_loader("mutants", LOADER))
LOADER.exec_module(mutants)
# Without a language, so that nothing has to be found out about compilers.
CMAKE = """cmake_minimum_required(VERSION 3.25)
project(toy LANGUAGES NONE)
enable_testing()
set(sources "${PROJECT_SOURCE_DIR}/Kernel/numbers.cpp" "${PROJECT_SOURCE_DIR}/Tests/tst_numbers.cpp")
add_custom_command(OUTPUT tst_numbers COMMAND c++ -o tst_numbers ${sources} DEPENDS ${sources} VERBATIM)
add_custom_target(programs ALL DEPENDS tst_numbers)
add_test(NAME tst_numbers COMMAND "${PROJECT_BINARY_DIR}/tst_numbers")
set_tests_properties(tst_numbers PROPERTIES ENVIRONMENT "TOY=yes" TIMEOUT 5)
"""
PRESETS = {"version": 6, "configurePresets": [
    {"name": "release", "generator": "Ninja", "binaryDir": "${sourceDir}/build/${presetName}"}]}
# A constant, a function for each kind of end, and a comment that is no code: return 5;
SUM = "int sum(int a, int b)\n{\n    return a + b;\n}\n"
LARGER = "int larger(int a, int b)\n{\n    if (a > b)\n        return a;\n    return b;\n}\n"
LENGTH = "Length::Length(int value) : value(value) {}\nLength twice(Length length)\n{\n    return Length(length.value + length.value);\n}\n"
COUNT = "int counted(int most)\n{\n    unsigned count = 0;\n    while (count != unsigned(most))\n        ++count;\n    return int(count);\n}\n"
HEADER = """#pragma once
struct Length
{
    explicit Length(int value);
    int value;
};
int sum(int a, int b);
int larger(int a, int b);
Length twice(Length length);
int counted(int most);
"""
ENVIRONMENT = "#include <cstdlib>\n#include \"../Kernel/numbers.h\"\nint main()\n{\n    if (!std::getenv(\"TOY\"))\n        return 3;\n"


def test_of(*claims):
    return ENVIRONMENT + "".join(f"    if (!({claim}))\n        return 1;\n" for claim in claims) + "    return 0;\n}\n"


class MutantsTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.root = pathlib.Path(self.folder.name) / "a project"
        for name in ("dev/mutants", "Tests/House/house.py"):
            (self.root / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(ROOT / name, self.root / name)
        (self.root / "Kernel").mkdir()
        self.write("CMakeLists.txt", CMAKE)
        self.write("CMakePresets.json", json.dumps(PRESETS))
        self.write(".gitignore", "/build/\n__pycache__/\n")
        self.write("Kernel/numbers.h", HEADER)
        self.git("init", "-q", "-b", "main")

    def tearDown(self):
        self.folder.cleanup()

    def write(self, name, text):
        (self.root / name).write_text(text)

    def git(self, *arguments):
        done = subprocess.run(["git", *arguments], cwd=self.root, check=True, capture_output=True, text=True)
        return done.stdout

    def begin(self, code, test):
        self.write("Kernel/numbers.cpp", '#include "numbers.h"\n' + code)
        self.write("Tests/tst_numbers.cpp", test)
        self.git("add", "-A")

    def mutants(self, *arguments):
        return subprocess.run(["dev/mutants", *arguments], cwd=self.root, capture_output=True, text=True)

    def seed_for(self, *changes):
        """One by which exactly these lines come about first."""
        lines = mutants.lines_that_may_break(self.root)
        for seed in range(2000):
            first = mutants.draw(lines, seed)[:len(changes)]
            if {mutant.after.strip() for mutant in first} == set(changes):
                return str(seed)
        return self.fail(f"no seed gives {changes}")

    def test_noticed_break_is_killed_and_the_tree_stays(self):
        self.begin(SUM, test_of("sum(2, 3) == 5"))
        before = {path: path.read_bytes() for path in self.root.rglob("*") if path.is_file() and ".git" not in path.parts}

        done = self.mutants()

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertIn("1 killed, 0 of them by time; 0 survived", done.stdout)
        self.assertIn("tst_numbers", done.stdout)
        after = {path: path.read_bytes() for path in before}
        self.assertEqual(after, before)
        self.assertEqual([path.name for path in (self.root / "build").iterdir()], ["mutants"])

    def test_break_that_nobody_notices_is_told(self):
        self.begin(SUM, test_of("sum(2, 0) == 2"))
        seed = self.seed_for("return a - b;")

        done = self.mutants("--seed", seed)

        self.assertEqual(done.returncode, 1)
        self.assertIn("survived (1 tests): Kernel/numbers.cpp:4\n  - return a + b;\n  + return a - b;", done.stdout)
        self.assertIn("100 % survive", done.stderr)

    def test_new_test_kills_the_survivor_and_nothing_is_tried_twice(self):
        self.begin(SUM + LARGER, test_of("sum(2, 0) == 2", "larger(2, 3) == 3", "larger(3, 2) == 3"))
        seed = self.seed_for("return a - b;", "if (!(a > b))")
        first = self.mutants("--seed", seed, "--count", "2")
        self.assertIn("1 killed, 0 of them by time; 1 survived", first.stdout)

        again = self.mutants("--seed", seed, "--count", "2")
        self.assertIn("1 killed, 0 of them by time; 1 survived", again.stdout)
        self.assertNotRegex(again.stdout, r"\d s  Kernel")
        self.write("Tests/tst_numbers.cpp", test_of("sum(2, 1) == 3", "larger(2, 3) == 3", "larger(3, 2) == 3"))
        better = self.mutants("--seed", seed, "--count", "2")

        self.assertEqual(better.returncode, 0, better.stdout + better.stderr)
        self.assertIn("2 killed, 0 of them by time; 0 survived", better.stdout)
        self.assertRegex(better.stdout, r"killed +tst_numbers +\d+ s  Kernel/numbers.cpp:4\n")
        self.assertNotRegex(better.stdout, r"\d s  Kernel/numbers.cpp:8")

    def test_equivalent_one_needs_a_reason(self):
        self.begin(LARGER, test_of("larger(2, 3) == 3", "larger(3, 2) == 3", "larger(2, 2) == 2"))
        seed = self.seed_for("if (a >= b)")
        self.assertEqual(self.mutants("--seed", seed, "--count", "1").returncode, 1)
        block = "Kernel/numbers.cpp\n  - if (a > b)\n  + if (a >= b)\n"

        self.write("Tests/House/equivalent-mutants.txt", block + "  =\n")
        without = self.mutants("--seed", seed, "--count", "1")
        self.write("Tests/House/equivalent-mutants.txt", block + "  = of equal numbers either is the larger\n")
        reasoned = self.mutants("--seed", seed, "--count", "1")

        self.assertEqual(without.returncode, 1)
        self.assertIn("equivalent-mutants.txt:4", without.stderr)
        self.assertEqual(reasoned.returncode, 0, reasoned.stdout + reasoned.stderr)
        self.assertIn("0 survived and 1 are equivalent", reasoned.stdout)

    def test_what_does_not_compile_is_replaced(self):
        self.begin(LENGTH + SUM, test_of("sum(2, 3) == 5", "twice(Length(2)).value == 4"))
        seed = self.seed_for("return {};")

        done = self.mutants("--seed", seed, "--count", "1")

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertIn("1 killed, 0 of them by time; 0 survived and 0 are equivalent; 1 did not compile", done.stdout)

    def test_endless_one_is_killed_by_time(self):
        self.begin(COUNT, test_of("counted(3) == 3"))

        done = self.mutants("--seed", self.seed_for(";"), "--count", "1", "--patience", "1")

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertIn("1 killed, 1 of them by time", done.stdout)

    def test_slow_test_is_not_taken_for_a_break(self):
        self.begin(SUM, ENVIRONMENT.replace("{\n", "{\n    std::system(\"sleep 2\");\n", 1) +
                   "    return sum(2, 0) == 2 ? 0 : 1;\n}\n")
        (self.root / "build/coverage/Testing/Temporary").mkdir(parents=True)
        self.write("build/coverage/Testing/Temporary/CTestCostData.txt", "tst_numbers 1 0.05\n---\n")

        done = self.mutants("--seed", self.seed_for("return a - b;"), "--count", "1", "--patience", "1")

        self.assertIn("0 killed, 0 of them by time; 1 survived", done.stdout)
        self.assertNotIn("fail with nothing broken", done.stdout)

    def test_test_that_fails_anyway_proves_nothing(self):
        self.begin(SUM, test_of("sum(2, 3) == 6"))

        done = self.mutants()

        self.assertEqual(done.returncode, 1)
        self.assertIn("fail with nothing broken: tst_numbers", done.stdout)
        self.assertIn("0 killed", done.stdout)

    def test_only_tests_that_run_the_line_are_asked(self):
        self.begin(SUM, test_of("sum(2, 3) == 5"))
        (self.root / "build/coverage").mkdir(parents=True)
        sha = subprocess.run(["sha256sum", self.root / "Kernel/numbers.cpp"], capture_output=True, text=True).stdout.split()[0]
        reach = {"files": {"Kernel/numbers.cpp": {"sum": sha, "functions": [[2, 5, []]]}}}

        self.write("build/coverage/reach.json", json.dumps(reach))
        nobody = self.mutants()
        reach["files"]["Kernel/numbers.cpp"]["functions"] = [[2, 5, ["tst_numbers"]]]
        self.write("build/coverage/reach.json", json.dumps(reach))
        self.write("Kernel/other.txt", "")  # a change, so that the survivor is tried again
        one = self.mutants()

        self.assertIn("survived (no test runs it)", nobody.stdout)
        self.assertEqual(one.returncode, 0, one.stdout + one.stderr)

    def test_tests_that_changed_since_are_asked_too(self):
        self.begin(SUM, test_of("sum(2, 3) == 5"))
        (self.root / "build/coverage").mkdir(parents=True)
        code, test = (hashlib.sha256((self.root / name).read_bytes()).hexdigest()
                      for name in ("Kernel/numbers.cpp", "Tests/tst_numbers.cpp"))
        reach = {"files": {"Kernel/numbers.cpp": {"sum": code, "functions": [[2, 5, []]]}}, "tests": {"tst_numbers": test}}

        self.write("build/coverage/reach.json", json.dumps(reach))
        same = self.mutants()
        self.write("Tests/tst_numbers.cpp", test_of("sum(3, 2) == 5"))
        newer = self.mutants()

        self.assertIn("survived (no test runs it)", same.stdout)
        self.assertEqual(newer.returncode, 0, newer.stdout + newer.stderr)

    def test_tests_that_are_about_a_file_are_known(self):
        reach = {"a.cpp": {"functions": [[1, 2, ["tst_a", "tst_all"]], [4, 5, ["tst_a"]]]},
                 "b.cpp": {"functions": [[1, 9, ["tst_all", "tst_b"]], [11, 12, ["tst_all"]]]}}

        self.assertEqual(mutants.shares_of(reach, "a.cpp"), {"tst_a": 1, "tst_all": 1 / 3})
        self.assertEqual(mutants.shares_of(reach, "c.cpp"), {})

    def test_workers_try_lines_side_by_side(self):
        # What is broken waits for the other, and nobody notices it if that does not come.
        folder = self.folder.name
        waits = "".join(f"""    if (!({claim})) {{
        for (int i = 0; i < 1000; ++i) {{
            if (!std::system("touch '{folder}/{mine}' && test -e '{folder}/{other}'"))
                return 1;
            std::system("sleep 0.01");
        }}
    }}
""" for claim, mine, other in (("sum(2, 1) == 3", "sum", "larger"), ("larger(2, 3) == 3", "larger", "sum")))
        self.begin(SUM + LARGER, ENVIRONMENT + waits + "    return 0;\n}\n")
        self.write("CMakeLists.txt", CMAKE.replace("TIMEOUT 5", "TIMEOUT 60"))
        options = ("--seed", self.seed_for("return a - b;", "if (!(a > b))"), "--count", "2", "--workers", "2")

        done = self.mutants(*options)

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertIn("2 killed, 0 of them by time; 0 survived", done.stdout)
        tried = [line for line in done.stdout.split("\n") if line.startswith("killed ")]
        self.assertEqual(len(tried), 2)
        self.assertTrue((self.root / "build/mutants/tree-2").is_dir())
        self.assertNotRegex(self.mutants(*options).stdout, r"\d s  Kernel")

    def test_worker_that_is_killed_is_a_failure(self):
        self.begin(SUM, test_of("sum(2, 3) == 5"))
        self.write("worker.py", "import os, signal\nos.kill(os.getpid(), signal.SIGKILL)\n")
        places = {"ROOT": self.root, "STATE": self.root / "build/mutants", "__file__": str(self.root / "worker.py")}
        output = io.StringIO()

        with unittest.mock.patch.multiple(mutants, **places), unittest.mock.patch("sys.argv", ["dev/mutants"]), \
                unittest.mock.patch("signal.signal"), contextlib.redirect_stdout(output):
            code = mutants.main()

        self.assertIn("0 killed", output.getvalue())
        self.assertEqual(code, 1)

    def test_test_that_wants_to_be_alone_is(self):
        state, mutants.STATE = mutants.STATE, pathlib.Path(self.folder.name)
        try:
            for properties, others in (({}, "passed"), ({"RUN_SERIAL": True}, "failed"), ({"RESOURCE_LOCK": ["x"]}, "failed")):
                command = ["flock", "--shared", "--nonblock", self.folder.name + "/alone.lock", "true"]
                entry = {"name": "tst_alone", "command": command,
                         "properties": [{"name": name, "value": value} for name, value in properties.items()]}
                entry["properties"].append({"name": "WORKING_DIRECTORY", "value": self.folder.name})

                result = mutants.Test(entry, {}, self.root, 30).run(threading.Event())

                self.assertEqual(result, others, properties)
        finally:
            mutants.STATE = state

    def test_what_passed_since_the_last_change_is_not_asked_again(self):
        self.begin(SUM, test_of("sum(2, 3) == 5"))
        log = self.root / "build/release/Testing/Temporary/LastTest.log"
        self.assertEqual(mutants.passed_in(self.root / "build/release", self.root), [])
        log.parent.mkdir(parents=True)
        log.write_text("1/2 Testing: tst_numbers\n1/2 Test: tst_numbers\nTest Passed.\n2/2 Testing: tst_more\nTest Failed.\n")

        self.assertEqual(mutants.passed_in(self.root / "build/release", self.root), ["tst_numbers"])
        os.utime(self.root / "Kernel/numbers.cpp", (log.stat().st_mtime + 1,) * 2)
        self.assertEqual(mutants.passed_in(self.root / "build/release", self.root), [])

    def test_copy_may_be_built_apart(self):
        self.begin(SUM, test_of("sum(2, 3) == 5"))

        done = self.mutants("--apart")

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertTrue((self.root / "build/mutants/tree/build/release/tst_numbers").exists())

    def test_texts_and_comments_are_not_broken(self):
        self.begin('// sum + 1\nconst char* name()\n{\n    const char* text = "a + 1"; // 1 == 2\n    return text;\n}\n',
                   test_of("true"))

        listed = self.mutants("--list").stdout

        self.assertNotIn("a - 1", listed)
        self.assertNotIn("2 ==", listed)
        self.assertIn("return {};", listed)


if __name__ == "__main__":
    unittest.main()
