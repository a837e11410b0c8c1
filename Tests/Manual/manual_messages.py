"""The texts that the sources tell people in the log, and of a start that fails."""

import pathlib
import re

LAYERS = ("Kernel", "Plugins", "Host")
# Where all texts are reasons of a start or of a session, whoever logs them.
REASONS = ("Host/Cluster/*.cpp", "Host/zoLocalClusterService.cpp", "Server/Setup/*.cpp", "Server/Show/zoNodeShow.cpp",
           "Server/Show/zoWallScreens.cpp", "Server/Show/zoGL*.cpp", "Kernel/Platform/zoFile*.cpp",
           "Plugins/Module/HPC/Document/zoHPCDocumentText.cpp", "Plugins/Module/HPC/Module/zoHPC.cpp",
           "Host/zoHostSession.cpp", "Host/zoHostApplication.cpp",
           "Host/zoLoopbackSpeedTest.cpp", "Host/zoModule*.cpp", "Plugins/Module/HPC/Engines/zoExportNotes.cpp")
# What sources log that build a text before: how such texts begin.
BUILT = {"Host/zoHostFileGuard.cpp": "%1 holds "}
# The log itself.
LOGS = ("Kernel/Platform/zoLog.cpp", "Host/zoHostLog.cpp")
# Where programs of sessions give reasons in English alone.
LITERALS = ("Server/zoHead.cpp", "Server/zoMpiGroup.cpp", "Server/Protocol/zoLauncher.cpp",
            "Server/Protocol/zoMpirunCommand.cpp", "Server/Protocol/zoServerMessageReader.cpp")

STRING = r'"(?:[^"\\]|\\.)*"'
STRINGS = STRING + r"(?:\s*" + STRING + ")*"
TRANSLATED = re.compile(r"(?:\btr\(\s*|\b(?:translate|QT_TRANSLATE_NOOP)\(\s*" + STRING + r"\s*,\s*)(" + STRINGS + ")")
LITERAL = re.compile(r"\bQStringLiteral\(\s*(" + STRINGS + ")")
FORMAT = re.compile(r"\A\(\s*(" + STRINGS + ")")


def joined(strings):
    """What adjacent literals are to a compiler."""
    text = "".join(literal[1:-1] for literal in re.findall(STRING, strings))
    return text.replace('\\"', '"').replace("\\n", "\n").replace("\\\\", "\\")


def without_comments(text):
    return re.sub(r"(" + STRING + r")|//[^\n]*|/\*.*?\*/", lambda match: match.group(1) or " ", text, flags=re.DOTALL)


def arguments(text, start):
    """The parentheses that begin at `start`, with what is in them."""
    depth = 0
    for match in re.compile(STRING + r"|[()]").finditer(text, start):
        depth += {"(": 1, ")": -1}.get(match.group(), 0)
        if depth == 0:
            return text[start:match.end()]
    return text[start:]


def of_log(text, others=None):
    """The forms of what a source logs: translated texts, and formats that are written there. What it logs without telling
    its form goes into `others`."""
    forms = []
    for match in re.finditer(r"\b(?:zoLog::(?:info|error)|zoHostLog::warn)(?=\()", text):
        call = arguments(text, match.end())
        found = [joined(strings) for strings in TRANSLATED.findall(call)]
        literal = FORMAT.match(call)
        if not found and literal and joined(literal.group(1)) != "%s":
            found = [joined(literal.group(1))]
        if not found and others is not None:
            others.append(" ".join(call.split()))
        forms += found
    return forms


def of_sources(root):
    """All forms, each with the first source that has it."""
    forms = {}
    root = pathlib.Path(root)
    for layer in LAYERS:
        for path in sorted((root / layer).rglob("*.cpp")):
            name = path.relative_to(root).as_posix()
            others = []
            text = without_comments(path.read_text(encoding="utf-8"))
            for form in of_log(text, others):
                forms.setdefault(form, name)
            if name in BUILT:
                built = [joined(strings) for strings in TRANSLATED.findall(text)]
                forms.update((form, name) for form in built if form.startswith(BUILT[name]) and "is not" in form)
            elif others and name not in LOGS and not any(path.match(pattern) for pattern in REASONS):
                forms.setdefault("zoLog " + others[0], name)
    for pattern in REASONS:
        for path in sorted(root.glob(pattern)):
            for strings in TRANSLATED.findall(without_comments(path.read_text(encoding="utf-8"))):
                forms.setdefault(joined(strings), path.relative_to(root).as_posix())
    for name in LITERALS:
        for strings in LITERAL.findall(without_comments((root / name).read_text(encoding="utf-8"))):
            if joined(strings).count(" ") > 1:
                forms.setdefault(joined(strings), name)
    return forms
