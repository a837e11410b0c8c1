#!/usr/bin/env python3
"""Holds the manual to what the programs are.

  manual.py CHECK ROOT [--programs FOLDER] [--html FOLDER]

  format     every element, attribute and value of the schema of documents stands in file-format.md
  defaults   what is missing is what file-format.md says
  fields     every label of the forms stands in windows.md
  problems   every code of "zohpc check --explain" has its section in problems.md
  options    every command and option of the programs stands in its section of command-line.md
  messages   every text that the sources log, or give as the reason of a failing start, stands in messages.md or starting.md
  pages      links, anchors and pictures are there; every page is built, and index.md leads to it
  keys       pages that windows name for F1
  glossary   words of the windows are translated as there, in alphabetical order
  html       the built pages: links, anchors and pictures
  examples   what blocks marked "sh run" show is what the programs say

Each finding is a line; the exit status is 1 when there is one.
"""

import argparse
import html.parser
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

import manual_messages

RNG = "{http://relaxng.org/ns/structure/1.0}"
CODE = re.compile(r"`([^`]+)`")
# Parts of other texts, which tell nothing by themselves, and labels.
FRAGMENTS = (" and ", "display %1", "%1 on %2", "the cluster", "Connected", "no node",
             "Cluster", "Results", "&Toggle Connection to the Cluster", "Toggle Connection to the Cluster")


class Manual:
    def __init__(self, root, programs=None, html_folder=None):
        self.root = pathlib.Path(root)
        self.folder = self.root / "Docs/manual"
        self.programs = programs and str(pathlib.Path(programs).resolve())
        self.html_folder = html_folder
        self.pages = {path.name: path.read_text(encoding="utf-8") for path in sorted(self.folder.glob("*.md"))}


def slug(text):
    text = re.sub(r"[`*]|\]\([^)]*\)|\[", "", text)
    return re.sub(r"\s", "-", re.sub(r"[^\w\s-]", "", text.strip().lower()))


def without_examples(text):
    return re.sub(r"^```.*?^```$", "", text, flags=re.DOTALL | re.MULTILINE)


def sections(text):
    """The text below each heading, down to the next one of any level."""
    result = {}
    heading = ""
    for line in without_examples(text).split("\n"):
        match = re.match(r"#+ (.*)", line)
        if match:
            heading = match.group(1).replace("`", "")
        result[heading] = result.get(heading, "") + line + "\n"
    return result


# --- The file format ---

def elements_of(schema):
    """{element: {attribute: words}} of a schema in the XML syntax of RELAX NG; of an element with a type also each type."""
    defines = {define.get("name"): define for define in schema.iter(RNG + "define")}
    result = {}
    for define in defines.values():
        for element in define.iter(RNG + "element"):
            groups = [group for group in element.iter(RNG + "group")
                      if any(one.get("name") == "type" for one in group.iter(RNG + "attribute"))]
            for scope in groups or [element]:
                attributes = {}
                for attribute in scope.iter(RNG + "attribute"):
                    names = [attribute.get("name")] if attribute.get("name") else [
                        name.text for name in attribute.iter(RNG + "name")]
                    words = [value.text for value in attribute.iter(RNG + "value") if value.text]
                    if attribute.find(".//" + RNG + "ref[@name='truth']") is not None:
                        words = ["true", "false"]
                    for name in names:
                        attributes[name] = words
                kind = attributes["type"][0] if groups else ""
                if attributes:
                    result[(element.get("name"), kind)] = attributes
    return result


def check_format(manual):
    schema = ElementTree.parse(manual.root / "Data/schema/zhpc.rng")
    return findings_of_format(elements_of(schema), sections(manual.pages["file-format.md"]))


def findings_of_format(elements, headings):
    findings = []
    for (element, kind), attributes in elements.items():
        rows = [row for row in headings.get(element, "").split("\n") if row.startswith("|")]
        cells = [row.strip("|").split("|") for row in rows]
        if kind:
            named = [set(CODE.findall(row[-1])) for row in cells if CODE.findall(row[0]) == [kind] and len(row) == 3]
            if not named or named[0] != set(attributes):
                findings.append("file-format.md: %s of type %s has the attributes %s" %
                                (element, kind, " ".join(attributes)))
        for attribute, words in attributes.items():
            found = [row for row in cells if attribute in CODE.findall(row[0]) and len(row) == 4]
            missing = [word for word in words if not found or word not in CODE.findall(found[0][1])]
            if not found:
                findings.append("file-format.md: nothing of the attribute %s of %s" % (attribute, element))
            elif missing:
                findings.append("file-format.md: %s of %s may also be %s" % (attribute, element, " ".join(missing)))
            elif not all(cell.strip() for cell in found[0]):
                findings.append("file-format.md: an empty cell in the row of %s of %s" % (attribute, element))
    return findings


# An item of each kind that says nothing of itself.
LEAST = """<cluster version="1"><master><network><node name="a"/></network></master>
<projection name="A" type="powerwall"/><projection name="B" type="wall"/><projection name="C" type="cave"/>
<projection name="D" type="plane"/><projection name="E" type="tile"/>
<display><window><viewport/></window></display></cluster>"""


def check_defaults(manual):
    with tempfile.NamedTemporaryFile("w", suffix=".zhpc") as file:
        file.write(LEAST)
        file.flush()
        values = said(manual, "zohpc", "get", "--defaults", file.name).splitlines()
    return findings_of_defaults(values, sections(manual.pages["file-format.md"]))


def findings_of_defaults(values, headings):
    """Of the hosts a missing value is the default of the page; of displays it is nothing at all, as the page says."""
    findings = []
    for line in values:
        path, _, value = line.partition("=")
        element, attribute = re.sub(r"\[[^\]]*\]", "", path).split("/")[-2:]
        cells = [row.strip("|").split("|") for row in headings.get(element, "").split("\n")
                 if row.startswith("|") and attribute in CODE.findall(row.split("|")[1])]
        shown = cells[0][2].strip().strip("`") if cells else ""
        if element in ("network", "node", "master", "cluster") and attribute not in ("name", "version"):
            if value and value != shown:
                findings.append("file-format.md: %s of %s is %s when it is missing" % (attribute, element, value))
            elif not value and re.fullmatch(r"`.*`|[0-9.]+", cells[0][2].strip() if cells else "0"):
                findings.append("file-format.md: %s of %s has no default" % (attribute, element))
        elif value and attribute not in ("name", "type", "version"):
            findings.append("file-format.md: %s of %s has a default, %s" % (attribute, element, value))
    return findings if values else ["zohpc get lists no defaults"]


# --- Fields ---

LABELLED = ("QLabel", "QCheckBox", "QGroupBox", "QPushButton", "QRadioButton")


def labels_of(form):
    """What a form writes beside and on its fields, without units; sentences are hints."""
    labels = set()
    for widget in form.iter("widget"):
        for one in widget.findall("property"):
            text = (one.findtext("string") or "").replace("&", "")
            if widget.get("class") in LABELLED and one.get("name") in ("text", "title") and not text.endswith("."):
                labels.add(re.sub(r"\s*[\[(].*[\])]$", "", text))
    return {label for label in labels if re.search(r"\w{2}", label)}


def check_fields(manual):
    findings = []
    forms = sorted(manual.root.glob("Plugins/Module/*/**/*.ui")) + sorted(manual.root.glob("Host/*.ui"))
    for form in forms:
        labels = labels_of(ElementTree.parse(form))
        findings += ["windows.md: nothing of \"%s\" (%s)" % (label, form.name)
                     for label in missing_labels(labels, manual.pages["windows.md"])]
    return findings if forms else ["no forms"]


def missing_labels(labels, page):
    return sorted(label for label in labels if not re.search(r"(?<!\w)%s(?!\w)" % re.escape(label), page, flags=re.IGNORECASE))


# --- Programs ---

def said(manual, *command):
    environment = dict(os.environ, LC_ALL="C.UTF-8", QT_QPA_PLATFORM="offscreen")
    program = str(pathlib.Path(manual.programs) / command[0])
    return subprocess.run([program, *command[1:]], env=environment, check=False, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, timeout=60).stdout.decode("utf-8")


def check_problems(manual):
    codes = [line.split()[0] for line in said(manual, "zohpc", "check", "--explain").splitlines()]
    headings = sections(manual.pages["problems.md"])
    findings = ["problems.md: no section of %s" % code for code in codes if code not in headings]
    return findings if codes else ["zohpc check --explain lists no code"]


def option_lines(help_text):
    """The options that a help lists, not those that its sentences name."""
    return sorted({name for line in help_text.splitlines() if re.match(r"  -", line)
                   for name in re.findall(r"(?<![\w-])--?[a-z][\w-]*", re.split(r"\s{2,}", line.strip())[0])})


def check_options(manual):
    headings = sections(manual.pages["command-line.md"])
    findings = []
    commands = said(manual, "zohpc", "--list-commands").splitlines()
    if not commands:
        findings.append("zohpc lists no commands")
    helps = {"zohpc " + name: said(manual, "zohpc", *name.split(), "--help") for name in commands}
    helps["zohost"] = said(manual, "zohost", "--help")
    helps["ZOKEClusterServer"] = said(manual, "ZOKEClusterServer", "--help")
    for program, text in helps.items():
        options = option_lines(text)
        if not options:
            findings.append("%s: its help lists no options" % program)
        findings += findings_of_options(program, options, headings)
    return findings


def findings_of_options(program, options, headings):
    if program not in headings:
        return ["command-line.md: no section \"%s\"" % program]
    words = set(re.findall(r"(?<![\w-])--?[a-z][\w-]*", " ".join(CODE.findall(headings[program]))))
    return ["command-line.md: %s has an option %s" % (program, option) for option in options
            if option not in words and option not in ("-h", "--help")]


# --- Messages ---

def pattern_of(form):
    """What a text looks like with something in its places."""
    places = re.split(r"%(?:L?\d+|n|[sd])", form)
    return re.compile("(?:.+)".join(re.escape(part) for part in places), flags=re.DOTALL)


def check_messages(manual):
    return findings_of_messages(manual_messages.of_sources(manual.root),
                                manual.pages["messages.md"] + manual.pages["starting.md"])


def findings_of_messages(forms, text):
    shown = [" ".join(code.split()) for code in CODE.findall(without_examples(text))]
    findings = []
    for form, path in forms.items():
        pattern = pattern_of(" ".join(form.split()))
        if form not in FRAGMENTS and not any(pattern.fullmatch(code) and len(code) < len(form) + 80 for code in shown):
            findings.append("messages.md, starting.md: nothing of \"%s\" (%s)" % (form, path))
    return findings if forms else ["the sources log nothing"]


# --- Pages ---

def links_of(text):
    return re.findall(r"!?\[[^\]]*\]\(([^)\s]+)\)", re.sub(r"`[^`]*`", "", without_examples(text)))


def anchors_of(text):
    return {slug(heading) for heading in re.findall(r"^#+ (.*)$", without_examples(text), flags=re.MULTILINE)}


def check_pages(manual):
    findings = []
    built = re.search(r"set\(pages\s([^)]*)\)", (manual.folder / "CMakeLists.txt").read_text(encoding="utf-8")).group(1)
    copied = re.search(r"set\(pictures\s([^)]*)\)", (manual.folder / "CMakeLists.txt").read_text(encoding="utf-8")).group(1)
    for name, text in manual.pages.items():
        if name[:-3] not in built.split():
            findings.append("%s: not among the pages of CMakeLists.txt" % name)
        if name != "index.md" and "(%s)" % name not in manual.pages["index.md"]:
            findings.append("%s: index.md does not lead to it" % name)
        findings += findings_of_links(manual, name, text)
    pictures = {path.name for path in (manual.folder / "pictures").glob("*")}
    shown = {link.split("/")[1] for text in manual.pages.values() for link in links_of(text) if link.startswith("pictures/")}
    findings += ["pictures/%s: on no page" % name for name in sorted(pictures - shown)]
    findings += ["pictures/%s: not among the pictures of CMakeLists.txt" % name
                 for name in sorted(pictures - {name.strip('"') for name in copied.split()})]
    return findings


def findings_of_links(manual, name, text):
    findings = []
    for link in links_of(text):
        if "://" in link:
            continue
        path, _, anchor = link.partition("#")
        target = (manual.folder / path) if path else manual.folder / name
        if not target.exists():
            findings.append("%s: %s is not there" % (name, link))
        elif anchor and anchor not in anchors_of(target.read_text(encoding="utf-8")):
            findings.append("%s: %s has no such heading" % (name, link))
    return findings


def check_keys(manual):
    """Pages that windows name for the key that opens the manual, in tables and as properties."""
    findings, count = [], 0
    for layer in ("Host", "Plugins"):
        for path in sorted((manual.root / layer).rglob("*.cpp")):
            text = path.read_text(encoding="utf-8")
            if "manualPage" not in text and "ManualPages" not in text:
                continue
            for page in named_pages(text):
                count += 1
                name, _, anchor = page.partition("#")
                file = next((folder / (name + ".md") for folder in (manual.folder, manual.root / "Docs")
                             if (folder / (name + ".md")).exists()), None)
                if not file or (anchor and anchor not in anchors_of(file.read_text(encoding="utf-8"))):
                    findings.append("%s: the manual has no page %s" % (path.relative_to(manual.root), page))
    return findings if count else ["no window names a page"]


def named_pages(text):
    rows = re.findall(r'\{"\w+", "([a-z-]+(?:#[a-z0-9-]+)?)"\}', text)
    return rows + re.findall(r'"manualPage", (?:\w+\()?"([a-z-]+(?:#[a-z0-9-]+)?)"', text)


class Page(html.parser.HTMLParser):
    """Links, pictures and anchors of a built page."""

    def __init__(self, text):
        super().__init__()
        self.links, self.anchors = [], set()
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        if re.fullmatch("h[1-6]", tag) and "id" in attributes:
            self.anchors.add(attributes["id"])
        if "href" in attributes or "src" in attributes:
            self.links.append(attributes.get("href") or attributes.get("src"))


def check_html(manual):
    folder = pathlib.Path(manual.html_folder)
    pages = {path.name: Page(path.read_text(encoding="utf-8")) for path in sorted(folder.glob("*.html"))}
    findings = ["%s: not built" % name for name in manual.pages if name.replace(".md", ".html") not in pages]
    for name, page in pages.items():
        for link in page.links:
            path, _, anchor = link.partition("#")
            target = path or name
            if "://" in link:
                continue
            # What is installed beside the manual comes from Data.
            file = manual.root / "Data" / target[6:] if target.startswith("../../") else folder / target
            if not file.exists():
                findings.append("%s: %s is not there" % (name, link))
            elif anchor and anchor not in pages[target].anchors:
                findings.append("%s: %s has no such anchor" % (name, link))
    words = (folder / "words.html").read_text(encoding="utf-8") if "words.md" in manual.pages else ""
    findings += ["words.html: nothing of %s" % attribute for attribute in missing_words(manual, words)]
    return findings


def missing_words(manual, words):
    """Attributes that the list of all words lacks."""
    if not words:
        return []
    schema = ElementTree.parse(manual.root / "Data/schema/zhpc.rng")
    attributes = {name for one in elements_of(schema).values() for name in one}
    return sorted(name for name in attributes if "<code>%s</code>" % name not in words)


# --- Examples ---

def examples_of(text):
    """Of each block that runs, its commands: (line, command, output). An output that ends with [N] is that of a command
    with the exit status N."""
    examples = []
    marked = None
    for number, line in enumerate(text.split("\n"), 1):
        if marked is None:
            if line == "```sh run":
                marked = True
        elif line == "```":
            marked = None
        elif line.startswith("$ "):
            examples.append([number, line[2:], []])
        elif line.startswith("> ") and examples and not examples[-1][2]:
            examples[-1][1] += "\n" + line[2:]
        else:
            examples[-1][2].append(line)
    return examples


def run_example(command, folder, programs):
    # Nothing of whoever runs this, and no nodes in common with other sessions of this machine.
    environment = {name: value for name, value in os.environ.items() if not name.startswith(("XDG_", "QT_", "ZO"))}
    environment.update(LC_ALL="C.UTF-8", HOME=str(folder), XDG_RUNTIME_DIR=str(folder), QT_QPA_PLATFORM="offscreen",
                       SOURCE_DATE_EPOCH="1800000000", PATH="%s:%s" % (programs, os.environ["PATH"]))
    done = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, check=False, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60)
    output = done.stdout.decode("utf-8").rstrip("\n").split("\n") if done.stdout.strip() else []
    return output + (["[%d]" % done.returncode] if done.returncode else [])


def is_shown(output, shown):
    """Whether output is what is shown, where "..." is any text in a line, and any lines where it stands alone."""
    pattern = "\n".join(r"(?:.*\n)*?.*" if line == "..." else re.escape(line).replace(r"\.\.\.", ".*") for line in shown)
    return re.fullmatch(pattern, "\n".join(output)) is not None


def findings_of_examples(name, text, folder, programs):
    findings = []
    for number, command, shown in examples_of(text):
        output = run_example(command, folder, programs)
        if not is_shown(output, shown):
            findings.append("%s:%d: %s\n    says\n%s" % (name, number, command, "\n".join(output)))
    return findings


def check_examples(manual):
    findings = []
    count = 0
    for name, text in manual.pages.items():
        folder = pathlib.Path(tempfile.mkdtemp(prefix="zo-manual-"))
        try:
            if (manual.folder / "examples").is_dir():
                shutil.copytree(manual.folder / "examples", folder / "examples")
            count += len(examples_of(text))
            findings += findings_of_examples(name, text, folder, manual.programs)
        finally:
            shutil.rmtree(folder)
    return findings if count else ["no example runs"]


# --- Glossary ---

def translations(manual):
    """{English: {German, ...}} of the texts of the programs."""
    result = {}
    for path in sorted((manual.root / "Data/translations").glob("*_de.ts")):
        for message in ElementTree.parse(path).iter("message"):
            result.setdefault(message.findtext("source"), set()).add(message.findtext("translation"))
    return result


def check_glossary(manual):
    return findings_of_glossary(translations(manual), manual.pages["glossary.md"])


def findings_of_glossary(texts, page):
    rows = [[cell.strip() for cell in row.strip("|").split("|")] for row in page.split("\n") if row.startswith("| ")][1:]
    findings = ["glossary.md: the windows say %s for \"%s\", not \"%s\"" % (" or ".join(sorted(texts[row[0]])), row[0], row[1])
                for row in rows if row[0] in texts and row[1] not in texts[row[0]]]
    names = [row[0].lower() for row in rows]
    if names != sorted(names):
        findings.append("glossary.md: \"%s\" is not in alphabetical order" %
                        next(name for name, wanted in zip(names, sorted(names)) if name != wanted))
    if not any(row[0] in texts for row in rows):
        findings.append("glossary.md: no word of the windows")
    return findings


CHECKS = {"format": check_format, "defaults": check_defaults, "fields": check_fields, "problems": check_problems, "options": check_options, "messages": check_messages,
          "pages": check_pages, "keys": check_keys, "glossary": check_glossary, "html": check_html, "examples": check_examples}


def main(arguments):
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("check", choices=CHECKS)
    parser.add_argument("root")
    parser.add_argument("--programs")
    parser.add_argument("--html")
    options = parser.parse_args(arguments)
    findings = CHECKS[options.check](Manual(options.root, options.programs, options.html))
    for finding in findings:
        print(finding)
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
