#!/usr/bin/env python3
"""Sees each check of house.py fail: a small house in a temporary folder, sound at first, and one defect in it."""

import contextlib
import io
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
import house  # noqa: E402

MODULE = house.MODULE


class HouseTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.root = pathlib.Path(self.folder.name)
        for room in house.ROOMS:
            (self.root / MODULE / room).mkdir(parents=True)
        self.write("Kernel/zoLog.h", "#pragma once\n")
        self.write("Kernel/zoLog.cpp", '#include "zoLog.h"\n')
        self.write("Host/zoHost.h", "#pragma once\n#include <zoLog.h>\n")
        self.write("Host/zoHost.cpp", '#include "zoHost.h"\n')
        self.write("Tools/main.cpp", "#include <zoHPCItem.h>\n\nint main()\n{\n    return 0;\n}\n")
        self.write("Tests/tst_zoHPCItem.cpp", "#include <zoHPCItem.h>\n#include <zoHost.h>\n")
        self.write(f"{MODULE}/Base/zoText.h", "#pragma once\n#include <zoLog.h>\n")
        self.write(f"{MODULE}/Hosts/zoHPCItem.h", "#pragma once\n#include <zoText.h>\nclass zoHPCView;\n")
        self.write(f"{MODULE}/Hosts/zoHPCItem.cpp", '#include "zoHPCItem.h"\n')
        self.write(f"{MODULE}/Hosts/zoHPCView.h", "#pragma once\n#include <zoHPCItem.h>\n")
        self.write(f"{MODULE}/Hosts/zoHPCView.cpp", '#include "zoHPCView.h"\n#include "ui_zoHPCView.h"\n')

    def tearDown(self):
        self.folder.cleanup()

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def run_check(self, check, *arguments):
        """Exit status and output, as ctest sees them."""
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            status = house.main([check, str(self.root), *arguments])
        return status, output.getvalue()

    def assert_found(self, check, *parts):
        status, output = self.run_check(check)
        self.assertEqual(status, 1, output)
        for part in parts:
            self.assertIn(part, output)

    def assert_sound(self, check, *arguments):
        status, output = self.run_check(check, *arguments)
        self.assertEqual(status, 0, output)


class Includes(HouseTest):
    def test_sound_house_passes(self):
        self.assert_sound("includes")

    def test_host_must_not_know_the_module(self):
        self.write("Host/zoHost.cpp", '#include "zoHost.h"\n\n#include <zoHPCItem.h>\n')
        self.assert_found("includes", f"Host/zoHost.cpp:3: Host must not know {MODULE}/Hosts/zoHPCItem.h")

    def test_kernel_knows_nothing_of_ours(self):
        self.write("Kernel/zoLog.cpp", '#include "zoLog.h"\n#include "../Host/zoHost.h"\n')
        self.assert_found("includes", "Kernel/zoLog.cpp:2: Kernel must not know Host/zoHost.h")

    def test_host_knows_of_the_servers_only_what_they_say(self):
        self.write("Server/Protocol/zoMessage.h", "#pragma once\n")
        self.write("Server/zoServer.h", "#pragma once\n#include <zoMessage.h>\n")
        self.write("Host/zoHost.cpp", '#include "zoHost.h"\n\n#include <zoMessage.h>\n')
        self.assert_sound("includes")
        self.write("Host/zoHost.cpp", '#include "zoHost.h"\n\n#include <zoServer.h>\n')
        self.assert_found("includes", "Host/zoHost.cpp:3: must not know Server/zoServer.h")

    def test_nodes_need_no_kernel(self):
        self.write("Server/zoServer.h", "#pragma once\n#include <zoLog.h>\n")
        self.assert_found("includes", "Server/zoServer.h:2: must not know Kernel/zoLog.h")
        self.write("Server/zoServer.h", "#pragma once\n")
        self.write("Server/Setup/zoSetup.h", "#pragma once\n#include <zoLog.h>\n#include <zoHPCItem.h>\n")
        self.assert_sound("includes")

    def test_nodes_know_how_the_toolkits_differ(self):
        self.write("Kernel/Platform/zoQt.h", "#pragma once\n")
        self.write("Server/zoServer.h", "#pragma once\n#include <zoQt.h>\n")
        self.assert_sound("includes")

    def test_production_knows_no_tests(self):
        self.write("Tests/zoTestCase.h", "#pragma once\n")
        self.write("Tools/main.cpp", "#include <zoTestCase.h>\n")
        self.assert_found("includes", "Tools/main.cpp:1: Tools must not know Tests/zoTestCase.h")

    def test_room_must_not_know_a_room_above_it(self):
        self.write(f"{MODULE}/Hosts/zoHPCItem.cpp", '#include "zoHPCItem.h"\n#include <zoHPCDialog.h>\n')
        self.write(f"{MODULE}/DisplayEditor/zoHPCDialog.h", "#pragma once\n")
        self.assert_found("includes", "zoHPCItem.cpp:2: room Hosts must not know DisplayEditor")

    def test_base_knows_no_room(self):
        self.write(f"{MODULE}/Base/zoText.h", "#pragma once\n#include <zoHPCItem.h>\n")
        self.assert_found("includes", "zoText.h:2: room Base must not know Hosts")

    def test_form_of_another_class_is_an_arrow(self):
        self.write(f"{MODULE}/Hosts/zoHPCItem.cpp", '#include "zoHPCItem.h"\n#include "ui_zoHPCView.h"\n')
        self.assert_found("includes", "is in an include cycle of 2 units")

    def test_unknown_room(self):
        self.write(f"{MODULE}/Attic/zoHPCOld.h", "#pragma once\n")
        self.assert_found("includes", "Attic/zoHPCOld.h:1: stands in no room")

    def test_file_outside_of_the_rooms(self):
        self.write(f"{MODULE}/zoHPCOld.h", "#pragma once\n")
        self.assert_found("includes", "zoHPCOld.h:1: stands in no room")

    def test_room_without_folder(self):
        (self.root / MODULE / "Legacy").rmdir()
        self.assert_found("includes", "Legacy: has a row in ROOMS but no folder")

    def test_unknown_layer(self):
        self.write("Shed/zoShed.cpp", "")
        self.assert_found("includes", "Shed: has sources but no row in LAYERS")

    def test_lint_settings_name_the_layers(self):
        self.write(".clang-tidy", "HeaderFilterRegex: '/(Kernel|Plugins|Host|Attic|Tests|Benchmarks)/'\n")
        self.assert_found("includes", "HeaderFilterRegex and LAYERS differ in Attic", "differ in Tools")

    def test_two_headers_of_one_name(self):
        self.write("Host/zoLog.h", "#pragma once\n")
        self.assert_found("includes", "has the same name")

    def test_cycle_through_a_source(self):
        # Legal for the compiler: a header one way, a source the other.
        self.write(f"{MODULE}/Hosts/zoHPCItem.cpp", '#include "zoHPCItem.h"\n#include "zoHPCView.h"\n')
        self.assert_found("includes", "Hosts/zoHPCItem: is in an include cycle of 2 units",
                          "Hosts/zoHPCView.h:2: ", "Hosts/zoHPCItem.cpp:2: ")

    def test_cycle_of_three_in_the_host(self):
        self.write("Host/zoA.h", "#pragma once\n#include <zoB.h>\n")
        self.write("Host/zoB.h", "#pragma once\n#include <zoC.h>\n")
        self.write("Host/zoC.h", "#pragma once\n#include <zoA.h>\n")
        self.assert_found("includes", "Host/zoA: is in an include cycle of 3 units")

    def test_empty_root_is_no_sound_house(self):
        with tempfile.TemporaryDirectory() as empty:
            done = subprocess.run([sys.executable, str(HERE / "house.py"), "includes", empty], capture_output=True)
        self.assertEqual(done.returncode, 1)


class Known(HouseTest):
    def test_known_finding_is_allowed(self):
        self.write("Host/zoHost.cpp", '#include "zoHost.h"\n#include <zoHPCItem.h>\n')
        self.write("Tests/House/known.txt", f"# for now\narrow Host/zoHost {MODULE}/Hosts/zoHPCItem\n")
        self.assert_sound("includes")

    def test_list_only_shrinks(self):
        self.write("Tests/House/known.txt", f"arrow Host/zoHost {MODULE}/Hosts/zoHPCItem\n")
        self.assert_found("includes", "is no longer found, take the line out: arrow Host/zoHost")


class Headers(HouseTest):
    def commands(self):
        file = self.root / "commands.json"
        file.write_text(json.dumps([
            {"directory": str(self.root), "file": str(self.root / path),
             "command": f"c++ -std=c++17 -I{self.root}/Kernel -I{self.root}/{MODULE}/Base -o x -c {path}"}
            for path in ("Kernel/zoLog.cpp", f"{MODULE}/Hosts/zoHPCItem.cpp")]))
        return str(file)

    def test_sound_house_passes(self):
        self.assert_sound("headers", self.commands())

    def test_own_header_comes_first(self):
        self.write("Host/zoHost.cpp", '#include <zoLog.h>\n#include "zoHost.h"\n')
        status, output = self.run_check("headers", self.commands())
        self.assertEqual(status, 1, output)
        self.assertIn("zoHost.h must be the first include", output)

    def test_header_without_source_compiles_by_itself(self):
        self.write(f"{MODULE}/Base/zoText.h", "#pragma once\nstd::string text();\n")
        status, output = self.run_check("headers", self.commands())
        self.assertEqual(status, 1, output)
        self.assertIn("Base/zoText.h:1: does not compile by itself", output)

    def test_header_may_come_twice(self):
        self.write(f"{MODULE}/Base/zoText.h", "struct Text {};\n")
        status, output = self.run_check("headers", self.commands())
        self.assertEqual(status, 1, output)
        self.assertIn("Base/zoText.h:1: has no #pragma once", output)


class Sizes(HouseTest):
    def function(self, lines, above=""):
        return above + "void zoHost::work()\n{\n" + "    go();\n" * (lines - 3) + "}\n"

    def test_function_of_sixty_lines_passes(self):
        self.write("Host/zoHost.cpp", self.function(60))
        self.assert_sound("sizes")

    def test_long_function_needs_a_reason(self):
        self.write("Host/zoHost.cpp", "\n" + self.function(61))
        self.assert_found("sizes", "Host/zoHost.cpp:2: zoHost::work has 61 lines, more than 60")

    def test_reason_is_enough_up_to_eighty(self):
        self.write("Host/zoHost.cpp", self.function(80, "// long: one row per option\n"))
        self.assert_sound("sizes")

    def test_no_reason_helps_beyond_eighty(self):
        self.write("Host/zoHost.cpp", self.function(81, "// long: one row per option\n"))
        self.assert_found("sizes", "has 81 lines, more than 80")

    def test_functions_are_found_wherever_they_stand(self):
        body = "{\n" + "    go();\n" * 60 + "}\n"
        for head in ("static int free(int a)\n", "namespace\n{\nint f()\n", "class zoA\n{\npublic:\n    int f() const\n",
                     "zoA::zoA(int a)\n    : m_a{a}\n    , m_b(a)\n", "bool operator==(const zoA& a, const zoA& b)\n",
                     "template <class T>\nT f(T t)\n", "struct A\n{\n    int a = 0;\n};\n\nauto f() -> int\n",
                     "const char s_brace = '{';\n\nQ_DECLARE_METATYPE(zoA)\n\nvoid f()\n"):
            self.write("Host/zoHost.cpp", head + body + ("}\n" if "namespace" in head else "") +
                       ("};\n" if head.startswith("class") else ""))
            with self.subTest(head):
                self.assert_found("sizes", "more than 60")

    def test_tables_are_no_functions(self):
        self.write("Host/zoHost.cpp", "const int s_table[] = {\n" + "    1,\n" * 100 + "};\n")
        self.assert_sound("sizes")

    def test_long_file(self):
        self.write("Host/zoHost.cpp", "int a;\n" * 701)
        self.assert_found("sizes", "Host/zoHost.cpp:1: has 701 lines, more than 700")

    def test_table_says_that_it_is_one(self):
        self.write("Host/zoHost.cpp", "// table: one row per key of the old format\n" + "int a;\n" * 701)
        self.assert_sound("sizes")

    def test_long_test_file(self):
        self.write("Tests/tst_zoHPCItem.cpp", "int a;\n" * 1201)
        self.assert_found("sizes", "has 1201 lines, more than 1200")


class Words(HouseTest):
    def test_sound_house_passes(self):
        self.write(f"{MODULE}/Hosts/zoHPCItem.cpp", '#include "zoHPCItem.h"\n// Not QStringLiteral: see zoText.h.\n')
        self.assert_sound("words")

    def test_constants_that_clang_does_not_count(self):
        self.write("Host/zoHost.cpp", '#include "zoHost.h"\nconstexpr QLatin1String s_word{"word"};\n')
        self.assert_found("words", "Host/zoHost.cpp:2: clang cannot count this at compile time")

    def test_literals_that_do_not_outlive_the_module(self):
        self.write(f"{MODULE}/Hosts/zoHPCItem.cpp", '#include "zoHPCItem.h"\nauto a = QStringLiteral("a");\n')
        self.assert_found("words", "zoHPCItem.cpp:2: zoText() instead of QStringLiteral")


if __name__ == "__main__":
    unittest.main()
