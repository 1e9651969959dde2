#!/usr/bin/env python3
"""Checks that a catalogue is what docs/ says: check_catalogue.py PROGRAM.

Catalogues the example workspace as that of two servers, runs the queries that docs/many-servers.md has for SQLite, and
compares their answers with those of the program and with the files themselves. Exit status 77 where the program has no
catalogues.
"""

import hashlib
import json
import os
import re
import shutil
import sqlite3
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
NOT_RUN = 77


def blocks(title):
    """The SQL under a heading of the page, each by the last line of text in front of it."""
    section = (ROOT / "docs" / "many-servers.md").read_text("utf-8").split(f"\n## {title}\n")[1].split("\n## ")[0]
    return {text.strip().splitlines()[-1]: sql for text, sql in re.findall(r"(.*?)```sql\n(.*?)```", section, re.S)}


def lines_of(program, *arguments):
    printed = subprocess.run([program, *arguments, "--json"], stdout=subprocess.PIPE, check=False).stdout
    return [json.loads(line) for line in printed.splitlines()]


def prepare(folder):
    """Paris misses a valve that stands in Lyon, and has its key twice; so has Lyon."""
    subprocess.run([ROOT / "examples" / "prepare_workspace.sh", folder / "paris"], check=True, stdout=subprocess.DEVNULL)
    for name in ("paris/spare", "lyon", "lyon/spare"):
        (folder / name).mkdir()
    for name in ("paris/spare/Key.CATPart", "lyon/Key.CATPart", "lyon/spare/KEY.CATPart", "lyon/Relief_Valve.CATPart"):
        shutil.copy(folder / "paris" / "Key.CATPart", folder / name)


def documented_columns():
    text = (ROOT / "docs" / "catalogue.md").read_text("utf-8")
    table = text.split("| column of `documents` | value |")[1].split("\n\n")[0]
    return {name for row in re.findall(r"^\| (.*?) \|", table, re.M) for name in re.findall(r"`(\w+)`", row)} | {"id"}


def check(program):
    problems = []

    def expect(what, found, wanted):
        if found != wanted:
            problems.append(f"{what}: {found}, not {wanted}")

    with tempfile.TemporaryDirectory() as name:
        folder = Path(name).resolve()
        prepare(folder)
        os.chdir(folder)
        for server in ("paris", "lyon"):
            made = subprocess.run([program, "catalogue", server, "-o", f"{server}.sqlite"], stderr=subprocess.PIPE,
                                  text=True, check=False)
            if "not built in" in made.stderr:
                print("not run: the program has no catalogues")
                return NOT_RUN
        database = sqlite3.connect(":memory:")
        queries = iter(blocks("SQLite").values())

        attach, select = next(queries).rsplit("AS lyon;", 1)
        database.executescript(attach + "AS lyon;")
        missing = lines_of(program, "links", "--missing", folder / "paris", folder / "lyon")
        found = list(database.execute(select))
        expect("something is missing in Paris and found in Lyon", len(found) > 0, True)
        expect("missing in Paris and found in Lyon", found, sorted(
            (user["document"], line["missing"], candidate["document"]) for line in missing for user in line["wanted_by"]
            for candidate in line["candidates"] if "/lyon/" in candidate["document"]))

        keys = {server: [str(path) for path in (folder / server).rglob("*") if path.name.lower() == "key.catpart"]
                for server in ("paris", "lyon")}
        expect("the same bytes", list(database.execute(next(queries))),
               sorted((here, there) for here in keys["paris"] for there in keys["lyon"]))

        part = str(folder / "paris" / "Shaft.CATPart")
        users = lines_of(program, "used-by", "--flat", part, "--catalogue", "paris.sqlite")
        expect("who uses a part", [row[0] for row in database.execute(next(queries), {"name": part})],
               sorted(line["document"] for line in users if line["level"] > 0))
        expect("users found", len(users) > 1, True)

        sums = database.execute("SELECT name, sha256 FROM paris.documents JOIN paris.document_names ON document = id "
                                "WHERE sha256 IS NOT NULL").fetchall()
        expect("documents with a checksum", sorted(row[0] for row in sums), sorted(keys["paris"]))
        for file, checksum in sums:
            expect(file, checksum, hashlib.sha256(Path(file).read_bytes()).hexdigest())
        expect("columns of documents", {row[1] for row in database.execute("PRAGMA paris.table_info(documents)")},
               documented_columns())
        database.close()
    print("\n".join(problems) or "the catalogue is what docs/ says")
    return 1 if problems else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(check(Path(sys.argv[1]).resolve()))
