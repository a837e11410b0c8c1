#!/usr/bin/env python3
"""Generates and checks the corpus of legacy configurations in Tests/Data/Legacy.

The files whose names begin with "generated-" come from here; the others are written by hand, documents included.
The documents are made by the conversion below, which takes every rule of the legacy format literally, entry by
entry and section by section, and shares nothing with the program's converter.

  dev/make-legacy-corpus.py            writes the generated files anew
  dev/make-legacy-corpus.py --check    converts all files and compares with the documents beside them
"""

import argparse
import base64
import ctypes
import math
import pathlib
import random
import re
import sys
import xml.etree.ElementTree as ElementTree
from xml.sax.saxutils import escape, quoteattr

FOLDER = pathlib.Path(__file__).resolve().parent.parent / "Tests" / "Data" / "Legacy"

RUNTIME = ctypes.CDLL(None)
RUNTIME.strtod.restype = ctypes.c_double
RUNTIME.strtod.argtypes = [ctypes.c_char_p, ctypes.c_void_p]
RUNTIME.strtof.restype = ctypes.c_float
RUNTIME.strtof.argtypes = [ctypes.c_char_p, ctypes.c_void_p]


class Element:
    def __init__(self, tag, *attributes):
        self.tag = tag
        self.attributes = dict(attributes)
        self.children = []

    def append(self, tag, *attributes):
        self.children.append(Element(tag, *attributes))
        return self.children[-1]

    def text(self, depth=0):
        start = " " * depth + "<" + self.tag
        for name, value in self.attributes.items():
            start += f" {name}={quoteattr(str(value), {chr(34): '&quot;'})}"
        if not self.children:
            return start + "/>\n"
        inner = "".join(child.text(depth + 1) for child in self.children)
        return f"{start}>\n{inner}{' ' * depth}</{self.tag}>\n"


def real(value):
    """Seventeen digits say a double exactly."""
    return "nan" if math.isnan(value) else "%.17g" % (value + 0.0)


def section(text, separator, first, last=None):
    parts = text.split(separator)
    return separator.join(parts[first:] if last is None else parts[first:last + 1])


def to_int(text):
    match = re.fullmatch(r"\s*([+-]?[0-9]+)\s*", text)
    value = int(match.group(1)) if match else 0
    return value if -2**31 <= value < 2**31 else 0


def to_double(text):
    match = re.fullmatch(r"\s*([+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)?)\s*", text)
    return float(match.group(1)) if match else 0.0


def fmod(value, size):
    return math.nan if size == 0 or math.isinf(value) else math.fmod(value, size)


def point(text, number):
    tokens = [token for token in re.split("[ \t\n,]", text) if token]
    values = [number(token.encode("latin-1", "replace"), None) for token in tokens[:3]]
    return values + [0.0] * (3 - len(values))


class Reference:
    def __init__(self, text):
        self.parameters = {}
        try:
            for key in ElementTree.fromstring(text).iter("key"):
                value = "".join(part for part in key.itertext() if part.strip())
                if key.get("type") == "QString":
                    value = re.sub("[^A-Za-z0-9+/]", "", value)
                    value = base64.b64decode(value + "=" * (-len(value) % 4))
                    value = value.split(b"\0")[0].decode("utf-8")
                self.parameters[key.get("name", "")] = value
        except ElementTree.ParseError:
            self.parameters = {}

        self.names, self.xs, self.ys = [], [], []
        self.cluster = Element("cluster")
        self.master = self.cluster.append("master")
        self.network = self.master.append("network")
        self.display = self.cluster.append("display")
        mode = self.mode()
        self.options()
        self.hosts(mode)
        if mode == "wall":
            self.wall()
        elif mode == "custom":
            self.custom()
        elif mode == "old":
            self.old()

    def get(self, key, default):
        return self.parameters.get(key, default)

    def mode(self):
        kind = self.get("zoClusterProjectionType", "")
        if kind in ("Custom", "Raytracing", "Powerwall"):
            return {"Custom": "custom", "Raytracing": "raytracing", "Powerwall": "wall"}[kind]
        if self.get("zoClusterHosts", "") != "":
            return "old"
        return "wall" if self.get("zoClusterPWEnable", "") == "1" else "custom"

    def pipes(self):
        found = []
        while f"zoClusterPipe{len(found)}" in self.parameters:
            found.append(self.parameters[f"zoClusterPipe{len(found)}"])
        return found

    def options(self):
        master = self.master.attributes
        level = self.get("zoClusterNetworkCompression", "0")
        if level in ("1", "2"):
            master["scenecompression"] = {"1": "fast", "2": "best"}[level]
        if level in ("1", "2", "3"):
            master["imagecompression"] = {"1": "lossless", "2": "lossyfast", "3": "lossybest"}[level]
        sampling = self.get("zoClusterSortFirstStillFrameSupersamplingFactor", "0")
        if sampling != "0":
            master["stillframesupersampling"] = sampling
        self.display.attributes["eyeseparation"] = self.get("zoClusterEyeSeparation", "65")
        self.distance = to_double(self.get("zoClusterZeroParallax", "1500"))
        self.blending = self.get("zoEdgeBlendingEnabled", "0") == "1"

    def hosts(self, mode):
        if mode == "raytracing":
            self.add_hosts(self.network, self.get("zoClusterSortFirstServers", ""))
        elif mode == "wall":
            self.add_hosts(self.network, self.get("zoClusterPWServers", ""))
        elif mode == "custom":
            for pipe in self.pipes():
                self.add_hosts(self.network, section(pipe, " ", 0, 0).replace('"', ""))
        else:
            hosts = self.get("zoClusterHosts", "")
            for i in range(hosts.count(",") + 1):
                host = section(section(hosts, ",", i, i), " ", 0, 0).replace('"', "")
                if host == "":  # keeps its place among the windows
                    self.add_host(self.network, "", 0, 0)
                else:
                    self.add_hosts(self.network, host)
        for name in self.names:
            if self.names.count(name) != 1:
                self.names = [f"{name} {i + 1}" for i in range(len(self.names))]
                break

    def add_host(self, parent, name, x, y):
        self.names.append(name)
        self.xs.append(x)
        self.ys.append(y)
        parent.append("node", ("name", name))

    def add_hosts(self, parent, hosts):
        if "forwards=" in hosts:
            name = section(hosts, "[", 0, 0)
            node = parent.append("node", ("name", name))
            self.names.append(name)
            network = node.append("network")
            inner = section(hosts, "forwards=", 1, 1).replace("]", "").replace("|", " ")
            self.add_hosts(network, inner)
            if self.get("zoClusterInfiniband", "0") == "1":
                network.attributes["network"] = "infiniband"
            return
        for entry in [part for part in hosts.split(" ") if part]:
            text = section(entry, "[", 1, 1)[:-1]
            values = {}
            for i in range(text.count(",") + 1):
                item = section(text, ",", i, i)
                values[section(item, "=", 0, 0)] = section(item, "=", 1, 1)
            self.add_host(parent, section(entry, "[", 0, 0), to_int(values.get("xpos", "0")),
                          to_int(values.get("ypos", "0")))

    def add_plane(self, name, points):
        plane = self.cluster.append("projection", ("name", name), ("type", "plane"))
        for number, values in enumerate(points, 1):
            for axis, value in zip("xyz", values):
                plane.attributes[f"{axis}{number}"] = real(value)

    def add_window(self, node, x, y, width, height):
        return self.display.append("window", ("node", node), ("screen", -2), ("x", x), ("y", y), ("width", width),
                                   ("height", height), ("fullscreen", "false"))

    @staticmethod
    def add_viewport(window, projection, x1, y1, x2, y2, eye):
        window.append("viewport", ("projection", projection), ("x1", real(x1)), ("y1", real(y1)), ("x2", real(x2)),
                      ("y2", real(y2)), ("eye", eye), ("rotate", 0), ("position", "custom"))

    def wall(self):
        number = lambda key, default: to_int(self.get("zoClusterPW" + key, default))
        width, height = number("XRes", "1280"), number("YRes", "1024")
        rows, columns = number("Rows", "1"), number("Cols", "1")
        overlap = number("XOverlap", "0")
        self.cluster.append("projection", ("name", "wall"), ("type", "wall"), ("tilewidth", width),
                            ("tileheight", height), ("offsetx", number("XOffset", "0")),
                            ("offsety", number("YOffset", "0")), ("rows", rows), ("columns", columns),
                            ("edgeblending", "true" if self.blending else "false"), ("overlapx", overlap),
                            ("overlapy", overlap), ("distance", real(self.distance)))
        code = self.get("zoClusterPWStereoMode", "0")
        at = lambda values, index, default: values[index] if index < len(values) else default
        k = 0
        for row in range(1, rows + 1):
            for column in range(1, columns + 1):
                for w in range(2 if code == "1" else 1):
                    window = self.add_window(at(self.names, k, ""), at(self.xs, k, 0), at(self.ys, k, 0), width, height)
                    k += 1
                    for v in range(2 if code == "3" else 1):
                        eye, right = "mono", width
                        if code == "1":
                            eye = ("left", "right")[w]
                        elif code == "2":
                            eye, right = "stereo", math.trunc(width / 2)
                        elif code == "3":
                            eye = ("left", "right")[v]
                        self.add_viewport(window, f"wall row:{row} col:{column}", 0, 0, right, height, eye)

    def custom(self):
        planes = {}
        for i, pipe in enumerate(self.pipes()):
            field = lambda n: section(pipe, " ", n, n)
            width, height = to_int(field(3)), to_int(field(4))
            window = self.add_window(self.names[i] if i < len(self.names) else "", to_int(field(1)), to_int(field(2)),
                                     width, height)
            for descriptor in section(pipe, " ", 5).split("|"):
                part = lambda n, last=None: section(descriptor, " ", n, n if last is None else last)
                flag = section(part(6), ";", 0, 0)
                eye = "left" if flag == "1" else "right"
                if part(0).replace('"', "").lower() == "stereo":
                    if flag == "1":
                        continue
                    eye = "stereo"
                points = [point(part(n, n + 2), RUNTIME.strtod) for n in (7, 10, 13)]
                key = "".join("%g" % (value + 0.0) for corner in points for value in corner)
                if key not in planes:
                    planes[key] = f"projection{len(planes) + 1}"
                    self.add_plane(planes[key], points)
                self.add_viewport(window, planes[key], fmod(to_double(part(2)), width),
                                  fmod(to_double(part(3)), height), fmod(to_double(part(4)) - 1, width) + 1,
                                  fmod(to_double(part(5)) - 1, height) + 1, eye)

    def old(self):
        hosts = self.get("zoClusterHosts", "")
        eyes = ["mono"]
        if self.get("zoClusterActiveStereo", "0") == "1":
            eyes = ["stereo"]
        elif self.get("zoClusterPassiveStereo", "0") == "1":
            eyes = ["left", "right"]
        for i in range(hosts.count(",") + 1):
            field = lambda n, last=None: section(section(hosts, ",", i, i), " ", n, n if last is None else last)
            name = f"projection{i + 1}"
            self.add_plane(name, [point(field(n, n + 2), RUNTIME.strtof) for n in (9, 12, 15)])
            window = self.add_window(self.names[i] if i < len(self.names) else "", to_int(field(1)), to_int(field(2)),
                                     to_int(field(3)), to_int(field(4)))
            for eye in eyes:
                self.add_viewport(window, name, *[to_double(field(n)) for n in (5, 6, 7, 8)], eye)


def legacy_text(rng, parameters):
    """Keys in any order, at any depth, encoded or plain."""
    names = list(parameters)
    rng.shuffle(names)
    lines = []
    for name in names:
        value = str(parameters[name])
        plain = rng.random() < 0.4 and value.strip() == value
        text = escape(value) if plain else base64.b64encode(value.encode()).decode()
        line = f'<key name={quoteattr(name)} type="{"int" if plain else "QString"}">{text}</key>'
        if rng.random() < 0.2:
            line = f"<group>\n  {line}\n </group>"
        lines.append(f" {line}\n")
    return f"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<config>\n{''.join(lines)}</config>\n"


def coordinate(rng):
    return rng.choice([str(rng.randrange(-3000, 3000)), "%.3f" % rng.uniform(-3, 3), "0", "-0", "1e3", "x", ".5"])


def hosts_of(rng, count):
    names = [rng.choice(["node%02d" % i, f"render{i}", f"k\u00f6ln{i}"]) for i in range(count)]
    if rng.random() < 0.3:
        names[-1] = names[0]
    return names


def options_of(rng):
    values = {
        "zoClusterNetworkCompression": rng.randrange(0, 5),
        "zoClusterSortFirstStillFrameSupersamplingFactor": rng.choice([0, 2, 4]),
        "zoClusterEyeSeparation": rng.choice([0, 63.5, 65]),
        "zoClusterZeroParallax": rng.choice([1500, "2000.25", "0.1", "far"]),
        "zoEdgeBlendingEnabled": rng.randrange(0, 2),
        "zoClusterInfiniband": rng.randrange(0, 2),
    }
    return {name: value for name, value in values.items() if rng.random() < 0.6}


def wall_case(rng, stereo):
    rows, columns = rng.randrange(1, 4), rng.randrange(1, 5)
    hosts = hosts_of(rng, max(1, rows * columns * (2 if stereo == "1" else 1) + rng.randrange(-2, 3)))
    if rng.random() < 0.3:
        text = f"{hosts[0]}[forwards={'|'.join(hosts[1:])}]"
    else:
        text = " ".join(f"{host}[xpos={rng.randrange(0, 4000)},ypos={rng.randrange(-9, 9)}]"
                        if rng.random() < 0.7 else host for host in hosts)
    return {"zoClusterProjectionType": "Powerwall", "zoClusterPWServers": text, "zoClusterPWRows": rows,
            "zoClusterPWCols": columns, "zoClusterPWXRes": rng.choice([1281, 1920]), "zoClusterPWYRes": 1080,
            "zoClusterPWXOverlap": rng.choice([0, 120]), "zoClusterPWYOverlap": 7,
            "zoClusterPWXOffset": rng.randrange(-50, 50), "zoClusterPWStereoMode": stereo}


def custom_case(rng):
    planes = [" ".join(coordinate(rng) for _ in range(9)) for _ in range(3)]
    parameters = {"zoClusterProjectionType": "Custom"}
    hosts = hosts_of(rng, rng.randrange(2, 6))
    for i, host in enumerate(hosts):
        descriptors = []
        for _ in range(rng.randrange(1, 4)):
            kind = rng.choice(["plane", "Stereo", '"stereo"', '"plane"'])
            rectangle = " ".join(str(rng.choice([0, 640, 1920, 2000.5, 3840, -10])) for _ in range(4))
            flag = rng.choice(["0", "1", "1;2", "0;1", ""])
            descriptors.append(f"{kind} 0 {rectangle} {flag} {rng.choice(planes)}")
        parameters[f"zoClusterPipe{i}"] = f'"{host}" {1920 * i} 0 1920 1200 {"|".join(descriptors)}'
    if rng.random() < 0.5:
        del parameters[f"zoClusterPipe{rng.randrange(1, len(hosts))}"]
    return parameters


def old_case(rng):
    entries = []
    for host in hosts_of(rng, rng.randrange(1, 5)):
        fields = [f'"{host}"'] + [str(rng.randrange(0, 2000)) for _ in range(4)] + ["0", "0.1", "0.9", "1"]
        entries.append(" ".join(fields + [coordinate(rng) for _ in range(rng.randrange(0, 13))]))
    return {"zoClusterHosts": ",".join(entries), "zoClusterActiveStereo": rng.randrange(0, 2),
            "zoClusterPassiveStereo": rng.randrange(0, 2)}


def raytracing_case(rng):
    return {"zoClusterProjectionType": "Raytracing", "zoClusterSortFirstServers": " ".join(hosts_of(rng, 5))}


def cases():
    rng = random.Random(20)
    for stereo in ("0", "1", "2", "3", "4"):
        yield f"wall-stereo-{stereo}", wall_case(rng, stereo), rng
        yield f"wall-stereo-{stereo}-again", wall_case(rng, stereo), rng
    for i in range(1, 7):
        yield f"custom-{i}", custom_case(rng), rng
    for i in range(1, 6):
        yield f"old-{i}", old_case(rng), rng
    yield "raytracing", raytracing_case(rng), rng


def generate():
    for name, parameters, rng in cases():
        text = legacy_text(rng, {**parameters, **options_of(rng)})
        base = FOLDER / f"generated-{name}"
        base.with_suffix(".xml").write_text(text, encoding="utf-8")
        base.with_suffix(".zhpc").write_text(Reference(text.encode()).cluster.text(), encoding="utf-8")


def alike(actual, expected):
    return (actual.tag == expected.tag and {k: str(v) for k, v in actual.attributes.items()} == expected.attrib
            and len(actual.children) == len(expected)
            and all(alike(a, e) for a, e in zip(actual.children, expected)))


def check():
    wrong = 0
    paths = sorted(FOLDER.glob("*.xml"))
    if not paths:
        sys.exit(f"no files in {FOLDER}")
    for path in paths:
        expected = ElementTree.parse(path.with_suffix(".zhpc")).getroot()
        actual = Reference(path.read_bytes()).cluster
        if not alike(actual, expected):
            print(f"{path.name}: converts to\n{actual.text()}")
            wrong += 1
    return wrong


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--check", action="store_true", help="compare instead of writing")
    if parser.parse_args().check:
        sys.exit(1 if check() else 0)
    generate()


if __name__ == "__main__":
    main()
