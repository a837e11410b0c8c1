#!/usr/bin/python3
"""Turns pages of the manual, Markdown, into HTML that a browser and the viewer of the host show alike.

  manual-html.py --into FOLDER PAGE.md...

The viewer, QTextBrowser, knows HTML 4 and few styles: anchors are <a name>, tables have the borders of their attributes,
there are no colours, so that those of the palette hold, and pictures have the size that their files have.
"""

import argparse
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

import markdown
from markdown.extensions import Extension
from markdown.extensions.toc import TocExtension
from markdown.treeprocessors import Treeprocessor

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>{title}</title>
<style type="text/css">
body {{ font-family: sans-serif; max-width: 52em; margin: 1em; }}
pre {{ margin-left: 2em; white-space: pre-wrap; }}
td, th {{ text-align: left; vertical-align: top; }}
</style>
</head>
<body>
<p>{navigation}</p>
{body}
</body>
</html>
"""


class ForViewer(Treeprocessor):
    """Links between pages, anchors, and borders of tables."""

    def run(self, root):
        for element in root.iter():
            if element.tag == "a" and "://" not in element.get("href", "://"):
                element.set("href", re.sub(r"\.md(?=#|$)", ".html", element.get("href")))
            elif element.tag == "table":
                element.attrib.update(border="1", cellspacing="0", cellpadding="4",
                                      style="border-collapse: collapse")
            elif element.tag == "th":
                element.set("align", "left")
            elif re.fullmatch("h[1-6]", element.tag) and "id" in element.attrib:
                anchor = ElementTree.Element("a", name=element.attrib["id"])
                anchor.tail, element.text = element.text, ""
                element.insert(0, anchor)


class ViewerExtension(Extension):
    def extendMarkdown(self, md):
        md.treeprocessors.register(ForViewer(md), "viewer", 0)


def slug(text, separator="-"):
    """As code hosts make them, so that links hold there too: "Edges, flips" is edges-flips."""
    return re.sub(r"\s", separator, re.sub(r"[^\w\s-]", "", text.strip().lower()))


def html_of(text, name, pages):
    # Words behind the language of an example are for those who run it.
    text = re.sub(r"^(```\w+) .*$", r"\1", text, flags=re.MULTILINE)
    body = markdown.markdown(text, extensions=["tables", "fenced_code", "sane_lists",
                                               TocExtension(slugify=slug), ViewerExtension()])
    title = re.match(r"# (.*)", text).group(1)
    place = pages.index(name)
    links = []
    for label, other in (("Contents", "index"), ("Back", pages[place - 1] if place > 0 else None),
                         ("Next", pages[place + 1] if place + 1 < len(pages) else None)):
        if other and other != name:
            links.append('<a href="%s.html">%s</a>' % (other, label))
    return PAGE.format(title=title, navigation=" | ".join(links), body=body)


def main(arguments):
    parser = argparse.ArgumentParser()
    parser.add_argument("--into", type=pathlib.Path, required=True)
    parser.add_argument("pages", nargs="+", type=pathlib.Path)
    options = parser.parse_args(arguments)
    options.into.mkdir(parents=True, exist_ok=True)
    names = [page.stem for page in options.pages]
    for page in options.pages:
        html = html_of(page.read_text(encoding="utf-8"), page.stem, names)
        (options.into / (page.stem + ".html")).write_text(html, encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
