#!/usr/bin/env python3
"""Counts with dev/coverage what the tests of a small project in a temporary folder reach."""

import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
# Without a language, so that nothing has to be found out about compilers.
CMAKE = """cmake_minimum_required(VERSION 3.25)
project(toy LANGUAGES NONE)
enable_testing()
foreach(name one two)
  add_custom_command(OUTPUT tst_${name}
    COMMAND c++ --coverage -O0 -c -o numbers-${name}.o "${PROJECT_SOURCE_DIR}/Kernel/numbers.cpp"
    COMMAND c++ --coverage -o tst_${name} numbers-${name}.o "${PROJECT_SOURCE_DIR}/Tests/tst_${name}.cpp"
    DEPENDS "${PROJECT_SOURCE_DIR}/Kernel/numbers.cpp" "${PROJECT_SOURCE_DIR}/Tests/tst_${name}.cpp" VERBATIM)
  add_custom_target(make_${name} ALL DEPENDS tst_${name})
  add_test(NAME tst_${name} COMMAND ${LAUNCHER} "${PROJECT_BINARY_DIR}/tst_${name}")
  string(REGEX MATCHALL "/" levels "${PROJECT_BINARY_DIR}")
  list(LENGTH levels strip)
  set_property(TEST tst_${name} PROPERTY ENVIRONMENT
    "GCOV_PREFIX=${PROJECT_BINARY_DIR}/coverage-data/tst_${name}" "GCOV_PREFIX_STRIP=${strip}")
endforeach()
"""
PRESETS = {"version": 6, "configurePresets": [
    {"name": "coverage", "generator": "Ninja", "binaryDir": "${sourceDir}/build/${presetName}"}]}
CODE = """int one(int value)
{
    if (value > 1)
        return 1;
    return value;
}

int two(int value)
{
    return value + 2;
}
"""


def test_of(*claims):
    return ("int one(int);\nint two(int);\nint main()\n{\n" +
            "".join(f"    if (!({claim}))\n        return 1;\n" for claim in claims) + "    return 0;\n}\n")


@unittest.skipUnless(shutil.which("gcovr"), "needs gcovr")
class CoverageTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.root = pathlib.Path(self.folder.name) / "project"
        for folder in ("dev", "Kernel", "Tests"):
            (self.root / folder).mkdir(parents=True)
        shutil.copy(ROOT / "dev" / "coverage", self.root / "dev" / "coverage")
        self.write("CMakeLists.txt", CMAKE)
        self.write("CMakePresets.json", json.dumps(PRESETS))
        self.write("Kernel/numbers.cpp", CODE)

    def tearDown(self):
        self.folder.cleanup()

    def write(self, name, text):
        (self.root / name).write_text(text)

    def coverage(self, one, two, *arguments):
        self.write("Tests/tst_one.cpp", one)
        self.write("Tests/tst_two.cpp", two)
        # While this test is counted itself, its programs write what they count where the small project looks for it.
        own = {name: value for name, value in os.environ.items() if not name.startswith("GCOV_PREFIX")}
        return subprocess.run(["dev/coverage", *arguments], cwd=self.root, env=own, capture_output=True, text=True)

    def reach(self):
        entry = json.loads((self.root / "build/coverage/reach.json").read_text())["files"]["Kernel/numbers.cpp"]
        return {(first, last): tests for first, last, tests in entry["functions"]}

    def test_tests_add_up(self):
        done = self.coverage(test_of("one(5) == 1"), test_of("one(0) == 0", "two(2) == 4"))

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertIn("Kernel   100.0 % of 6 lines, 100.0 % of 2 branches", done.stdout)
        self.assertEqual(self.reach(), {(1, 6): ["tst_one", "tst_two"], (8, 11): ["tst_two"]})
        tests = json.loads((self.root / "build/coverage/reach.json").read_text())["tests"]
        self.assertEqual(sorted(tests), ["tst_one", "tst_two"])
        self.assertTrue((self.root / "build/coverage/html/index.html").exists())

    def test_line_that_no_test_reaches_is_told(self):
        done = self.coverage(test_of("one(5) == 1"), test_of("one(0) == 0"))

        self.assertEqual(done.returncode, 1)
        self.assertIn("Kernel    66.7 % of 6 lines", done.stdout)
        self.assertIn("less than 95 %", done.stderr)
        self.assertEqual(self.reach()[8, 11], [])
        self.assertRegex((self.root / "build/coverage/coverage.txt").read_text(), r"numbers\.cpp +6 +4 +66% +8,10")

    def test_branch_that_no_test_takes_is_told(self):
        done = self.coverage(test_of("one(0) == 0"), test_of("two(2) == 4"))

        self.assertEqual(done.returncode, 1)
        self.assertIn("50.0 % of 2 branches", done.stdout)

    def test_failing_test_fails(self):
        done = self.coverage(test_of("one(5) == 1", "two(2) == 5"), test_of("one(0) == 0"))

        self.assertEqual(done.returncode, 1)
        self.assertIn("100.0 % of 6 lines", done.stdout)
        self.assertIn("tests failed", done.stderr)

    def test_program_without_an_environment_counts_too(self):
        self.write("CMakeLists.txt", CMAKE.replace("${LAUNCHER}", "env -i"))

        done = self.coverage(test_of("one(5) == 1"), test_of("one(0) == 0", "two(2) == 4"))

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertIn("100.0 % of 6 lines", done.stdout)

    def test_nothing_of_an_earlier_run_counts(self):
        first = self.coverage(test_of("one(5) == 1"), test_of("one(0) == 0", "two(2) == 4"))
        self.assertEqual(first.returncode, 0, first.stdout + first.stderr)

        second = self.coverage(test_of("one(5) == 1"), test_of("one(0) == 0"))

        self.assertEqual(second.returncode, 1)
        self.assertIn("66.7 % of 6 lines", second.stdout)


if __name__ == "__main__":
    unittest.main()
