#!/usr/bin/env python3
"""Makes releases of a small repository in a temporary folder with dev/release, and sees it refuse."""

import pathlib
import shutil
import subprocess
import tarfile
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCRIPT = ROOT / "dev" / "release"
CHANGELOG = "# Changelog\n\n## Unreleased\n\n- Walls light up.\n- Nothing is lost.\n"
CMAKE = "cmake_minimum_required(VERSION 3.25)\nproject(zo VERSION 0.1.0 DESCRIPTION \"Module\" LANGUAGES CXX)\n"


class ReleaseTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.root = pathlib.Path(self.folder.name) / "a repository"
        (self.root / "dev").mkdir(parents=True)
        shutil.copy(SCRIPT, self.root / "dev" / "release")
        self.write("CHANGELOG.md", CHANGELOG)
        self.write("CMakeLists.txt", CMAKE)
        self.write(".gitignore", "/build/\n")
        self.write("check", "#!/bin/sh\necho \"$1\" >> build/checks\ngit tag >> build/tags\n[ ! -e build/failing ] || [ \"$1\" != --netns ]\n")
        (self.root / "check").chmod(0o755)
        self.git("init", "-q", "-b", "main")
        self.git("config", "user.name", "Releaser")
        self.git("config", "user.email", "releaser@example.org")
        self.git("add", "-A")
        self.git("commit", "-q", "-m", "First")

    def tearDown(self):
        self.folder.cleanup()

    def write(self, name, text):
        (self.root / name).write_text(text)

    def read(self, name):
        return (self.root / name).read_text()

    def git(self, *arguments):
        done = subprocess.run(["git", *arguments], cwd=self.root, check=True, capture_output=True, text=True)
        return done.stdout.strip()

    def release(self, *arguments):
        return subprocess.run(["dev/release", *arguments], cwd=self.root, capture_output=True, text=True)

    def assert_refused(self, done, reason):
        self.assertEqual(done.returncode, 1)
        self.assertIn(reason, done.stderr)
        self.assertEqual(self.git("tag"), "")
        self.assertEqual(self.git("log", "--format=%s"), "First")

    def test_release_has_version_section_tag_and_sources(self):
        done = self.release("--unchecked", "0.2.0")

        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("project(zo VERSION 0.2.0 DESCRIPTION", self.read("CMakeLists.txt"))
        self.assertRegex(self.read("CHANGELOG.md"),
                         r"\A# Changelog\n\n## Unreleased\n\n## 0\.2\.0 — \d{4}-\d\d-\d\d\n\n- Walls light up\.\n")
        self.assertEqual(self.git("log", "--format=%s"), "Release 0.2.0\nFirst")
        self.assertEqual(self.git("rev-parse", "v0.2.0^{commit}"), self.git("rev-parse", "HEAD"))
        self.assertIn("- Nothing is lost.", self.git("tag", "-l", "--format=%(contents)", "v0.2.0"))
        with tarfile.open(self.root / "build/release-0.2.0/zo-0.2.0.tar.gz") as sources:
            self.assertIn("zo-0.2.0/CMakeLists.txt", sources.getnames())
        subprocess.run(["sha256sum", "--quiet", "-c", "SHA256SUMS"], cwd=self.root / "build/release-0.2.0", check=True)
        self.assertEqual(self.git("status", "--porcelain"), "")

    def test_first_release_may_have_the_version_that_stands_there(self):
        self.assertEqual(self.release("--unchecked", "0.1.0").returncode, 0)

        again = self.release("--unchecked", "0.1.0")

        self.assertEqual(again.returncode, 1)
        self.assertIn("v0.1.0 is there already", again.stderr)

    def test_second_release_needs_something_new(self):
        self.assertEqual(self.release("--unchecked", "0.2.0").returncode, 0)

        empty = self.release("--unchecked", "0.3.0")
        self.write("CHANGELOG.md", self.read("CHANGELOG.md").replace("## Unreleased\n", "## Unreleased\n\n- More.\n"))
        self.git("commit", "-q", "-am", "More")
        full = self.release("--unchecked", "0.3.0")

        self.assertIn('nothing stands under "## Unreleased"', empty.stderr)
        self.assertEqual(full.returncode, 0, full.stderr)
        self.assertNotIn("Walls light up", self.git("tag", "-l", "--format=%(contents)", "v0.3.0"))

    def test_older_version_is_refused(self):
        self.assert_refused(self.release("--unchecked", "0.0.9"), "0.0.9 is not newer than 0.1.0")

    def test_what_is_no_version_is_refused(self):
        for text in ("1", "1.2", "v1.2.3", "1.2.3-rc1", "01.2.3", ""):
            with self.subTest(text):
                self.assert_refused(self.release("--unchecked", text), "is no version")

    def test_uncommitted_changes_are_refused(self):
        self.write("new.txt", "")

        self.assert_refused(self.release("--unchecked", "0.2.0"), "not committed")

    def test_all_checks_run(self):
        (self.root / "build/package/out").mkdir(parents=True)
        self.write("build/package/out/zo-host.deb", "package")

        done = self.release("0.2.0")

        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.read("build/checks").split(), ["--lint", "--netns", "--engines", "--package"])
        # The packages have their version from it.
        self.assertEqual(self.read("build/tags").split(), ["v0.2.0"] * 4)
        self.assertIn("zo-host.deb", self.read("build/release-0.2.0/SHA256SUMS"))

    def test_failing_check_takes_the_release_back(self):
        (self.root / "build").mkdir()
        self.write("build/failing", "")

        done = self.release("0.2.0")

        self.assert_refused(done, "nothing is released")
        self.assertEqual(self.read("CHANGELOG.md"), CHANGELOG)
        self.assertEqual(self.read("CMakeLists.txt"), CMAKE)

    def package_version(self, version):
        return subprocess.run(["bash", "-c", ". \"$1\"; zo_package_version \"$2\"", "-", str(ROOT / "dev/setup.sh"), version],
                              cwd=self.root, capture_output=True, text=True)

    def assert_older(self, older, newer):
        if shutil.which("dpkg") is None:
            self.skipTest("dpkg is not installed")
        subprocess.run(["dpkg", "--compare-versions", older, "lt", newer], check=True)

    def commit(self, text):
        self.write("CHANGELOG.md", text)
        self.git("commit", "-q", "-am", text)

    def test_packages_of_a_release_have_its_version(self):
        self.release("--unchecked", "0.2.0")

        self.assertEqual(self.package_version("0.2.0").stdout, "0.2.0\n")

    def test_packages_between_releases_sort_there(self):
        first = self.package_version("0.1.0").stdout.strip()
        self.commit("Second")
        second = self.package_version("0.1.0").stdout.strip()
        self.git("tag", "-a", "v0.1.0", "-m", "zo 0.1.0")
        self.commit("Third")
        third = self.package_version("0.1.0").stdout.strip()

        self.assertRegex(first, r"^0\.1\.0~1\.g[0-9a-f]{7}$")
        self.assertRegex(third, r"^0\.1\.0\+1\.g[0-9a-f]{7}$")
        for older, newer in ((first, second), (second, "0.1.0"), ("0.1.0", third), (third, "0.1.1")):
            self.assert_older(older, newer)

    def test_packages_of_a_wrong_tag_are_refused(self):
        self.git("tag", "-a", "v0.3.0", "-m", "zo 0.3.0")

        done = self.package_version("0.1.0")

        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertEqual(done.stderr, "CMakeLists.txt says 0.1.0, and the tag of this commit v0.3.0\n")


if __name__ == "__main__":
    unittest.main()
