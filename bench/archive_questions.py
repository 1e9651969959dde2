#!/usr/bin/env python3
"""Measures the questions of the command line about an archive: time and peak memory on made documents.

Usage: archive_questions.py --program VORNTOOLS [--work FOLDER] [--documents N]

The documents are as small as documents can be, so that what is measured is the program: folders of one product and 19
parts, each product pointing to its parts, to one part of a folder far away, to a part that is missing and to the
product of the folder that it belongs to. A part in ten points to a screw that a third of all folders have. At the end
the extremes: one document with 100,000 links, and a chain of products as long as there are folders.
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


def measure(program, what, arguments):
    found = subprocess.run(["/usr/bin/time", "-f", "%e %U %S %M", program, *arguments], stdout=subprocess.PIPE,
                           stderr=subprocess.PIPE, check=False)
    elapsed, user, system, peak = re.findall(rb"[\d.]+", found.stderr.splitlines()[-1])
    lines = found.stdout.count(b"\n")
    print(f"{what:<52} {float(elapsed):8.2f} s {float(user) + float(system):8.2f} s {int(peak) / 1024:7.0f} MiB "
          f"{lines:9} lines", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True)
    parser.add_argument("--work", help="folder for some 500 MB, left empty again")
    parser.add_argument("--documents", type=int, default=100000)
    options = parser.parse_args()
    program = os.path.abspath(options.program)
    root = tempfile.mkdtemp(dir=options.work)
    try:
        archive = os.path.join(root, "archive")
        make(archive, options.documents)
        top = os.path.join(archive, "area0", "asm0", "asm0.CATProduct")
        part = os.path.join(archive, "area3", "asm3", "part3_3.CATPart")
        print(f"{'':<52} {'elapsed':>10} {'processor':>10} {'peak':>11}")
        for what, arguments in [("links --json", ["links", "--json", archive]),
                                ("links --missing", ["links", "--missing", archive]),
                                ("uses, all that the first product needs", ["uses", top, archive]),
                                ("used-by, up to the first product", ["used-by", part, archive]),
                                ("used-by --flat --json", ["used-by", "--flat", "--json", part, archive]),
                                ("duplicates", ["duplicates", archive]),
                                ("orphans", ["orphans", archive])]:
            measure(program, what, arguments)
        wide = [f"wide\\target{i}.CATPart" for i in range(100000)]
        write(root, "wide/Wide.CATProduct", wide)
        for name in ("uses", "links", "links --missing"):
            measure(program, f"{name}, one document with 100,000 links",
                    [*name.split(), os.path.join(root, "wide", "Wide.CATProduct")])
    finally:
        shutil.rmtree(root)


if __name__ == "__main__":
    main()
