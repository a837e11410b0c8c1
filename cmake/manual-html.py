#!/usr/bin/python3
"""Turns pages of the manual, Markdown, into HTML that a browser and the viewer of the host show alike.

  manual-html.py --into FOLDER PAGE.md...

The viewer, QTextBrowser, knows HTML 4 and few styles: tables have the borders of their attributes, there are no colours, so
that those of the palette hold, and pictures have their size in pixels, up to that of a page.
"""

import argparse
import pathlib
import re
import struct
import sys

import markdown
from markdown.extensions import Extension
from markdown.extensions.toc import TocExtension
from markdown.treeprocessors import Treeprocessor

WIDTH = 680  # of a page, in pixels
MOST_PARTS = 3  # of a page without a list of them
WORDS = "<!-- words -->"  # where a list of all words is to stand
PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>{title}</title>
<style type="text/css">
body {{ max-width: 52em; margin: 12px; }}
pre, code {{ font-family: monospace; }}
pre {{ margin-left: 2em; white-space: pre-wrap; }}
table {{ margin-top: 8px; margin-bottom: 8px; }}
td, th {{ text-align: left; vertical-align: top; }}
</style>
</head>
<body>
<p>{navigation}</p>
{body}
</body>
</html>
"""


def target_of(link):
    """Pages are beside each other; pictures in one folder; what is installed beside the manual is reached from there."""
    if "://" in link:
        return link
    path, mark, anchor = link.partition("#")
    if path.endswith(".md"):
        return pathlib.PurePosixPath(path).stem + ".html" + mark + anchor
    if path.endswith((".png", ".svg")):
        return "pictures/" + pathlib.PurePosixPath(path).name
    return re.sub(r"^\.\./Data/", "../../", link)


def width_of(picture):
    """Pixels of a PNG, 0 of another file: its header has them at a fixed place."""
    head = picture.read_bytes()[:24]
    return struct.unpack(">I", head[16:20])[0] if head[:4] == b"\x89PNG" else 0


class ForViewer(Treeprocessor):
    """Links, borders of tables, and pictures that are wider than a page."""

    def __init__(self, md, folder):
        super().__init__(md)
        self.folder = folder

    def run(self, root):
        for element in root.iter():
            if element.tag == "img":
                width = width_of(self.folder / element.get("src"))
                if width > WIDTH:
                    element.set("width", str(WIDTH))
            for attribute in {"href", "src"} & set(element.keys()):
                element.set(attribute, target_of(element.get(attribute)))
            if element.tag == "table":
                element.attrib.update(border="1", cellspacing="0", cellpadding="4",
                                      style="border-collapse: collapse")
                head = element.find("thead")
                if not any("".join(cell.itertext()).strip() for cell in head.iter("th")):
                    element.remove(head)
            elif element.tag == "th":
                element.set("align", "left")


class ViewerExtension(Extension):
    def __init__(self, folder):
        super().__init__()
        self.folder = folder

    def extendMarkdown(self, md):
        md.treeprocessors.register(ForViewer(md, self.folder), "viewer", 0)


def slug(text, separator="-"):
    """As code hosts make them, so that links hold there too: "Edges, flips" is edges-flips."""
    return re.sub(r"\s", separator, re.sub(r"[^\w\s-]", "", text.strip().lower()))


def places_of(text, name):
    """What a page has a heading or a row of a table for: (word, page#anchor)."""
    place = name + ".md"
    is_code = False
    for line in text.split("\n"):
        is_code ^= line.startswith("```")
        heading = re.match(r"##+ (.*)", line)
        if is_code:
            continue
        if heading:
            place = "%s.md#%s" % (name, slug(heading.group(1)))
            yield heading.group(1), place
        elif line.startswith("| "):
            for word in re.findall(r"`([^`]+)`", line.split("|")[1]):
                yield word, place


def list_of_words(texts):
    """The words of all pages, each with its places, by their first letter."""
    words = {}
    for name, text in texts.items():
        title = re.match(r"# (.*)", text).group(1)
        for word, place in places_of(text, name):
            if name == "index" or not re.search(r"\w", word):
                continue
            words.setdefault(word, {}).setdefault(place.partition("#")[0], (title, place))
    letter = None
    lines = []
    for word in sorted(words, key=lambda word: (re.sub(r"^\W+", "", word).lower(), word)):
        first = re.sub(r"^\W+", "", word)[0].upper()
        first = first if "A" <= first <= "Z" else "0-9"
        if first != letter:
            letter = first
            lines.append("\n## %s\n" % letter)
        links = ["[%s](%s)" % place for place in words[word].values()]
        lines.append("- `%s`: %s" % (word.strip("`"), ", ".join(links)))
    return "\n".join(lines)


def html_of(page, text, names):
    # Words behind the language of an example are for those who run it.
    text = re.sub(r"^(```\w+) .*$", r"\1", text, flags=re.MULTILINE)
    converter = markdown.Markdown(extensions=["tables", "fenced_code", "sane_lists", TocExtension(slugify=slug),
                                              ViewerExtension(page.parent)])
    body = converter.convert(text)
    parts = converter.toc_tokens[0]["children"]
    if len(parts) > MOST_PARTS:
        links = ['<a href="#%s">%s</a>' % (part["id"], part["name"]) for part in parts]
        body = body.replace("</h1>", "</h1>\n<p>On this page: %s</p>" % ", ".join(links), 1)
    title = re.match(r"# (.*)", text).group(1)
    place = names.index(page.stem)
    links = []
    for label, other in (("Contents", "index"), ("Back", names[place - 1] if place > 0 else None),
                         ("Next", names[place + 1] if place + 1 < len(names) else None)):
        if other and other != page.stem:
            links.append('<a href="%s.html">%s</a>' % (other, label))
    return PAGE.format(title=title, navigation=" | ".join(links), body=body)


def main(arguments):
    parser = argparse.ArgumentParser()
    parser.add_argument("--into", type=pathlib.Path, required=True)
    parser.add_argument("pages", nargs="+", type=pathlib.Path)
    options = parser.parse_args(arguments)
    options.into.mkdir(parents=True, exist_ok=True)
    names = [page.stem for page in options.pages]
    texts = {page.stem: page.read_text(encoding="utf-8") for page in options.pages}
    for page in options.pages:
        text = texts[page.stem].replace(WORDS, list_of_words(texts) if WORDS in texts[page.stem] else "")
        (options.into / (page.stem + ".html")).write_text(html_of(page, text, names), encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
