#!/usr/bin/env python3
"""Checks that --json prints what docs/schema/ promises: check_json.py TESTS PROGRAM.

Runs the tests of the program, which keep every line that it prints, and its commands on the example workspace. Each
line has to meet its command's schema, and each key of a schema has to be in some line. The tables of docs/json.md are
made from the schemas: check_json.py --update writes them anew. Exit status 77 where the package python3-jsonschema is
not there.
"""

import json
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import textwrap
import urllib.parse
from pathlib import Path

try:
    import jsonschema
except ImportError:
    jsonschema = None

ROOT = Path(__file__).resolve().parent.parent
PAGE = ROOT / "docs" / "json.md"
MARK = "<!-- From here on made from schema/ by cmake/check_json.py --update. -->\n"
NOT_RUN = 77

# What is run on the example workspace; "elsewhere" holds what it misses, "broken" a document that cannot be read.
EXAMPLES = """
    status --links workspace
    dat workspace/Shaft.CATPart
    dat workspace/GearPump.CATDrawing
    links --ghosts workspace elsewhere
    links broken
    links --missing workspace elsewhere
    uses workspace/GearPump.CATDrawing elsewhere
    used-by workspace/DriveGear.CATPart workspace
    duplicates workspace elsewhere
    orphans workspace elsewhere
    pack workspace/GearPump.CATProduct -o packed
    contents workspace
    contents broken
    preview workspace -o packed
    exchange result exchange
    exchange highlight exchange
    import-options options.txt
    run gear-pump.json documents
    run gear-pump.json windows
    run gear-pump.json windows --find DriveGear.CATPart
    run gear-pump.json selection
    run gear-pump.json modes
    run gear-pump.json switch 'GP-100\\Shaft.1' --to visu
    run gear-pump.json restore 'GP-100\\Key.1'
    run gear-pump.json scenes
    run gear-pump.json masks
    run gear-pump.json properties
    run gear-pump.json parameters
    run gear-pump.json attributes
    run gear-pump.json instances
    run gear-pump.json design-tables
    run gear-pump.json checksums
"""
OPTIONS_FILE = "<menu>\nA\n</menu>\n<doc>\nKey.CATPart\n<opts>\n<main_body_only>\n1\n</main_body_only>\n</opts>\n"
ODD_NAME = b"elsewhere/Sch\xc3\xbctz \xe9 100% %41.CATPart"


def file_of(title):
    return title.replace(" --", "-").replace(" ", "-") + ".json"


def read_schemas():
    """By their titles: the command's words."""
    schemas = {}
    for file in sorted((ROOT / "docs" / "schema").glob("*.json")):
        schema = json.loads(file.read_text("utf-8"))
        schemas[schema["title"]] = schema
        if file_of(schema["title"]) != file.name:
            sys.exit(f"{file} is titled {schema['title']}")
    return schemas


def resolved(schema, whole):
    """With what it refers to in the place of a reference; its own description stays."""
    if "$ref" not in schema:
        return schema
    return {**resolved(whole["$defs"][schema["$ref"].rsplit("/", 1)[1]], whole), **schema}


def keys_of(schema, whole, path=""):
    """Every key that a schema allows, as a path such as "targets[].rule", with its own schema."""
    schema = resolved(schema, whole)
    for key, value in schema.get("properties", {}).items():
        value = resolved(value, whole)
        yield path + key, value
        yield from keys_of(value.get("items", {}), whole, f"{path}{key}[].")


# The page


def type_of(schema, whole, many=False):
    schema = resolved(schema, whole)
    if "enum" in schema:
        return ", ".join(f"`{json.dumps(value)}`" for value in schema["enum"])
    kinds = schema["type"] if isinstance(schema["type"], list) else [schema["type"]]
    words = {"string": "text", "boolean": "truth value", "null": "`null`", "array": "list"}
    texts = [words.get(kind, kind) + ("s" if many and len(kinds) == 1 else "") for kind in kinds]
    if "array" in kinds:
        count = f"{schema['minItems']} " if "minItems" in schema else ""
        texts[kinds.index("array")] += f" of {count}{type_of(schema['items'], whole, True)}"
    return ("values, " if many and len(kinds) > 1 else "") + " or ".join(texts)


def tables(schemas):
    text = ""
    for title in sorted(schemas):
        schema = schemas[title]
        about = f"{schema['description']} [Schema](schema/{file_of(title)})."
        text += f"\n## {title}\n\n{textwrap.fill(about, 120, break_on_hyphens=False)}\n\n"
        text += "| key | type | meaning |\n|---|---|---|\n"
        for path, value in keys_of(schema, schema):
            text += f"| `{path}` | {type_of(value, schema)} | {value['description']} |\n"
    return text


def page(schemas):
    """The page as it has to be: what is written by hand, and the tables."""
    return PAGE.read_text("utf-8").split(MARK)[0] + MARK + tables(schemas)


# The lines


def kept_lines(tests, folder):
    """What the program printed in its tests: arguments and lines of each run that was asked for JSON."""
    sources = "".join(file.read_text("utf-8") for file in (ROOT / "tests" / "cli").glob("*_test.cpp"))
    suites = sorted(set(re.findall(r"TEST_F\((\w+)", sources)))
    kept = folder / "lines"
    subprocess.run([tests, "--gtest_brief=1", "--gtest_filter=" + ":".join(suite + ".*" for suite in suites)],
                   env={**os.environ, "VORNTOOLS_JSON_LINES": str(kept)}, check=True)
    runs = []
    for line in kept.read_bytes().split(b"\n"):
        if line.startswith(b"# "):
            runs.append((os.fsdecode(line[2:]), []))
        elif line:
            runs[-1][1].append(line)
    return runs


def prepare_examples(folder):
    subprocess.run([ROOT / "examples" / "prepare_workspace.sh", folder / "workspace"], check=True)
    shutil.copy(ROOT / "examples" / "gear-pump.json", folder)
    shutil.copytree(ROOT / "examples" / "exchange", folder / "exchange")
    (folder / "options.txt").write_text(OPTIONS_FILE)
    for name in ("elsewhere", "packed", "broken"):
        (folder / name).mkdir()
    (folder / "broken" / "Gone.CATPart").symlink_to("nothing")
    part = folder / "workspace" / "Key.CATPart"
    for name in (b"elsewhere/Relief_Valve.CATPart", b"elsewhere/Key.CATPart", ODD_NAME):
        shutil.copy(part, folder / os.fsdecode(name))


def example_lines(program, folder):
    prepare_examples(folder)
    for arguments in (line.strip() for line in EXAMPLES.strip().split("\n")):
        printed = subprocess.run([program, *shlex.split(arguments), "--json"], cwd=folder, stdout=subprocess.PIPE,
                                 stderr=subprocess.DEVNULL, check=False)
        yield arguments + " --json", printed.stdout.split(b"\n")[:-1]


def commands_of(program, option):
    """The words of each command that takes an option, out of its completions."""
    text = subprocess.check_output([program, "--generate", "fish"], text=True)
    return [" ".join(re.findall(r"__fish_seen_subcommand_from ([\w-]+)", line))
            for line in text.split("\n") if f" -l {option} " in line]


def title_for(arguments, schemas):
    """Title of the schema for what a command prints; empty when there is none, None when it was not asked for JSON."""
    words = shlex.split(arguments)
    words = words[:words.index("--")] if "--" in words else words
    if "--json" not in words:
        return None
    fitting = [title for title in schemas if set(title.split()) <= set(words)]
    return max(fitting, key=lambda title: len(title.split()), default="")


def paths_in(value, path=""):
    """Every key of a line, as keys_of has them."""
    for key, inner in value.items():
        yield path + key
        for element in inner if isinstance(inner, list) else []:
            if isinstance(element, dict):
                yield from paths_in(element, f"{path}{key}[].")


class Check:
    def __init__(self, schemas):
        self.schemas = schemas
        self.validators = {title: jsonschema.Draft202012Validator(schema) for title, schema in schemas.items()}
        self.seen = {title: set() for title in schemas}
        self.from_catalogues = set()
        self.count = 0
        self.problems = []

    def line(self, title, line):
        """The object on a line."""
        if not title:
            raise ValueError("there is no schema for this command")
        value = json.loads(line.decode("utf-8"))
        error = jsonschema.exceptions.best_match(self.validators[title].iter_errors(value))
        if error:
            raise ValueError(f"{error.json_path}: {error.message}")
        self.seen[title].update(paths_in(value))
        self.count += 1
        return value

    def run(self, arguments, lines):
        title = title_for(arguments, self.schemas)
        if title and lines and "--catalogue" in arguments:
            self.from_catalogues.add(title)
        values = []
        for line in lines if title is not None else []:
            try:
                values.append(self.line(title, line))
            except ValueError as error:
                self.problems.append(f"{arguments}\n    {line.decode('utf-8', 'replace')}\n    {error}")
        return values

    def definitions(self, version):
        """The schemas by themselves: their version, and that a name means the same in all of them."""
        known = {}
        if f"prints the version of this page: `{version}`" not in PAGE.read_text("utf-8"):
            self.problems.append(f"docs/json.md does not say version {version}")
        for title, schema in self.schemas.items():
            self.validators[title].check_schema(schema)
            if schema["$id"] != f"https://vorntools.invalid/json/{version}/{file_of(title)}":
                self.problems.append(f"{file_of(title)}: $id {schema['$id']}, and the program says version {version}")
            for name, definition in schema.get("$defs", {}).items():
                if known.setdefault(name, definition) != definition:
                    self.problems.append(f"{file_of(title)}: {name} is not what it is elsewhere")

    def commands(self, program):
        for command in commands_of(program, "json"):
            if not any((title + " ").startswith(command + " ") for title in self.schemas):
                self.problems.append(f"{command} takes --json and has no schema")

    def unseen(self, program):
        for command in commands_of(program, "catalogue"):
            if command in self.schemas and command not in self.from_catalogues:
                self.problems.append(f"{command} --catalogue --json was not run")
        for title, schema in self.schemas.items():
            missing = [path for path, _ in keys_of(schema, schema) if path not in self.seen[title]]
            if missing:
                self.problems.append(f"{file_of(title)}: no line has {', '.join(missing)}")


def check(tests, program):
    if not jsonschema:
        print("not run: the package python3-jsonschema is not there")
        return NOT_RUN
    schemas = read_schemas()
    checked = Check(schemas)
    checked.commands(program)
    checked.definitions(subprocess.check_output([program, "--json-version"], text=True).strip())
    with tempfile.TemporaryDirectory() as folder:
        for arguments, lines in kept_lines(tests, Path(folder)):
            checked.run(arguments, lines)
        names = set()
        for arguments, lines in example_lines(program, Path(folder)):
            values = checked.run(arguments, lines)
            names.update(urllib.parse.unquote_to_bytes(value["document"]) for value in values if "document" in value)
            if not values:
                checked.problems.append(f"{arguments}: printed nothing")
    checked.unseen(program)
    if ODD_NAME not in names:
        checked.problems.append(f"no name can be turned back into {ODD_NAME}")
    if PAGE.read_text("utf-8") != page(schemas):
        checked.problems.append("docs/json.md is not made from these schemas: cmake/check_json.py --update")
    print("\n".join(checked.problems))
    print(f"{checked.count} lines meet {len(schemas)} schemas, {len(checked.problems)} problems")
    return 1 if checked.problems else 0


if __name__ == "__main__":
    if sys.argv[1:] == ["--update"]:
        PAGE.write_text(page(read_schemas()), "utf-8")
    elif len(sys.argv) == 3:
        sys.exit(check(Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()))
    else:
        sys.exit(__doc__)
