#!/usr/bin/env python3
"""Changes the interface of a small library in a temporary repository, and sees what dev/check-abi says of it."""

import pathlib
import shutil
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "dev" / "check-abi"
PROGRAMS = ("git", "cmake", "ninja", "g++", "abidiff", "abidw", "objdump")
SETUP = "zo_build_packages=()\nzo_install() { :; }\nzo_say() { printf '== %s\\n' \"$*\"; }\n"
CMAKE = """cmake_minimum_required(VERSION 3.25)
project(zo VERSION 0.1.0 LANGUAGES CXX)
add_library(zoKernel SHARED Kernel/zoThing.cpp)
set_target_properties(zoKernel PROPERTIES SOVERSION 0 LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
"""
HEADER = """#pragma once
class zoThing
{
public:
    virtual ~zoThing();
    virtual int first();
    virtual int second();
    int size() const;
};
"""
SOURCE = """#include "zoThing.h"
zoThing::~zoThing() = default;
int zoThing::first() { return 1; }
int zoThing::second() { return 2; }
int zoThing::size() const { return 3; }
"""


@unittest.skipUnless(all(map(shutil.which, PROGRAMS)), "one of these is not installed: " + ", ".join(PROGRAMS))
class AbiTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.root = pathlib.Path(self.folder.name)
        (self.root / "dev").mkdir()
        (self.root / "Kernel").mkdir()
        shutil.copy(SCRIPT, self.root / "dev" / "check-abi")
        for name, text in (("dev/setup.sh", SETUP), ("CMakeLists.txt", CMAKE), ("Kernel/zoThing.h", HEADER),
                           ("Kernel/zoThing.cpp", SOURCE), (".gitignore", "/build/\n")):
            (self.root / name).write_text(text)
        self.git("init", "-q")
        self.git("config", "user.name", "Releaser")
        self.git("config", "user.email", "releaser@example.org")
        self.git("add", "-A")
        self.git("commit", "-q", "-m", "First")

    def git(self, *arguments):
        subprocess.run(["git", *arguments], cwd=self.root, check=True, capture_output=True)

    def release(self):
        self.git("tag", "-a", "v0.1.0", "-m", "zo 0.1.0")

    def change(self, name, old, new):
        path = self.root / name
        text = path.read_text()
        self.assertIn(old, text)
        path.write_text(text.replace(old, new))

    def commit(self):
        self.git("commit", "-q", "-am", "Later")

    def check(self, *arguments):
        return subprocess.run(["dev/check-abi", *arguments], cwd=self.root, capture_output=True, text=True)

    def test_before_the_first_release_nothing_is_compared_and_that_is_said(self):
        done = self.check()

        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("not compared, since there is no release yet", done.stdout)
        self.assertFalse((self.root / "build").exists())

    def test_first_release_itself_is_not_compared(self):
        self.release()

        self.assertIn("no release yet", self.check().stdout)

    def test_same_interface_and_additions_pass(self):
        self.release()
        self.change("Kernel/zoThing.h", "    int size() const;\n", "    int size() const;\n    int more() const;\n")
        self.change("Kernel/zoThing.cpp", "int zoThing::size()", "int zoThing::more() const { return 4; }\nint zoThing::size()")
        self.commit()

        done = self.check()

        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertIn("libzoKernel is as v0.1.0 had it, or more", done.stdout)

    def test_function_that_is_gone_fails(self):
        self.release()
        self.change("Kernel/zoThing.h", "    int size() const;\n", "")
        self.change("Kernel/zoThing.cpp", "int zoThing::size() const { return 3; }\n", "")
        self.commit()

        done = self.check()

        self.assertEqual(done.returncode, 1, done.stdout)
        self.assertIn("Modules built against v0.1.0 would break: keep the interface", done.stderr)

    def test_virtual_functions_that_change_places_fail(self):
        self.release()
        self.change("Kernel/zoThing.h", "    virtual int first();\n    virtual int second();\n",
                    "    virtual int second();\n    virtual int first();\n")
        self.commit()

        done = self.check()

        self.assertEqual(done.returncode, 1, done.stdout)
        self.assertIn("would break", done.stderr)

    def test_new_number_of_the_library_may_be_another_interface(self):
        self.release()
        self.change("Kernel/zoThing.h", "    int size() const;\n", "")
        self.change("Kernel/zoThing.cpp", "int zoThing::size() const { return 3; }\n", "")
        self.change("CMakeLists.txt", "SOVERSION 0", "SOVERSION 1")
        self.commit()

        done = self.check()

        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("libzoKernel.so.1 is a new interface beside libzoKernel.so.0", done.stdout)

    def test_unknown_revision_is_refused(self):
        done = self.check("v9.9.9")

        self.assertEqual((done.returncode, done.stderr), (2, "dev/check-abi: there is no revision v9.9.9\n"))


if __name__ == "__main__":
    unittest.main()
