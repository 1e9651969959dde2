#!/usr/bin/env python3
"""Makes the API reference from include/ and the pages with Doxygen: make_reference.py [--check] OUT.

The pages are written for readers of the repository. Doxygen gets copies in which links lead to the pages of the
reference, headings have the names that links use, and code is code to it. With --check every warning of Doxygen is an
error, and every link of the HTML (OUT/html) that leads nowhere. Exit status 77 where Doxygen is not there.
"""

import argparse
import html.parser
import os
import re
import shutil
import subprocess
import sys
import urllib.parse
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
NOT_RUN = 77

# The pages whose names do not tell which of several they are.
NAMES = {"README.md": "index", "docs/README.md": "documentation", "bench/README.md": "bench",
         "platform/README.md": "platform"}
# What the pages link to besides each other.
EXTRA = {"docs/schema": "schema", "docs/images": "images", "platform/frameworks.txt": "frameworks.txt"}

# Headings of a page that begins with a list of them.
LONG = 5

FENCE = re.compile(r"^( *)```(\w*)\n(.*?)^ *```$", re.M | re.S)
SPAN = re.compile(r"(?<!`)(`+)(?!`)(.+?)(?<!`)\1(?!`)", re.S)
HEADING = re.compile(r"^(#+) (.+)$", re.M)
IMAGE = re.compile(r"!\[([^\]]*)\]\(([^)]+)\)")
LINK = re.compile(r"(\[[^\]]*\])\(([^)]+)\)")


def pages():
    """Path of each page, relative to the root, and its name in the reference."""
    paths = [ROOT / name for name in ("README.md", "CONTRIBUTING.md", "CHANGELOG.md", "bench/README.md",
                                      "platform/README.md")]
    paths += sorted((ROOT / "docs").glob("*.md"))
    relative = [path.relative_to(ROOT).as_posix() for path in paths]
    return {path: NAMES.get(path, Path(path).stem.lower()) for path in relative}


def slug(heading):
    """What a link calls a heading."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def code(text):
    """A piece of code as HTML that Doxygen takes for nothing else."""
    text = text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")
    return "<code>" + re.sub(r'(::|---?|[\\@#%$"|])', r"\\\1", " ".join(text.split())) + "</code>"


class Page:
    def __init__(self, path, names):
        self.path, self.names, self.name = path, names, names[path]
        self.kept, self.slugs = [], {}

    def keep(self, text):
        """Puts a finished piece aside, where nothing else looks into it."""
        self.kept.append(text)
        return f"\0{len(self.kept) - 1}\0"

    def target(self, link):
        """Where a link of the page leads to in the reference."""
        if re.match(r"\w+:", link):
            return link
        file, _, anchor = link.partition("#")
        path = os.path.normpath(os.path.join(os.path.dirname(self.path), file)) if file else self.path
        if path in self.names:
            name = self.names[path]
            return f"{name}.html#{name}-{anchor}" if anchor else f"{name}.html"
        for source, copy in EXTRA.items():
            if path == source or path.startswith(source + "/"):
                return copy + path[len(source):] + ("/" if file.endswith("/") else "")
        raise SystemExit(f"{self.path}: {link} leads to nothing that the reference holds")

    def fence(self, match):
        language = ".cpp" if match[2] == "cpp" else ".unparsed"
        return self.keep(f"{match[1]}```{{{language}}}\n{match[3]}{match[1]}```")

    def span(self, match):
        begin = match.string.rfind("\n", 0, match.start()) + 1
        in_table = match.string[begin] == "|"  # where a bar has to be escaped
        return self.keep(code(match[2].replace("\\|", "|") if in_table else match[2]))

    def image(self, match):
        alt = " ".join(match[1].split()).replace('"', "&quot;")
        return self.keep(f'<img src="{self.target(match[2])}" alt="{alt}" style="max-width: 100%"/>')

    def heading(self, match):
        if len(match[1]) == 1:
            return match[0] if self.name == "index" else f"{match[0]} {{#{self.name}}}"
        name = slug(self.restored(match[2], plain=True))
        before = self.slugs[name] = self.slugs.get(name, -1) + 1
        return f"{match[0]} {{#{self.name}-{name}{f'-{before}' if before else ''}}}"

    def restored(self, text, plain=False):
        def piece(match):
            kept = self.kept[int(match[1])]
            return re.sub(r"</?code>|\\(?=[^\w\s])", "", kept) if plain else kept
        return re.sub("\0(\\d+)\0", piece, text)

    def text(self):
        text = (ROOT / self.path).read_text(encoding="utf-8")
        text = FENCE.sub(self.fence, text)
        text = SPAN.sub(self.span, text)
        text = IMAGE.sub(self.image, text)
        text = LINK.sub(lambda match: f"{match[1]}({self.target(match[2])})", text)
        text = HEADING.sub(self.heading, text)
        if len(self.slugs) >= LONG:
            text = text.replace("\n", "\n\n[TOC]\n", 1)
        return self.restored(text)


class Links(html.parser.HTMLParser):
    """Anchors of an HTML file, and where its links lead."""

    def __init__(self, path):
        super().__init__()
        self.anchors, self.targets = set(), []
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        for key, value in attributes:
            if key in ("id", "name"):
                self.anchors.add(value)
            elif key in ("href", "src") and value and not re.match(r"\w+:|//", value):
                self.targets.append(value)


def broken_links(folder):
    files = {path: Links(path) for path in sorted(folder.glob("*.html"))}
    for path, links in files.items():
        for link in links.targets:
            file, _, anchor = urllib.parse.unquote(link).partition("#")
            target = folder / file if file else path
            if not target.exists() or (anchor and target in files and anchor not in files[target].anchors):
                yield f"{path.name}: {link} leads nowhere"


def version():
    lines = (ROOT / "include" / "VornToolsVersion.h").read_text(encoding="ascii")
    return ".".join(re.findall(r"_(?:MAJOR|MINOR|PATCH) (\d+)$", lines, re.M))


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    parser.add_argument("--check", action="store_true", help="warnings and links that lead nowhere are errors")
    parser.add_argument("--doxygen", default="doxygen", help="the program")
    parser.add_argument("out", type=Path, help="folder to write to")
    arguments = parser.parse_args()
    out = arguments.out.resolve()
    if not shutil.which(arguments.doxygen):
        print("Doxygen is not there")
        return NOT_RUN
    for made_before in ("html", "pages"):
        shutil.rmtree(out / made_before, ignore_errors=True)
    names = pages()
    for path in names:
        copy = out / "pages" / path
        copy.parent.mkdir(parents=True, exist_ok=True)
        copy.write_text(Page(path, names).text(), encoding="utf-8")
    environment = dict(os.environ, VORNTOOLS_SOURCE=str(ROOT), VORNTOOLS_OUT=str(out), VORNTOOLS_VERSION=version(),
                       VORNTOOLS_WARN_AS_ERROR="FAIL_ON_WARNINGS" if arguments.check else "NO")
    # Elsewhere than the sources, whose pages have the names of the copies.
    made = subprocess.run([arguments.doxygen, ROOT / "cmake" / "Doxyfile"], cwd=out, env=environment, check=False)
    for source, copy in EXTRA.items():
        if (ROOT / source).is_dir():
            shutil.copytree(ROOT / source, out / "html" / copy)
        else:
            shutil.copy(ROOT / source, out / "html" / copy)
    broken = list(broken_links(out / "html"))
    print("\n".join(broken + [f"{len(list((out / 'html').glob('*.html')))} pages in {out / 'html'}"]))
    return 1 if made.returncode or (arguments.check and broken) else 0


if __name__ == "__main__":
    sys.exit(main())
