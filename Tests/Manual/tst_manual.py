#!/usr/bin/env python3
"""What manual.py finds, and what it leaves alone."""

import pathlib
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

import manual
import manual_messages

SCHEMA = """<grammar xmlns="http://relaxng.org/ns/structure/1.0">
  <define name="node"><element name="node">
    <attribute name="name"><text/></attribute>
    <zeroOrMore><attribute>
      <choice><name>enabled</name><name>rendernode</name></choice>
      <choice><value></value><value>true</value><value>false</value></choice>
    </attribute></zeroOrMore>
  </element></define>
  <define name="wall"><element name="wall">
    <choice>
      <group><attribute name="type"><value>flat</value></attribute><attribute name="width"><text/></attribute></group>
      <group><attribute name="type"><value>round</value></attribute><attribute name="radius"><text/></attribute></group>
    </choice>
  </element></define>
</grammar>"""
PAGE = """# The file format

## node

| attribute | values | default | meaning |
|---|---|---|---|
| `name` | text | none | the host |
| `enabled`, `rendernode` | `true`, `false` | `true` | whether |

## wall

| type | what | attributes |
|---|---|---|
| `flat` | flat | `type` `width` |
| `round` | round | `type` `radius` |

| attribute | values | default | meaning |
|---|---|---|---|
| `type` | `flat`, `round` | none | which |
| `width` | number | 0 | mm |
| `radius` | number | 0 | mm |
"""


class Format(unittest.TestCase):
    def findings(self, page):
        elements = manual.elements_of(ElementTree.fromstring(SCHEMA))
        return manual.findings_of_format(elements, manual.sections(page))

    def test_complete_page_has_no_findings(self):
        self.assertEqual(self.findings(PAGE), [])

    def test_each_line_of_a_table_is_needed(self):
        lines = PAGE.split("\n")
        rows = [number for number, line in enumerate(lines) if line.startswith("| `")]
        self.assertEqual(len(rows), 7)
        for row in rows:
            self.assertTrue(self.findings("\n".join(lines[:row] + lines[row + 1:])), lines[row])

    def test_missing_value_default_or_attribute_of_a_type_is_found(self):
        for old, new in (("`true`, `false` |", "`true` |"), ("| none | the host", "|  | the host"),
                         ("`type` `width`", "`type`"), ("`type` `radius`", "`type` `radius` `width`")):
            self.assertIn(old, PAGE)
            self.assertTrue(self.findings(PAGE.replace(old, new)), old)

    def test_section_of_another_element_does_not_count(self):
        self.assertTrue(self.findings(PAGE.replace("## node", "## nodes")))


class Defaults(unittest.TestCase):
    PAGE = """## network
| attribute | values | default | meaning |
|---|---|---|---|
| `enabled` | `true` | `true` | x |
| `port` | whole | 8889 | x |
| `speed` | `1g` | automatic | x |
"""

    def test_missing_is_what_the_page_says(self):
        values = ["network[1]/enabled=true", "network[1]/port=8889", "network[1]/speed=", "display[1]/eyeseparation="]
        self.assertEqual(manual.findings_of_defaults(values, manual.sections(self.PAGE)), [])
        for line in ("network[1]/enabled=false", "network[1]/port=1", "network[1]/port=", "network[1]/speed=1g",
                     "display[1]/window[1]/width=1280"):
            self.assertEqual(len(manual.findings_of_defaults([line], manual.sections(self.PAGE))), 1, line)


class Fields(unittest.TestCase):
    FORM = """<ui><widget class="QLabel" name="a"><property name="text"><string>Cave size [mm]</string></property></widget>
      <widget class="QLabel" name="b"><property name="text"><string>Choose a row.</string></property></widget>
      <widget class="QLabel" name="c"><property name="text"><string>X</string></property></widget>
      <widget class="QGroupBox" name="d"><property name="title"><string>&amp;View</string></property>
        <property name="toolTip"><string>Tip</string></property></widget></ui>"""

    def test_labels_are_what_is_beside_fields(self):
        self.assertEqual(manual.labels_of(ElementTree.fromstring(self.FORM)), {"Cave size", "View"})

    def test_missing_label_is_found(self):
        self.assertEqual(manual.missing_labels({"Cave size", "View"}, "| Cave size [mm] | views |"), ["View"])


class Options(unittest.TestCase):
    HELP = "Usage: x [options]\nSee --other.\n\nOptions:\n  -h, --help  Help, not --this.\n  -o, --output <file>  Write.\n  --json      JSON.\n"

    def test_options_are_those_of_the_list(self):
        self.assertEqual(manual.option_lines(self.HELP), ["--help", "--json", "--output", "-h", "-o"])

    def test_missing_option_is_found_and_help_is_not_asked_for(self):
        options = manual.option_lines(self.HELP)
        page = "## zohpc x\n`-o FILE`, `--output FILE` and `--json`\n"
        self.assertEqual(manual.findings_of_options("zohpc x", options, manual.sections(page)), [])
        for name in ("-o", "--output", "--json"):
            cut = page.replace("`" + name, "`")
            self.assertEqual(len(manual.findings_of_options("zohpc x", options, manual.sections(cut))), 1, name)
        self.assertTrue(manual.findings_of_options("zohpc y", options, manual.sections(page)))

    def test_longer_option_does_not_stand_for_a_shorter_one(self):
        self.assertTrue(manual.findings_of_options("x", ["--json"], {"x": "`--json-lines`"}))


class Messages(unittest.TestCase):
    SOURCE = '''
    zoLog::info("%s", qUtf8Printable(tr("File %1 of \\"%2\\" "
                                        "is there")));
    zoLog::error("Network %d not found.", index); // zoLog::error(tr("no comment"))
    zoLog::error(QCoreApplication::translate("zoX", "%1 is gone").arg(tr("it")));
    box(tr("not of the log"));
    '''

    def test_forms_are_those_of_the_log(self):
        forms = manual_messages.of_log(manual_messages.without_comments(self.SOURCE))
        self.assertEqual(forms, ['File %1 of "%2" is there', "Network %d not found.", "%1 is gone", "it"])

    def test_text_from_elsewhere_is_told(self):
        others = []
        self.assertEqual(manual_messages.of_log('zoLog::error(reason); zoLog::info("%s", qUtf8Printable(text));', others), [])
        self.assertEqual(len(others), 2)

    def test_message_stands_with_something_in_its_places(self):
        forms = {"Node %1 lost: %2": "a.cpp"}
        self.assertEqual(manual.findings_of_messages(forms, "| `Node NODE lost: REASON` |"), [])
        self.assertEqual(manual.findings_of_messages(forms, "`Node gpu01 lost: its server\nended`"), [])
        for text in ("Node NODE lost: REASON", "`Node NODE lost`", "`The Node NODE lost: REASON`",
                     "```\n`Node NODE lost: REASON`\n```"):
            self.assertEqual(len(manual.findings_of_messages(forms, text)), 1, text)

    def test_sources_of_the_house_log(self):
        root = pathlib.Path(__file__).resolve().parents[2]
        forms = manual_messages.of_sources(root)
        for form in ("Network %d not found.", "its server ended", "Module %1 loaded", "no answer within %1 s"):
            self.assertIn(form, forms)


class Pages(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        root = pathlib.Path(self.folder.name)
        pages = root / "Docs/manual"
        (pages / "pictures").mkdir(parents=True)
        (pages / "pictures/a.png").write_bytes(b"")
        (pages / "CMakeLists.txt").write_text("set(pages\n  index\n  one)\nset(pictures\n  a.png)\n")
        (pages / "index.md").write_text("# Index\n\n[One](one.md)\n")
        (pages / "one.md").write_text("# One\n\n## Part two\n\n![A](pictures/a.png) [x](#part-two) `[no](link.md)`\n")
        self.root, self.pages = root, pages

    def tearDown(self):
        self.folder.cleanup()

    def findings(self):
        return manual.check_pages(manual.Manual(self.root))

    def change(self, name, old, new):
        path = self.pages / name
        text = path.read_text()
        self.assertIn(old, text)
        path.write_text(text.replace(old, new))

    def test_whole_manual_has_no_findings(self):
        self.assertEqual(self.findings(), [])

    def test_each_defect_is_found(self):
        for name, old, new in (("one.md", "#part-two", "#part-three"), ("one.md", "pictures/a.png", "pictures/b.png"),
                               ("index.md", "one.md", "two.md"), ("CMakeLists.txt", "  one", ""),
                               ("CMakeLists.txt", "a.png", "")):
            self.change(name, old, new)
            self.assertTrue(self.findings(), new)
            self.change(name, new, old) if new else (self.tearDown(), self.setUp())

    def test_pages_that_windows_name_are_looked_for(self):
        host = self.root / "Host"
        host.mkdir()
        source = '{"Log", "one"},\nsetProperty("manualPage", zoText("one#part-two"));\n'
        (host / "a.cpp").write_text(source)
        self.assertEqual(manual.check_keys(manual.Manual(self.root)), [])
        for old, new in (('"one"', '"two"'), ("#part-two", "#part-three"), ("manualPage", "other")):
            (host / "a.cpp").write_text(source.replace(old, new))
            self.assertEqual(len(manual.check_keys(manual.Manual(self.root))), 1, new)

    def test_html_is_looked_at_in_the_same_way(self):
        built = self.root / "html"
        built.mkdir()
        (built / "index.html").write_text('<a href="one.html#part">x</a>')
        (built / "one.html").write_text('<h2 id="part">Part</h2>')
        self.assertEqual(manual.check_html(manual.Manual(self.root, html_folder=built)), [])
        (built / "one.html").write_text('<h2>Part</h2><p id="part">')
        self.assertEqual(len(manual.check_html(manual.Manual(self.root, html_folder=built))), 1)
        (built / "one.html").unlink()
        self.assertEqual(len(manual.check_html(manual.Manual(self.root, html_folder=built))), 2)


class Glossary(unittest.TestCase):
    def test_words_of_the_windows_are_translated_as_there(self):
        texts = {"Tile": {"Kachel"}, "Wall": {"Wand"}}
        page = "| English | Deutsch | is |\n|---|---|---|\n| bezel | Rahmen | x |\n| Tile | Kachel | x |\n"
        self.assertEqual(manual.findings_of_glossary(texts, page), [])
        self.assertEqual(len(manual.findings_of_glossary(texts, page.replace("Kachel", "Fliese"))), 1)
        self.assertEqual(len(manual.findings_of_glossary(texts, page + "| Axis | Achse | x |\n")), 1)
        self.assertEqual(len(manual.findings_of_glossary({}, page)), 1)


class Examples(unittest.TestCase):
    def findings(self, text):
        with tempfile.TemporaryDirectory() as folder:
            return manual.findings_of_examples("page.md", text, folder, folder)

    def test_example_says_what_is_shown(self):
        text = "```sh run\n$ echo a\na\n$ echo b > file\n$ cat file\nb\n$ false\n[1]\n```\n"
        self.assertEqual(self.findings(text), [])
        self.assertEqual(len(manual.examples_of(text)), 4)
        for old, new in (("echo a\na", "echo a\nb"), ("[1]", ""), ("cat file\nb", "cat file"), ("cat file", "cat files")):
            self.assertEqual(len(self.findings(text.replace(old, new))), 1, new)

    def test_dots_stand_for_any_text_and_any_lines(self):
        self.assertEqual(self.findings("```sh run\n$ printf 'a b c\\nd\\ne\\nf\\n'\na ... c\n...\nf\n```\n"), [])
        self.assertEqual(len(self.findings("```sh run\n$ printf 'a b c\\nd\\n'\na ... d\n```\n")), 1)

    def test_other_blocks_do_not_run(self):
        self.assertEqual(manual.examples_of("```sh\n$ false\n```\n\n$ false\n"), [])


if __name__ == "__main__":
    unittest.main()
