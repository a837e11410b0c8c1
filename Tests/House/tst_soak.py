#!/usr/bin/env python3
"""Runs dev/soak with stand-ins for the build and the test programs, and sees what they are asked for."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "dev" / "soak"
PROGRAM = """#!/bin/sh
name=$(basename "$0")
if [ "$1" = -functions ]; then
    printf 'somethingElse()\\n%s()\\n' "${CLAIM-fullDiskLosesNothing}"
    exit
fi
echo "$name steps=$ZO_SOAK_STEPS kills=$ZO_KILLS autosave=$ZO_AUTOSAVE_KILLS seed=$ZO_SEED $*" >>"$CALLS"
echo "QINFO  : tst_zohostKills::claim() 7 kills: as promised"
echo "QINFO  : tst_zohostSoak::claim() 1000 steps: heap 5 KiB"
echo "PASS   : $name::fullDiskLosesNothing()"
[ "$name" != "$FAILING" ]
"""


class SoakTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.root = pathlib.Path(self.folder.name) / "a project"
        (self.root / "dev").mkdir(parents=True)
        shutil.copy(SCRIPT, self.root / "dev" / "soak")
        build = self.root / "build" / "release"
        build.mkdir(parents=True)
        (build / "build.ninja").touch()
        self.program(self.root / "tools" / "cmake", "#!/bin/sh\necho \"cmake $*\" >>\"$CALLS\"\n")
        self.disks = dict(re.findall(r"\[(tst_\w+)\]=(\w+)", SCRIPT.read_text()))
        for name, folder in {**self.disks, "tst_zohostSoak": "System", "tst_zohostKills": "System"}.items():
            self.program(build / "Tests" / folder / name, PROGRAM)

    def tearDown(self):
        self.folder.cleanup()

    def program(self, path, text):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        path.chmod(0o755)

    def soak(self, *arguments, **variables):
        self.calls = self.root / "calls"
        self.calls.unlink(missing_ok=True)
        environment = {**os.environ, "CALLS": str(self.calls), **variables,
                       "PATH": f"{self.root / 'tools'}:{os.environ['PATH']}"}
        done = subprocess.run(["dev/soak", *arguments], cwd=self.root, capture_output=True, text=True, env=environment)
        return done, self.calls.read_text() if self.calls.exists() else ""

    def test_all_of_it_runs(self):
        done, calls = self.soak()

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertRegex(calls, r"cmake --build build/release --target .*tst_zohostSoak")
        self.assertIn("tst_zohostSoak steps=20000 ", calls)
        self.assertIn("tst_zohostKills steps= kills=250 autosave= seed= fileIsTheOldOrTheNewOne", calls)
        self.assertIn("autosave=100 seed= keptWorkIsTheLastOrTheOneBefore", calls)
        for name in self.disks:
            self.assertRegex(calls, rf"{name} .* fullDiskLosesNothing\n")
        self.assertIn("1000 steps: heap 5 KiB", done.stdout)
        self.assertIn("7 kills: as promised", done.stdout)

    def test_programs_and_claims_that_are_asked_for_are_there(self):
        tests = SCRIPT.parent.parent / "Tests"
        for name, folder in {**self.disks, "tst_zohostSoak": "System", "tst_zohostKills": "System"}.items():
            self.assertTrue((tests / folder / f"{name}.cpp").exists(), name)
        for claim in ("fileIsTheOldOrTheNewOne", "keptWorkIsTheLastOrTheOneBefore"):
            self.assertIn(f"tst_zohostKills::{claim}()", (tests / "System/tst_zohostKills.cpp").read_text())
        for variable, name in (("ZO_SOAK_STEPS", "Soak"), ("ZO_KILLS", "Kills"), ("ZO_AUTOSAVE_KILLS", "Kills"),
                               ("ZO_SEED", "Soak"), ("ZO_SEED", "Kills")):
            self.assertIn(f'"{variable}"', (tests / f"System/tst_zohost{name}.cpp").read_text())

    def test_fewer_may_be_asked_for(self):
        done, calls = self.soak("--steps", "30", "--kills", "5", "--autosave-kills", "2", "--seed", "9")

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertIn("tst_zohostSoak steps=30 kills= autosave= seed=9", calls)
        self.assertIn("kills=3 autosave= seed=9", calls)
        self.assertIn("autosave=2 seed=9", calls)

    def test_failure_is_told_and_the_rest_runs(self):
        done, calls = self.soak(FAILING="tst_zohostSoak")

        self.assertEqual(done.returncode, 1)
        self.assertIn("steps failed", done.stderr)
        self.assertIn("keptWorkIsTheLastOrTheOneBefore", calls)

    def test_program_without_claims_is_told(self):
        done, _ = self.soak(CLAIM="nothingOfTheKind")

        self.assertEqual(done.returncode, 1)
        self.assertIn("says nothing about full disks", done.stderr)

    def test_what_is_no_number_is_refused(self):
        for arguments in (("--steps", "0"), ("--kills", "many"), ("--seed",), ("--everything",)):
            done, calls = self.soak(*arguments)
            self.assertEqual(done.returncode, 2, arguments)
            self.assertEqual(calls, "")


if __name__ == "__main__":
    unittest.main()
