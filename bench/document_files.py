#!/usr/bin/env python3
"""Measures the command line on document files against plain tools that read the same bytes, in one run, warm.

Usage: document_files.py --program VORNTOOLS --tools FOLDER --documents FOLDER [--work FOLDER] [--scale N]

The folder of documents holds real ones; they are copied and filled up with geometry by write_large_document, which
lies in the folder of tools with read_files. Times are elapsed times, and behind them those of all processors together:
medians of several rounds in which the two sides of each row take turns. --scale divides every count and size, to try the
script itself.
"""

import argparse
import os
import re
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

ROUNDS = 9
MIB = 1 << 20


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True)
    parser.add_argument("--tools", required=True, help="folder of write_large_document and read_files")
    parser.add_argument("--documents", required=True)
    parser.add_argument("--work", help="folder for some 5 GB, left empty again")
    parser.add_argument("--scale", type=int, default=1)
    return parser.parse_args()


def milliseconds(command, folder):
    """Elapsed time of a command, a text for the shell or a list of words, and the processor time of all that it starts."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    begin = time.monotonic()
    subprocess.run(command, shell=isinstance(command, str), cwd=folder, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, check=False)
    elapsed = time.monotonic() - begin
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return 1000 * elapsed, 1000 * (after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)


def compare(what, ours, theirs, goal, folder, output=None):
    """output: what our side writes, anew each time, since giving up an older file is the file system's work."""
    def once(command):
        if output and os.path.exists(output):
            os.remove(output)
        return milliseconds(command, folder)

    for command in (ours, theirs):  # into the file cache
        once(command)
    times = [once(ours) + once(theirs) for _ in range(ROUNDS)]
    mine, processors, other, _ = (statistics.median(column) for column in zip(*times))
    print(f"{what:<62} {mine:8.1f} ms ({processors:8.1f}) {other:8.1f} ms  {mine / other:6.2f}  goal {goal}", flush=True)


def floor_of(reader, folder):
    """What the files of a folder cost without anybody looking at them: opened, read at both ends and closed."""
    names = os.path.join(os.path.dirname(folder), "names")
    with open(names, "w", encoding="utf-8") as file:
        for path, _, files in os.walk(folder):
            file.writelines(os.path.join(path, name) + "\n" for name in files)
    command = f"'{reader}' --ends < '{names}'"
    milliseconds(command, folder)
    times = sorted(milliseconds(command, folder)[0] for _ in range(ROUNDS))
    print(f"  opened, read at both ends and closed: {times[ROUNDS // 2]:.0f} ms", flush=True)


def reads_of(program, document):
    """Number of reads of the document and their bytes."""
    with tempfile.NamedTemporaryFile("r") as trace:
        subprocess.run(["strace", "-f", "-y", "-e", "trace=read,pread64,readv", "-o", trace.name, program, "links",
                        "--json", document], stdout=subprocess.DEVNULL, check=False)
        name = os.path.basename(document)
        found = [int(read) for read in re.findall(rf"<[^>]*{re.escape(name)}>.* = (\d+)$", trace.read(), re.M)]
    return len(found), sum(found)


def peak_kib(program, document):
    said = subprocess.run(["/usr/bin/time", "-f", "%M", program, "links", "--json", document],
                          stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=False).stderr
    return int(said.split()[-1])


def sources(folder):
    """Documents that have a directory, one of each kind first."""
    names = sorted(name for name in os.listdir(folder) if re.search(r"\.CAT(Part|Product|Drawing)$", name))
    with_directory = []
    for name in names:
        path = os.path.join(folder, name)
        with open(path, "rb") as file:
            if file.read(7) == b"V5_CFV2":
                with_directory.append(path)
    if not with_directory:
        sys.exit(f"{folder} holds no document")
    return with_directory


def write_documents(options, work):
    real = sources(options.documents)
    big, small, shared, managed = (os.path.join(work, name) for name in ("big", "small", "shared", "managed"))
    for folder in (big, small, shared, managed):
        os.mkdir(folder)

    def write(source, size, output, *more):
        subprocess.run([os.path.join(options.tools, "write_large_document"), source, str(size), output, *more], check=True)

    part = max((path for path in real if path.endswith(".CATPart")), key=os.path.getsize)
    product = max((path for path in real if path.endswith(".CATProduct")), key=os.path.getsize)
    write(part, 256 * MIB // options.scale, os.path.join(big, "part.CATPart"))
    write(part, 256 * MIB // options.scale, os.path.join(big, "far.CATPart"), "--far-end")
    write(product, 256 * MIB // options.scale, os.path.join(big, "product.CATProduct"))

    filled = []
    for index, path in enumerate(real):
        filled.append(os.path.join(work, f"filled{index}" + os.path.splitext(path)[1]))
        write(path, MIB, filled[-1])
    for number in range(3000 // options.scale):
        source = filled[number % len(filled)]
        shutil.copy(source, os.path.join(small, f"d{number}{os.path.splitext(source)[1]}"))

    folders = 188 // options.scale or 1
    for number in range(3000 // options.scale):
        folder = os.path.join(shared, f"f{number % folders}")
        os.makedirs(folder, exist_ok=True)
        source = real[number // folders % len(real)]
        base, suffix = os.path.splitext(os.path.basename(source))
        shutil.copy(source, os.path.join(folder, f"{base}{'' if number < folders * len(real) else number}{suffix}"))

    dat = ("<DatFileVersion>\n2\n</DatFileVersion>\n<ItemRevUID>\nR{0}\n</ItemRevUID>\n<LocalLastModDate>\n1700000000\n"
           "</LocalLastModDate>\n<LinkedDocs>\nd{0}.CATPart\n</LinkedDocs>\n")
    dat_files = []
    for number in range(50000 // options.scale):
        folder = os.path.join(managed, f"f{number % 100}")
        os.makedirs(folder, exist_ok=True)
        document = os.path.join(folder, f"d{number}.CATPart")
        with open(document, "w", encoding="ascii"):
            pass
        os.utime(document, (1700000000, 1700000000))
        with open(document + ".dat", "w", encoding="ascii") as file:
            file.write(dat.format(number))
        dat_files.append(os.path.relpath(file.name, managed))
    with open(os.path.join(work, "dat-files"), "w", encoding="ascii") as file:
        file.write("\n".join(dat_files))
    return big, small, shared, managed, filled


def main():
    options = arguments()
    options.program = os.path.abspath(options.program)
    options.tools = os.path.abspath(options.tools)
    reader = os.path.join(options.tools, "read_files")
    for tool in ("rg", "strace", "/usr/bin/time", "cat", "find"):
        if not shutil.which(tool):
            sys.exit(f"{tool} is needed and not there")
    load = os.getloadavg()
    print(f"load {load[0]:.1f} {load[1]:.1f} {load[2]:.1f}, {os.cpu_count()} processors")
    work = tempfile.mkdtemp(dir=options.work)
    try:
        big, small, shared, managed, filled = write_documents(options, work)
        for name in ("part.CATPart", "far.CATPart", "product.CATProduct"):
            compare(f"links {name}, 256 MB, against rg", [options.program, "links", name],
                    ["rg", "-c", "-a", "-F", "CATDocumentProperty", name], 0.2, big)
        compare("links --json, 3,000 of 1 MB, against cat", [options.program, "links", "--json", "."], "cat *", 0.15,
                small)
        floor_of(reader, small)
        compare("links --json, real ones in 188 folders, against find and cat", [options.program, "links", "--json", "."],
                ["find", ".", "-type", "f", "-exec", "cat", "{}", "+"], 0.6, shared)
        for what, folder in (("3,000 of 1 MB", small), ("copies in 188 folders", shared)):
            page = os.path.join(work, "page.html")
            compare(f"report, {what}, against links --json", [options.program, "report", ".", "-o", page],
                    [options.program, "links", "--json", "."], 1.5, folder, page)
        floor_of(reader, shared)
        compare("status --json, 50,000, against reading their DAT files", [options.program, "status", "--json", "."],
                f"'{reader}' < ../dat-files", 2.5, managed)
        for what, documents in (("256 MB", [os.path.join(big, name) for name in sorted(os.listdir(big))]),
                                ("1 MB", filled)):
            total_read = total_size = 0
            for document in documents:
                count, length = reads_of(options.program, document)
                size = os.path.getsize(document)
                total_read, total_size = total_read + length, total_size + size
                print(f"  {os.path.basename(document):<24} {size:>10} bytes: {count:2} reads of {length:>7} bytes, "
                      f"{100 * length / size:.2f} %")
            print(f"bytes read of {what}: {100 * total_read / total_size:.2f} %, goal 3 %")
        for name in sorted(os.listdir(big)):
            print(f"peak memory, {name}: {peak_kib(options.program, os.path.join(big, name)) / 1024:.1f} MiB, goal 12")
    finally:
        shutil.rmtree(work)


if __name__ == "__main__":
    main()
