#!/usr/bin/env python3
"""Holds the order of the house: who may include whom, no include cycles, the size of functions and files.

  house.py includes [ROOT]   layers, rooms of the module, cycles between units (a header and its source are one unit)
  house.py headers ROOT FILE each header compiles by itself; FILE is the build's compile_commands.json
  house.py sizes [ROOT]      functions and files that are too long
  house.py words [ROOT]      what must not be written
  house.py all [ROOT]        includes, sizes and words

Each finding is a line "FILE:LINE: what, and what to do". Findings that are still allowed stand in known.txt beside this
file, one key a line; the list may only shrink: an entry that is no longer found is a finding, too.
"""

import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

# Who may include whom. What is not named here has no place in the house.
LAYERS = {
    "Kernel": set(),
    "Plugins": {"Kernel"},
    "Server": {"Kernel", "Plugins"},
    "Host": {"Kernel", "Server"},
    "Tools": {"Kernel", "Plugins"},
    "Examples": {"Kernel"},
    "Benchmarks": {"Kernel", "Plugins", "Server", "Host", "Tools"},
    "Tests": {"Kernel", "Plugins", "Server", "Host", "Tools"},
}
PRODUCTION = ("Kernel", "Plugins", "Server", "Host", "Tools")
# Rooms of the servers, "" for the program itself, and what each of them knows. A host knows the first alone; nodes
# start without widgets, so that only what reads documents knows kernel and module.
SERVER_ROOMS = {
    "Protocol": set(),
    "Show": {"Protocol"},
    "Setup": {"Protocol", "Show", "Kernel", "Plugins"},
    "Mpi": {"Protocol"},
    "": {"Protocol", "Show", "Mpi"},
}
QT_DIFFERENCES = "Kernel/Platform/zoQt.h"  # which stands alone
MODULE = "Plugins/Module/HPC"
# Modules beside it: they know the rooms of its core, as far as these are installed for authors of modules, and no
# widgets of it. That their headers are installed shows tst_zoSdk.
GUESTS = {
    "Plugins/Module/Assistant": {"Base", "Hosts", "Displays", "Checks", "Render", "Preview", "Report", "Document", "Walls", "Survey"},
}
ROOMS = {
    "Base": set(),
    "Widgets": {"Base"},
    "Hosts": {"Base", "Widgets"},
    "Displays": {"Base"},
    "Checks": {"Base", "Hosts", "Displays"},
    "Render": {"Base", "Hosts", "Displays", "Checks"},
    "Engines": {"Base", "Hosts", "Displays", "Checks", "Render"},
    "Report": {"Base", "Hosts", "Displays", "Checks", "Render", "Preview"},
    "Document": {"Base", "Hosts", "Displays"},
    "Walls": {"Base", "Hosts", "Displays", "Checks", "Document"},
    "Survey": {"Base", "Displays", "Document"},
    "Legacy": {"Base", "Hosts", "Displays", "Document"},
    "Preview": {"Base", "Widgets", "Hosts", "Displays", "Checks"},
    "DisplayEditor": {"Base", "Widgets", "Hosts", "Displays", "Checks", "Preview"},
    "Module": {"Base", "Widgets", "Hosts", "Displays", "Checks", "Render", "Document", "Legacy", "Preview", "Report", "DisplayEditor"},
}
# Long files need a reason beyond these numbers, and none helps a function beyond the last.
FILE_LINES = 700
TEST_FILE_LINES = 1200
FUNCTION_LINES = 60
FUNCTION_LINES_EVER = 80


class Finding:
    def __init__(self, key, text):
        self.key = key  # what known.txt names; without line numbers
        self.text = text


class House:
    def __init__(self, root):
        self.root = pathlib.Path(root).resolve()
        self.files = {}  # path below the root: text
        for layer in LAYERS:
            for folder, _, names in os.walk(self.root / layer):
                for name in sorted(names):
                    if name.endswith((".h", ".cpp")):
                        path = pathlib.Path(folder, name)
                        self.files[path.relative_to(self.root).as_posix()] = path.read_text()
        self.headers = {}  # name: path below the root
        for path in sorted(self.files):
            if path.endswith(".h"):
                self.headers.setdefault(pathlib.PurePath(path).name, path)

    def production(self):
        return {path: text for path, text in self.files.items() if path.split("/")[0] in PRODUCTION}


def unit_of(path):
    return path.rsplit(".", 1)[0]


def room_of(path):
    """The room of a file of the module, "" for one that stands outside of all."""
    rest = path[len(MODULE) + 1:]
    return rest.split("/")[0] if "/" in rest else ""


def includes_of(path, text, headers):
    """The headers of the house that a file names: (line, path). A form's generated header is part of its unit."""
    result = []
    for number, line in enumerate(text.split("\n"), 1):
        match = re.match(r'\s*#\s*include\s*[<"]([^>"]+)[>"]', line)
        if not match:
            continue
        name = match.group(1).split("/")[-1]
        if name.startswith("ui_"):
            name = name[3:]
        if name in headers:
            result.append((number, headers[name]))
    return result


def check_places(house):
    findings = []
    seen = {}
    for path in sorted(house.files):
        if path.startswith(MODULE + "/") and room_of(path) not in ROOMS:
            findings.append(Finding(f"place {path}", f"{path}:1: stands in no room; the rooms are {', '.join(ROOMS)}"))
        name = pathlib.PurePath(path).name
        if path.endswith(".h"):
            if name in seen:
                findings.append(Finding(f"name {name}", f"{path}:1: {seen[name]} has the same name"))
            seen.setdefault(name, path)
    for folder in sorted(p for p in house.root.iterdir() if p.is_dir() and not p.name.startswith(".")):
        if folder.name not in LAYERS and folder.name != "build" and any(folder.rglob("*.cpp")):
            findings.append(Finding(f"layer {folder.name}", f"{folder.name}: has sources but no row in LAYERS"))
    for room in ROOMS:
        if not (house.root / MODULE / room).is_dir():
            findings.append(Finding(f"room {room}", f"{MODULE}/{room}: has a row in ROOMS but no folder"))
    return findings


def module_of(path):
    """The folder of the module that a file is part of, "" for a file of none."""
    return "/".join(path.split("/")[:3]) if path.startswith("Plugins/Module/") else ""


def server_room_of(path):
    return path.split("/")[1] if path.count("/") > 1 else ""


def server_allows(path, header):
    """Whether the rooms of the servers let a file know a header."""
    to = header.split("/")[0]
    if header == QT_DIFFERENCES:
        return True
    if path.startswith("Server/"):
        room = server_room_of(path)
        other = server_room_of(header) if to == "Server" else to
        return other == room or other in SERVER_ROOMS.get(room, set())
    return not (path.startswith("Host/") and to == "Server") or server_room_of(header) == "Protocol"


def check_arrows(house):
    findings = []
    for path, text in sorted(house.files.items()):
        layer = path.split("/")[0]
        for line, header in includes_of(path, text, house.headers):
            to = header.split("/")[0]
            if to != layer and to not in LAYERS[layer]:
                findings.append(Finding(f"arrow {unit_of(path)} {unit_of(header)}",
                                        f"{path}:{line}: {layer} must not know {header}"))
            elif not server_allows(path, header):
                findings.append(Finding(f"arrow {unit_of(path)} {unit_of(header)}",
                                        f"{path}:{line}: must not know {header}"))
            own = module_of(path)
            if own != module_of(header) and module_of(header) and layer == "Plugins":
                if room_of(header) not in GUESTS.get(own, set()):
                    findings.append(Finding(f"arrow {unit_of(path)} {unit_of(header)}",
                                            f"{path}:{line}: module {own} must not know {header}"))
            if path.startswith(MODULE + "/") and header.startswith(MODULE + "/"):
                room, other = room_of(path), room_of(header)
                if other != room and other not in ROOMS.get(room, set()):
                    findings.append(Finding(f"arrow {unit_of(path)} {unit_of(header)}",
                                            f"{path}:{line}: room {room} must not know {other} ({header})"))
    return findings


def graph_of(house):
    """Unit: {unit it includes: the first place where it does}."""
    graph = {}
    for path, text in sorted(house.files.items()):
        for line, header in includes_of(path, text, house.headers):
            arrows = graph.setdefault(unit_of(path), {})
            if unit_of(header) != unit_of(path):
                arrows.setdefault(unit_of(header), f"{path}:{line}")
    return graph


def knots_of(graph):
    """Sets of units each of which reaches all others of its set."""
    index, low, stack, on_stack, knots = {}, {}, [], set(), []

    def visit(unit):
        index[unit] = low[unit] = len(index)
        stack.append(unit)
        on_stack.add(unit)
        for other in graph.get(unit, {}):
            if other not in index:
                visit(other)
                low[unit] = min(low[unit], low[other])
            elif other in on_stack:
                low[unit] = min(low[unit], index[other])
        if low[unit] == index[unit]:
            knot = set()
            while unit not in knot:
                other = stack.pop()
                on_stack.discard(other)
                knot.add(other)
            if len(knot) > 1:
                knots.append(knot)

    sys.setrecursionlimit(10000)
    for unit in sorted(graph):
        if unit not in index:
            visit(unit)
    return knots


def shortest_cycle(graph, knot, start):
    before, queue = {start: None}, [start]
    for unit in queue:
        for other in sorted(graph.get(unit, {})):
            if other == start:
                way = [start]
                while unit != start:
                    way.insert(1, unit)
                    unit = before[unit]
                return way
            if other in knot and other not in before:
                before[other] = unit
                queue.append(other)
    return []


def check_cycles(house):
    graph = graph_of(house)
    findings = []
    for knot in knots_of(graph):
        for unit in sorted(knot):
            way = shortest_cycle(graph, knot, unit)
            steps = "".join(f"\n    {graph[a][b]}: {a} includes {b}" for a, b in zip(way, way[1:] + way[:1]))
            findings.append(Finding(f"cycle {unit}", f"{unit}: is in an include cycle of {len(way)} units:{steps}"))
    return findings


def check_settings(house):
    """The lint settings name the folders that there are."""
    settings = house.root / ".clang-tidy"
    if not settings.exists():
        return []
    match = re.search(r"^HeaderFilterRegex: '/\((.*)\)/'$", settings.read_text(), re.M)
    named = set(match.group(1).split("|")) if match else set()
    return [Finding(f"settings {folder}", f".clang-tidy: HeaderFilterRegex and LAYERS differ in {folder}")
            for folder in sorted(named ^ set(LAYERS))]


def check_includes(house):
    return check_settings(house) + check_places(house) + check_arrows(house) + check_cycles(house)


# ---- Headers

def first_include(text):
    match = re.search(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', text, re.M)
    return match.group(1).split("/")[-1] if match else ""


def check_headers(house, commands_file):
    """A source that names its own header first compiles it by itself; the other headers are compiled here."""
    findings, alone = [], []
    sources = house.files
    for path, text in sorted(house.production().items()):
        name = pathlib.PurePath(path).name
        if path.endswith(".h") and unit_of(path) + ".cpp" not in sources:
            alone.append(path)
        if path.endswith(".cpp") and unit_of(path) + ".h" in sources:
            header = name[:-4] + ".h"
            if first_include(text) != header:
                findings.append(Finding(f"first {path}", f"{path}:1: {header} must be the first include: "
                                                         "so the header is known to compile by itself"))
        if path.endswith(".h") and "#pragma once" not in text:
            findings.append(Finding(f"once {path}", f"{path}:1: has no #pragma once"))
    commands = {}
    for entry in json.loads(pathlib.Path(commands_file).read_text()):
        source = pathlib.Path(entry["file"])
        if source.is_relative_to(house.root):
            commands.setdefault(source.relative_to(house.root).parts[0], []).append((source, entry))

    def compile_alone(path):
        # With the flags of a source beside it, or of one of its layer.
        candidates = commands.get(path.split("/")[0], [])
        near = [c for c in candidates if c[0].parent == (house.root / path).parent] or candidates
        if not near:
            return Finding(f"alone {path}", f"{path}:1: no compile command is known for its folder")
        entry = near[0][1]
        words = shlex.split(entry["command"])
        keep = []
        for i, word in enumerate(words[1:], 1):
            if word.startswith(("-D", "-I", "-std=", "-W", "-f")) and not word.startswith(("-fsanitize", "-MF", "-Wl,")):
                keep.append(word)
            elif word in ("-isystem", "-include"):
                keep += [word, words[i + 1]]
        compiler = [word for word in words[:3] if not word.startswith("-") and not word.endswith("ccache")][0]
        with tempfile.TemporaryDirectory() as folder:
            probe = pathlib.Path(folder, "probe.cpp")
            # Twice: the second one must do nothing.
            probe.write_text(f'#include "{house.root / path}"\n#include "{house.root / path}"\n')
            done = subprocess.run([compiler, *keep, "-fsyntax-only", str(probe)], cwd=entry["directory"],
                                  capture_output=True, text=True)
        if done.returncode != 0:
            return Finding(f"alone {path}", f"{path}:1: does not compile by itself:\n{done.stderr.strip()}")
        return None

    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        findings += [finding for finding in pool.map(compile_alone, alone) if finding]
    return findings


# ---- Sizes

def without_texts(text):
    """Comments, texts and preprocessor lines blanked out, character by character; line breaks stay."""
    def blank(match):
        return re.sub(r"[^\n]", " ", match.group(0))

    pattern = (r'R"(\w*)\((?:.|\n)*?\)\1"|//(?:[^\n\\]|\\.|\\\n)*|/\*(?:.|\n)*?\*/|"(?:[^"\\\n]|\\.)*"'
               r"|(?<![0-9a-fA-F])'(?:[^'\\\n]|\\.)+'|^[ \t]*#(?:[^\n\\]|\\\n|\\.)*")
    return re.sub(pattern, blank, text, flags=re.M)


def functions_of(text):
    """(name, first line, last line) of each function with a body. Lambdas belong to the function around them."""
    code = without_texts(text)

    def line_of(offset):
        return code.count("\n", 0, offset) + 1

    result, stack = [], []
    head_start = 0  # where the statement before the next brace begins
    for i, character in enumerate(code):
        if character == ";" and all(scope == "scope" for scope, *_ in stack):
            head_start = i + 1
        elif character == "{":
            inside = [scope for scope, *_ in stack]
            head = code[head_start:i]
            if "function" in inside or "values" in inside:
                stack.append(("values", None, 0))
            elif re.search(r"[\w>\])]\Z", head):
                stack.append(("values", None, 0))  # m_width{1} in a list of initializers
            else:
                words = re.sub(r"\b(public|private|protected|signals|Q_SIGNALS)( slots)?\s*:(?!:)|\b[A-Z_]{4,}\([^()]*\)\s*$"
                               r"|\bQ_[A-Z_]+\b(\([^()]*\))?", " ", head).strip()
                words = re.sub(r"^template\s*<[^{}]*?>\s*(?=\w)", "", words)
                kind = re.match(r"(namespace|class|struct|enum|union|extern)\b", words)
                if kind and not (kind.group(1) in ("class", "struct", "enum") and re.search(r"\)\s*(const)?$", words)):
                    stack.append(("values" if kind.group(1) == "enum" else "scope", None, 0))
                elif "(" in words and "=" not in re.sub(r"operator\s*[^\w\s(]+", "", words).split("(")[0]:
                    name = re.search(r"((?:[\w~]+(?:<[^<>]*>)?::)*(?:operator\s*\S+?|~?\w+))\s*\(", words)
                    first = head_start + len(head) - len(head.lstrip())
                    # A label such as "public:" is no part of the function.
                    label = re.match(r"(?:\s*\b(?:public|private|protected|signals)(?: slots)?\s*:(?!:)|\s*Q_\w+)+\s*",
                                     code[first:i])
                    first += label.end() if label else 0
                    stack.append(("function", name.group(1) if name else "?", line_of(first)))
                else:
                    stack.append(("values", None, 0))
            if stack[-1][0] == "scope":
                head_start = i + 1
        elif character == "}" and stack:
            kind, name, first = stack.pop()
            if kind == "function":
                result.append((name, first, line_of(i)))
            if kind != "values":
                head_start = i + 1
    return result


def comment_above(lines, first):
    """The comment right above a line that counts from one."""
    result = []
    number = first - 2
    while number >= 0 and lines[number].strip().startswith("//"):
        result.insert(0, lines[number].strip())
        number -= 1
    return "\n".join(result)


def check_sizes(house):
    findings = []
    for path, text in sorted(house.files.items()):
        lines = text.split("\n")
        count = text.count("\n")
        limit = FILE_LINES if path.split("/")[0] in PRODUCTION else TEST_FILE_LINES
        if count > limit and not any(line.startswith("// table: ") for line in lines[:40]):
            findings.append(Finding(f"file {path}", f"{path}:1: has {count} lines, more than {limit}; give its second "
                                                    'job a file (a table says why in a line "// table: ...")'))
        if path.split("/")[0] not in PRODUCTION:
            continue
        for name, first, last in functions_of(text):
            length = last - first + 1
            if length > FUNCTION_LINES_EVER:
                findings.append(Finding(f"function {path} {name}", f"{path}:{first}: {name} has {length} lines, more than "
                                                                   f"{FUNCTION_LINES_EVER}; name its steps"))
            elif length > FUNCTION_LINES and "// long: " not in comment_above(lines, first):
                findings.append(Finding(f"function {path} {name}",
                                        f"{path}:{first}: {name} has {length} lines, more than {FUNCTION_LINES}; name its "
                                        'steps, or say above it why not: "// long: ..."'))
    return findings


# ---- Words

def check_words(house):
    findings = []
    for path, text in sorted(house.production().items()):
        for number, line in enumerate(text.split("\n"), 1):
            if re.search(r'constexpr QLatin1String \w+\s*[({]\s*"', line):
                findings.append(Finding(f"word {path}", f"{path}:{number}: clang cannot count this at compile time: const "
                                                        "instead of constexpr, or word() of zoClusterTags.h"))
    for path, text in sorted(house.files.items()):
        if not path.startswith("Plugins/") or path.endswith("/zoNoStringLiteral.h"):
            continue
        for number, line in enumerate(without_comments(text).split("\n"), 1):
            if "QStringLiteral" in line:
                findings.append(Finding(f"word {path}", f"{path}:{number}: zoText() instead of QStringLiteral: the text "
                                                        "must outlive the unloading of the module"))
    return findings


def without_comments(text):
    return re.sub(r"//[^\n]*|/\*(?:.|\n)*?\*/", lambda match: re.sub(r"[^\n]", " ", match.group(0)), text)


CHECKS = {
    "includes": (check_includes, ("place", "name", "layer", "room", "arrow", "cycle", "settings")),
    "headers": (check_headers, ("first", "once", "alone")),
    "sizes": (check_sizes, ("file", "function")),
    "words": (check_words, ("word",)),
}
CHECKS["all"] = (lambda house: check_includes(house) + check_sizes(house) + check_words(house),
                 CHECKS["includes"][1] + CHECKS["sizes"][1] + CHECKS["words"][1])


def still_allowed(known_file, kinds):
    """Entries of known.txt of the given kinds."""
    if not known_file.exists():
        return set()
    entries = {line.strip() for line in known_file.read_text().split("\n")}
    return {entry for entry in entries if entry and not entry.startswith("#") and entry.split()[0] in kinds}


def judge(findings, allowed):
    """The texts to print: what is found and not allowed, and what is allowed and no longer found."""
    found = {finding.key for finding in findings}
    return ([finding.text for finding in findings if finding.key not in allowed] +
            [f"known.txt: is no longer found, take the line out: {entry}" for entry in sorted(allowed - found)])


def main(arguments):
    if not arguments or arguments[0] not in CHECKS:
        print(__doc__, file=sys.stderr)
        return 2
    here = pathlib.Path(__file__).resolve().parent
    root = pathlib.Path(arguments[1]) if len(arguments) > 1 else here.parent.parent
    check, kinds = CHECKS[arguments[0]]
    house = House(root)
    if not house.production():
        print(f"{root}: has no sources", file=sys.stderr)
        return 1
    if check is check_headers and (len(arguments) < 3 or not pathlib.Path(arguments[2]).is_file()):
        print("house headers: needs compile_commands.json; configure with a preset, which has cmake write it",
              file=sys.stderr)
        return 1
    findings = check(house, *arguments[2:])
    complaints = judge(findings, still_allowed(root / "Tests/House/known.txt", kinds))
    for text in complaints:
        print(text)
    allowed = len(findings) - sum(1 for text in complaints if not text.startswith("known.txt"))
    print(f"house {arguments[0]}: {len(house.files)} files, {len(complaints)} findings"
          + (f", {allowed} still allowed by known.txt" if allowed else ""))
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
