#!/usr/bin/env python3
"""Changes one place of the library at a time and looks whether a test notices.

    run.py [--seed SEED] [N]

Draws N changes (default 40) by lot over all files of the library, in a copy of the tree below build/mutants, builds
what each one touches and runs the native tests until one fails. What does not compile is not counted. A run with the
same seed goes on where the last one was stopped. Survivors are printed with file, line and change; those that
accepted.txt lists with a reason, by file and change, are told apart. Status 1 when another one survived.
"""

import argparse
import json
import os
import random
import re
import shutil
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
COPY = ROOT / "build" / "mutants" / "tree"
BUILD = ROOT / "build" / "mutants" / "build"
FOLDERS = ["foundation", "cache", "session", "links", "properties"]
ACCEPTED = Path(__file__).with_name("accepted.txt")
TEST_SECONDS = 300


def code_mask(text):
    """One byte a character: 1 where it is code, 0 in comments, texts and preprocessor lines."""
    mask = bytearray(b"\1" * len(text))
    literal = r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'|^[ \t]*#(?:[^\n]*\\\n)*[^\n]*'
    for match in re.finditer(literal, text, re.S | re.M):
        mask[match.start():match.end()] = bytes(len(match.group()))
    return mask


# Name, pattern, replacement of the whole match. Patterns see code only; a None drops the match.
SIMPLE = [
    ("condition", r"(?<=[\w\])]) == (?=[\w(!&*-])", " != "),
    ("condition", r"(?<=[\w\])]) != (?=[\w(!&*-])", " == "),
    ("condition", r"(?<=[\w\])]) && ", " || "),
    ("condition", r"(?<=[\w\])]) \|\| ", " && "),
    ("bound", r"(?<=[\w\])]) < (?=[\w(&*-])", " <= "),
    ("bound", r"(?<=[\w\])]) <= ", " < "),
    ("bound", r"(?<=[\w\])]) > (?=[\w(&*-])", " >= "),
    ("bound", r"(?<=[\w\])]) >= ", " > "),
    ("arithmetic", r"(?<=[\w\])]) \+ (?=[\w(*])", " - "),
    ("arithmetic", r"(?<=[\w\])]) - (?=[\w(*])", " + "),
    ("constant", r"(?<![\w.])0(?![\w.])", "1"),
    ("constant", r"(?<![\w.])1(?![\w.])", "2"),
    ("constant", r"(?<![\w.])[2-9](?![\w.])", lambda m: str(int(m.group()) + 1)),
    ("constant", r"(?<![\w.])[1-9]\d+(?![\w.])", lambda m: str(int(m.group()) - 1)),
    ("constant", r"\btrue\b", "false"),
    ("constant", r"\bfalse\b", "true"),
    ("flag", r"\? 1 : 0", "? 0 : 1"),
    ("code", r"\breturn S_OK\b", "return E_FAIL"),
    ("code", r"\breturn E_FAIL\b", "return S_OK"),
    ("code", r"\bFAILED\(", "SUCCEEDED("),
    ("code", r"\bSUCCEEDED\(", "FAILED("),
    ("negation", r"(?<=[( ])!(?=[\w(])", ""),
    ("assignment", r"(?<=[\w\])]) \+= ", " = "),
    ("jump", r"\bbreak;", ";"),
    ("jump", r"\bcontinue;", ";"),
]
CALL_LINE = re.compile(r"^(?:[\w:]+(?:\.|->))*[\w:]+(?:<[\w:, *]+>)?\(.*\);$")
STATEMENT = re.compile(r"^(?!return|break|continue|case|using|static|const|class|struct|throw|if|for|while|else|delete)"
                       r"[\w(*&:.\[\]>-]+.*;$")
GUARD_LINE = re.compile(r"^if \((.*)\) (return\b.*;|[\w:.>-]+\(.*\);|continue;|break;)$")
CONDITION = re.compile(r"\bif \(")
TWO_ARGUMENTS = re.compile(r"(?<=\()([\w.>\[\]-]+), ([\w.>\[\]-]+)(?=[,)])")


def closing(text, at):
    """Position of the parenthesis that closes the one at a position."""
    depth = 0
    for i in range(at, len(text)):
        depth += {"(": 1, ")": -1}.get(text[i], 0)
        if depth == 0:
            return i
    return -1


def changes_of(name, text):
    """(name, begin, end, replacement, kind) of every change of a file."""
    mask = code_mask(text)

    def is_code(begin, end):
        return all(mask[begin:end])

    for kind, pattern, replacement in SIMPLE:
        for match in re.finditer(pattern, text):
            if is_code(match.start(), match.end()):
                new = replacement(match) if callable(replacement) else replacement
                yield name, match.start(), match.end(), new, kind
    for match in CONDITION.finditer(text):
        end = closing(text, match.end() - 1)
        if end > 0 and is_code(match.start(), match.end()) and "=" not in text[match.end():end].split("(")[0].split(" "):
            yield name, match.end() - 1, end + 1, f"(!({text[match.end():end]}))", "turned condition"
    for match in TWO_ARGUMENTS.finditer(text):
        if is_code(match.start(), match.end()) and match.group(1) != match.group(2):
            yield name, match.start(), match.end(), f"{match.group(2)}, {match.group(1)}", "exchanged arguments"
    # A text of the program, its last letter another one.
    for match in re.finditer(r'"((?:\\.|[^"\\\n])+)"', text):
        before = text[text.rfind("\n", 0, match.start()) + 1:match.start()]
        if "#" not in before and "//" not in before and not before.lstrip().startswith("*") and match.group(1)[-2:-1] != "\\":
            last = "x" if match.group(1)[-1] != "x" else "y"
            yield name, match.end() - 2, match.end() - 1, last, "text"
    yield from changes_of_lines(name, text, mask)


def changes_of_lines(name, text, mask):
    lines = []
    at = 0
    for line in text.split("\n"):
        begin = at + len(line) - len(line.lstrip())
        lines.append((begin, at + len(line), line.strip()))
        at += len(line) + 1
    for i, (begin, end, line) in enumerate(lines):
        # Inside functions only.
        if begin >= len(mask) or not mask[begin] or not text[text.rfind("\n", 0, begin) + 1:begin]:
            continue
        if CALL_LINE.match(line):
            yield name, begin, end, ";", "call left out"
        if GUARD_LINE.match(line):
            yield name, begin, end, ";", "guard left out"
        if i + 1 < len(lines) and STATEMENT.match(line) and STATEMENT.match(lines[i + 1][2]):
            other_begin, other_end, other = lines[i + 1]
            yield name, begin, other_end, other + " " + line, "order of statements"


def all_changes():
    found = []
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix in (".cpp", ".h"):
                name = str(path.relative_to(ROOT))
                found += changes_of(name, path.read_text(encoding="utf-8"))
    return found


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
                          **options)


def prepare():
    """The copy of the tree, as it stands here, and its build."""
    COPY.mkdir(parents=True, exist_ok=True)
    listed = run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT).stdout.split("\0")
    wanted = {name for name in listed if name and (ROOT / name).is_file()}
    for name in wanted:
        source, target = ROOT / name, COPY / name
        if not target.exists() or target.read_bytes() != source.read_bytes():
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, target)
    for path in COPY.rglob("*"):
        if path.is_file() and str(path.relative_to(COPY)) not in wanted:
            path.unlink()
    if not (BUILD / "build.ninja").exists():
        configured = run(["cmake", "-S", COPY, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
                          "-DCMAKE_CXX_FLAGS=-O0 -w", "-DCMAKE_CXX_COMPILER=g++"])
        if configured.returncode:
            sys.exit(configured.stdout)
    built = build()
    if built.returncode:
        sys.exit(built.stdout[-4000:])


def build():
    return run(["ninja", "-C", BUILD, "vorntools_tests", "vorntools_program"])


def suites_near(name):
    """Suites of the test files in the folder that mirrors the changed file's, those of the same topic first."""
    suites = {}
    words = set(re.findall(r"[a-z]+", re.sub(r"([A-Z])", r" \1", Path(name).stem).lower())) - {"vorn", "tools"}
    for path in sorted((ROOT / "tests" / name.split("/")[0]).glob("*_test.cpp")):
        near = len(words & set(re.findall(r"[a-z]+", re.sub(r"([A-Z])", r" \1", path.stem).lower())))
        for suite in re.findall(r"^TEST(?:_F|_P)?\((\w+),", path.read_text(encoding="utf-8"), re.M):
            suites[suite] = max(near, suites.get(suite, 0))
    return [suite for suite, _ in sorted(suites.items(), key=lambda pair: -pair[1])]


def passes(arguments):
    tests = BUILD / "bin" / "vorntools_tests"
    try:
        done = run([tests, "--gtest_fail_fast", "--gtest_brief=1", *arguments], timeout=TEST_SECONDS, cwd=BUILD)
    except subprocess.TimeoutExpired:
        return False
    return done.returncode == 0


def survives(name):
    near = suites_near(name)
    if near:
        selected = ":".join(f"{suite}.*:*/{suite}.*" for suite in near)
        if not passes([f"--gtest_filter={selected}"]):
            return False
        return passes([f"--gtest_filter=-{selected}"])
    return passes([])


def describe(text, change):
    name, begin, end, new, kind = change
    line = text.count("\n", 0, begin) + 1
    first = text.rfind("\n", 0, begin) + 1
    last = text.find("\n", end)
    old_line = " ".join(text[first:last].split())
    new_line = " ".join((text[first:begin] + new + text[end:last]).split())
    return {"file": name, "line": line, "kind": kind, "old": old_line, "new": new_line}


def try_change(change):
    """None when the change does not compile, else its description with whether it survived."""
    name, begin, end, new, _ = change
    text = (ROOT / name).read_text(encoding="utf-8")
    target = COPY / name
    target.write_text(text[:begin] + new + text[end:], encoding="utf-8")
    try:
        if build().returncode:
            return None
        return {**describe(text, change), "survived": survives(name)}
    finally:
        target.write_text(text, encoding="utf-8")


def reason_for(result):
    """The reason that accepted.txt gives for a survivor: a line "FILE: OLD => NEW", then the reason, indented."""
    wanted = f"{result['file']}: {result['old']} => {result['new']}"
    lines = ACCEPTED.read_text(encoding="utf-8").split("\n") if ACCEPTED.exists() else []
    for line, reason in zip(lines, lines[1:]):
        if line == wanted:
            return reason.strip()
    return ""


def report(seed, results):
    survivors = [result for result in results if result["survived"]]
    unexplained = 0
    for result in survivors:
        reason = reason_for(result)
        unexplained += 0 if reason else 1
        print(f"{result['file']}:{result['line']}: {result['kind']}{': ' + reason if reason else ''}\n"
              f"    - {result['old']}\n    + {result['new']}")
    print(f"Seed {seed}: of {len(results)} changes {len(results) - len(survivors)} were noticed, {len(survivors)} "
          f"survived, {unexplained} of them without a reason")
    return unexplained


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("count", nargs="?", type=int, default=40, metavar="N")
    parser.add_argument("--seed", type=int, default=None)
    options = parser.parse_args()
    seed = options.seed if options.seed is not None else int(time.time())
    state = ROOT / "build" / "mutants" / f"{seed}.json"
    results, drawn = json.loads(state.read_text()) if state.exists() else ([], 0)
    print(f"Seed {seed}" + (f", going on behind {len(results)}" if results else ""), flush=True)
    prepare()
    changes = all_changes()
    random.Random(seed).shuffle(changes)
    while len(results) < options.count and drawn < len(changes):
        result = try_change(changes[drawn])
        drawn += 1
        if result is None:
            continue
        results.append(result)
        state.write_text(json.dumps([results, drawn]))
        if result["survived"]:
            print(f"survived: {result['file']}:{result['line']}: {result['kind']}: {result['new']}", flush=True)
    sys.exit(1 if report(seed, results) else 0)


if __name__ == "__main__":
    main()
