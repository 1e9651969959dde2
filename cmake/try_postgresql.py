#!/usr/bin/env python3
"""Tries what docs/many-servers.md has for PostgreSQL: try_postgresql.py PROGRAM.

Starts a server of its own in a folder that goes again, loads the links of the example workspace as those of two servers,
and compares the answers of the queries with those of the program. Takes the Debian package "postgresql"; no test runs it.
"""

import json
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from check_catalogue import blocks, prepare


class Server:
    """Belongs to nobody's cluster, listens on a socket in its own folder. As root it runs as the user "postgres"."""

    def __init__(self, folder):
        self.folder = folder / "postgresql"
        self.folder.mkdir()
        self.before = ["runuser", "-u", "postgres", "--"] if os.geteuid() == 0 else []
        if self.before:
            os.chmod(folder, 0o755)
            shutil.chown(self.folder, "postgres")
        programs = sorted(Path("/usr/lib/postgresql").glob("*/bin"))
        if not programs:
            sys.exit("the package postgresql is not there")
        self.programs = programs[-1]

    def run(self, program, *arguments, **options):
        return subprocess.run([*self.before, str(self.programs / program), *arguments], check=True,
                              stdout=subprocess.PIPE, text=True, cwd=self.folder.parent, **options).stdout

    def __enter__(self):
        self.run("initdb", "-D", "postgresql/data", "-A", "trust", "-E", "UTF8", "--locale=C.UTF-8")
        self.run("pg_ctl", "-D", "postgresql/data", "-w", "-l", "postgresql/log", "start", "-o",
                 f"-c listen_addresses='' -c unix_socket_directories={self.folder}")
        return self

    def __exit__(self, *_):
        self.run("pg_ctl", "-D", "postgresql/data", "-m", "immediate", "stop")

    def psql(self, text, **variables):
        values = [f"--set={name}={value}" for name, value in variables.items()]
        return self.run("psql", "-h", str(self.folder), "-d", "postgres", "-X", "-q", "-A", "-t", "-v",
                        "ON_ERROR_STOP=1", *values, input=text).splitlines()


def main(program):
    problems = []

    def expect(what, found, wanted):
        print(f"{what}: {len(found)} rows" + ("" if found == wanted else ", WRONG"))
        if found != wanted or not wanted:
            problems.append(f"{what}: {found}, not {wanted}")

    def ask(*arguments):
        printed = subprocess.run([program, *arguments, "--json"], stdout=subprocess.PIPE, check=False).stdout
        return [json.loads(line) for line in printed.splitlines()]

    with tempfile.TemporaryDirectory() as name:
        folder = Path(name).resolve()
        prepare(folder)
        for place in ("paris", "lyon"):
            with open(folder / f"{place}.jsonl", "wb") as output:
                subprocess.run([program, "links", "--json", folder / place], stdout=output, check=False)
        both = [str(folder / "paris"), str(folder / "lyon")]
        document, part = str(folder / "paris" / "GearPump.CATDrawing"), str(folder / "paris" / "Shaft.CATPart")
        load, uses, users, missing, names, orphans = blocks("PostgreSQL").values()
        with Server(folder) as server:
            server.psql(load + "ALTER TABLE line ALTER server SET DEFAULT 'lyon';\n" +
                        next(line for line in load.splitlines() if line.startswith("\\copy")).replace("paris", "lyon"))
            expect("uses", server.psql(uses, document=document),
                   sorted({line["document"] for line in ask("uses", "--flat", document) if line["level"] > 0}))
            expect("used-by", server.psql(users, document=part),
                   sorted({line["document"] for line in ask("used-by", "--flat", part, *both) if line["level"] > 0}))
            place = lambda path: ("paris: " if path.startswith(both[0]) else "lyon: ") + path
            expect("missing", sorted(server.psql(missing)), sorted(
                "|".join([line["missing"], ", ".join(sorted(user["document"] for user in line["wanted_by"])),
                          ", ".join(sorted(place(file["document"]) for file in line["candidates"]))])
                for line in ask("links", "--missing", *both)))
            expect("duplicates", server.psql(names), sorted(
                line["name"].lower() + "|" + ", ".join(sorted((place(file["document"]) for file in line["documents"]),
                                                              key=lambda text: text))
                for line in ask("duplicates", *both)))
            expect("orphans", server.psql(orphans), sorted(line["document"] for line in ask("orphans", *both)))
    print("\n".join(problems) or "PostgreSQL answers what the program answers")
    return 1 if problems else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(str(Path(sys.argv[1]).resolve())))
