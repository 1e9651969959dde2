#!/usr/bin/env python3
"""Measures the questions of the command line about an archive: time and peak memory on made documents.

Usage: archive_questions.py --program VORNTOOLS [--slow-files LIBRARY] [--work FOLDER] [--documents N]

The documents are as small as documents can be, so that what is measured is the program: folders of one product and 19
parts, each product pointing to its parts, to one part of a folder far away, to a part that is missing and to the
product of the folder that it belongs to. A part in ten points to a screw that a third of all folders have. Then the same
questions to a catalogue, and a catalogue of what has not changed against find. At the end the extremes: one document with
100,000 links, and a chain of products as long as there are folders.

With the library slow_files, which lets each open and read take 5 ms longer, it also measures what more processes gain.
"""

import argparse
import os
import re
import shutil
import struct
import subprocess
import tempfile

PARTS = 19


def location(kind, path):
    name = path.encode()
    file = b"\x01\x04File" + bytes([len(kind)]) + kind + struct.pack("<H", len(name)) + name
    rest = b"\x05DocId" + struct.pack("<H", len(file)) + file
    return struct.pack("<i", len(rest)) + rest


def block(text, uses):
    triplets = b"".join(b"\x3b\x01" + text[i:i + 1] for i in range(len(text)))
    return (struct.pack("<i", len(text)) + triplets + b"\x9f\x22\0\0\0\0\x22\0\0\0\0\x23" + struct.pack("<i", uses) +
            b"\x21\0\0\x21\0\0\x9f")


def document(own, targets):
    """Bytes of a document that points to others, as docs/links.md lays them out."""
    between = b"\xe0\x02\0\0\0\0\x22\x02\0\0\0\xe0\x03\0\0\0\0\x22"
    result = [b"CATDocumentProperty\x80\x01\0\0\0\0\x22\x02\0\0\0\x22", struct.pack("<i", len(targets)),
              b"\0\x34\x11CATSymbolArray\xe0\x03\0\0\0\0\x22",
              block(b"\x01o\0\0\0\0\x0dGenericLocate" + location(b"CATPart", own), 0)]
    for path in targets:
        kind = b"CATProduct" if path.endswith("Product") else b"CATPart"
        result += [between, block(b"\x11\x03" + b"\x07" * 16 + b"\0\0\0\0\x05CATIA" + location(kind, path), 1)]
    result += [b"\x24" + struct.pack("<i", i + 1) for i in range(len(targets))]
    return b"".join(result) + b"\x9f\x36\x08FINJPL  "


def write(root, name, targets):
    path = os.path.join(root, name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(document("D:\\archive\\" + name.replace("/", "\\"), ["D:\\archive\\" + t for t in targets]))


def make(root, count):
    folders = count // (PARTS + 1)
    name = lambda i: f"area{i % 97}\\asm{i}"
    for i in range(folders):
        folder = name(i)
        parts = [f"{folder}\\part{i}_{k}.CATPart" for k in range(PARTS - 1)]
        targets = parts + [f"{name((i * 7919) % folders)}\\part{(i * 7919) % folders}_3.CATPart",
                           f"gone{i % 1000}\\lost{i % 5000}.CATPart"]
        if i + 1 < folders:
            targets.append(f"{name(i + 1)}\\asm{i + 1}.CATProduct")
        write(root, f"{folder}\\asm{i}.CATProduct".replace("\\", "/"), targets)
        for k, part in enumerate(parts):
            write(root, part.replace("\\", "/"), [f"{folder}\\screw.CATPart"] if k % 10 == 0 else [])
        last = "screw" if i % 3 == 0 else f"lost{i % 5000}"
        write(root, f"{folder}\\{last}.CATPart".replace("\\", "/"), [])


def measure(program, what, arguments, environment=None):
    found = subprocess.run(["/usr/bin/time", "-f", "%e %U %S %M", program, *arguments], stdout=subprocess.PIPE,
                           stderr=subprocess.PIPE, env={**os.environ, **(environment or {})}, check=False)
    elapsed, user, system, peak = re.findall(rb"[\d.]+", found.stderr.splitlines()[-1])
    lines = found.stdout.count(b"\n")
    print(f"{what:<52} {float(elapsed):8.2f} s {float(user) + float(system):8.2f} s {int(peak) / 1024:7.0f} MiB "
          f"{lines:9} lines", flush=True)


def questions(program, archive, place, where):
    top = os.path.join(archive, "area0", "asm0", "asm0.CATProduct")
    part = os.path.join(archive, "area3", "asm3", "part3_3.CATPart")
    for what, arguments in [("links --json", ["links", "--json"]),
                            ("links --missing", ["links", "--missing"]),
                            ("uses, all that the first product needs", ["uses", top]),
                            ("used-by, up to the first product", ["used-by", part]),
                            ("used-by --depth 1", ["used-by", "--depth", "1", part]),
                            ("used-by --flat --json", ["used-by", "--flat", "--json", part]),
                            ("duplicates", ["duplicates"]),
                            ("orphans", ["orphans"]),
                            ("report", ["report", "-o", archive + ".html"])]:
        measure(program, what + where, [*arguments, *place])


def slow_catalogues(program, archive, library):
    folder = os.path.join(archive, "area0")
    slow = {"LD_PRELOAD": os.path.abspath(library), "SLOW_FILES": folder}
    for jobs in ("1", "8"):
        output = f"{archive}.slow{jobs}.sqlite"
        measure(program, f"catalogue --jobs {jobs} of slow files",
                ["catalogue", folder, "-o", output, "--jobs", jobs], slow)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True)
    parser.add_argument("--slow-files", help="the library of that name, beside the benchmarks")
    parser.add_argument("--work", help="folder for some 500 MB, left empty again")
    parser.add_argument("--documents", type=int, default=100000)
    options = parser.parse_args()
    program = os.path.abspath(options.program)
    root = tempfile.mkdtemp(dir=options.work)
    try:
        archive = os.path.join(root, "archive")
        make(archive, options.documents)
        print(f"{'':<52} {'elapsed':>10} {'processor':>10} {'peak':>11}")
        questions(program, archive, [archive], "")
        catalogue = os.path.join(root, "catalogue.sqlite")
        for what in ("first", "second", "second"):
            measure(program, f"catalogue, the {what} time", ["catalogue", archive, "-o", catalogue])
            measure("find", "find -printf", [archive, "-printf", "%s %T@ %i %p\\n"])
        questions(program, archive, ["--catalogue", catalogue], " --catalogue")
        if options.slow_files:
            slow_catalogues(program, archive, options.slow_files)
        wide = [f"wide\\target{i}.CATPart" for i in range(100000)]
        write(root, "wide/Wide.CATProduct", wide)
        for name in ("uses", "links", "links --missing"):
            measure(program, f"{name}, one document with 100,000 links",
                    [*name.split(), os.path.join(root, "wide", "Wide.CATProduct")])
    finally:
        shutil.rmtree(root)


if __name__ == "__main__":
    main()
