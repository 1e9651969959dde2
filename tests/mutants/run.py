#!/usr/bin/env python3
"""Changes one place of the library at a time and looks whether a test notices.

    run.py [--seed SEED] [--again] [N]

Draws N changes (default 40) by lot over all files of the library and tries each in a copy of the tree below
build/mutants: builds what it touches and runs the tests that reach it until one fails, cheap ones first. Which tests
reach which line is found out before, by running each of them once in a library that records where it passes. What does
not compile is not counted, nor what compiles to the same program: without optimization or, asked of survivors only,
with it. What no test reaches survives.

The lot depends on the seed and the changed lines alone: an edit elsewhere leaves it as it is. A run with the same seed
goes on where the last one was stopped, and with --again tries once more what survived without a reason. Survivors are
printed with file, line and change; those that accepted.txt lists with a reason, by file and change, are told apart.
Status 1 when another one survived.
"""

import argparse
import bisect
import hashlib
import json
import os
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
WORK = ROOT / "build" / "mutants"
COPY = WORK / "tree"
BUILD = COPY / "build" / "dev"  # as deep as in a checkout, so that ccache knows what was built there
LIBRARY = BUILD / "lib" / "libVornTools.so"
TESTS = BUILD / "bin" / "vorntools_tests"
FOLDERS = ["foundation", "cache", "session", "links", "properties"]
ACCEPTED = Path(__file__).with_name("accepted.txt")
MEMORY = 8 << 30  # of a test run: a changed loop may never end

# Linked into each module that holds code of the library. The compiler calls it at each block of instructions; the
# offsets of those that were reached go to a file of the process and module in the folder VORNTOOLS_REACH.
RECORDER = r"""
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

extern const char __ehdr_start[] __attribute__((visibility("hidden")));
static char reached[1 << 25];

__attribute__((visibility("hidden"))) void __sanitizer_cov_trace_pc(void) {
    unsigned long offset = (unsigned long)((const char*)__builtin_return_address(0) - __ehdr_start);
    if (offset < sizeof reached) reached[offset] = 1;
}

__attribute__((destructor)) static void write_reached(void) {
    const char* folder = getenv("VORNTOOLS_REACH");
    Dl_info module;
    char name[4096];
    if (!folder || !dladdr(__ehdr_start, &module)) return;
    snprintf(name, sizeof name, "%s/%d.%s", folder, (int)getpid(), strrchr(module.dli_fname, '/') + 1);
    FILE* file = fopen(name, "w");
    for (unsigned long offset = 0; file && offset < sizeof reached; ++offset)
        if (reached[offset]) fprintf(file, "%lx\n", offset);
    if (file) fclose(file);
}
"""
# Changed code may draw warnings, but the one of members that are not made in the order of their list; what reads beyond
# the end of a list is noticed. Tests are not linked again for another library.
CONFIGURATION = """
set(CMAKE_LINK_DEPENDS_NO_SHARED ON)
function(record_reach)
    set_property(SOURCE ${library_sources} DIRECTORY ${PROJECT_SOURCE_DIR} TARGET_DIRECTORY vorntools_tests
        APPEND PROPERTY COMPILE_OPTIONS -Wno-error -Werror=reorder -fsanitize-coverage=trace-pc -D_GLIBCXX_ASSERTIONS)
    target_link_libraries(VornTools PRIVATE @RECORDER@)
    target_link_libraries(vorntools_tests PRIVATE @RECORDER@)
endfunction()
cmake_language(DEFER CALL record_reach)
"""


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
# Statements that do no more than: make or assign one variable, empty one, append to one, tell journal or error list.
WRITE = re.compile(r"^((?:const |static |constexpr |unsigned )*[\w:]+(?:<.*>)?[ *&]+)?([A-Za-z_][\w.>-]*)(?:\[.*\])?"
                   r"( = [^()]*|\{\}|\(k\w+\))?;$")
CLEAR = re.compile(r"^(?:clear\(([\w.>-]+)\)|([\w.>-]+?)(?:\.|->)(?:RemoveAll|clear|reset)\(\));$")
APPEND = re.compile(r"^([\w.>-]+?)(?:\.|->)(?:Append|append|push_back)\([\w.]+\);$")
JOURNAL = re.compile(r"^\w*frame\.(?:write|writeInDebug)\(.*\);$")
ERRORS = re.compile(r"^\w*frame\.(?:badInput|missing|callFailed|platformFailed)\(.*\);$")
FRAME = re.compile(r"^JournalFrame frame\(.*\);$")
# Gives the value of one variable to another.
MOVE = re.compile(r"^\*?([\w.]+) = (?:std::move\()?([\w.]+(?:\[\d\])?)(?:\)|\.detach\(\))?;$")
# Declares a member that is made of nothing or a constant; a plain one does nothing when it is made and when it ends.
MEMBER = re.compile(r"^[\w:<>,*& ]+[ *&](m_\w+)(?:\[\w+\])?(?: = [\w:.\"-]+|\{\})?;$")
PLAIN = re.compile(r"^(?:(?:const )?(?:bool|int|double|HRESULT|CATUnicodeString|CATListValCATUnicodeString|std::string"
                   r"|std::string_view|std::size_t|std::uint\d+_t) |.*[*&] ?(?:const )?m_)")
CONSTANT = re.compile(r"^ = (?:-?[\d.]+|\"[^\"]*\"|true|false|nullptr|k[A-Z]\w*|S_OK|E_FAIL)$")
# Declarations of a class's methods.
METHOD = re.compile(r"^(?:void .*|[\w:<>*& ]+ \w+\((?:const )?[\w:<>]+(?: |[&*]+ )\w+(?:, .*)?\)(?: const)?"
                    r"|.* = (?:default|delete));$")
CONDITION = re.compile(r"\bif \(")
# What takes its arguments in any order.
SYMMETRIC = re.compile(r"(?:\(std::(?:min|max)\)|std::(?:min|max)(?:<[\w:]+>)?|_mm_(?:or|and)_si128|areEqual|isSameName"
                       r"|haveSameBytes)\($")
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
        if is_code(match.start(), match.end()) and match.group(1) != match.group(2) and \
                not SYMMETRIC.search(text[:match.start()][-40:]):
            yield name, match.start(), match.end(), f"{match.group(2)}, {match.group(1)}", "exchanged arguments"
    # A text of the program, its last letter another one.
    for match in re.finditer(r'"((?:\\.|[^"\\\n])+)"', text):
        before = text[text.rfind("\n", 0, match.start()) + 1:match.start()]
        if "#" not in before and "//" not in before and not before.lstrip().startswith("*") and match.group(1)[-2:-1] != "\\":
            # A small number looks the same in many notations: in front of its place.
            at = match.end() - (4 if match.group(1).endswith("%d") else 2)
            if at > match.start():
                yield name, at, at + 1, "x" if text[at] != "x" else "y", "text"
    yield from changes_of_lines(name, text, mask)


def written_by(line):
    """What a line writes that does nothing else, what it writes there, and whether it is new; None for other lines."""
    clear = CLEAR.match(line)
    if clear:
        return clear.group(1) or clear.group(2), "", False
    write = WRITE.match(line)
    return (write.group(2), write.group(3) or "", bool(write.group(1))) if write else None


def names(what, where):
    variable = re.split(r"\.|->", what)[0]
    return re.search(r"(?<![\w.>])" + re.escape(variable) + r"\b", where)


def are_members_in_any_order(line, other, text):
    """Whether it makes no difference which of two members lies in front: one of them is plain, and no constructor in
    the text makes one of the other. (Where a constructor makes both, an exchange does not compile.)"""
    members = [MEMBER.match(line), MEMBER.match(other)]
    if not all(members) or not (PLAIN.match(line) or PLAIN.match(other)):
        return False
    first, second = (member.group(1) for member in members)
    text = text.replace("{", "(").replace("}", ")")
    return not any(names(used, text[match.end():closing(text, match.end() - 1)])
                   for made, used in ((first, second), (second, first))
                   for match in re.finditer(rf"\b{made}\(", text))


def are_alike_in_any_order(line, other):
    """Whether the lines tell that nobody can see which comes first: neither names what the other one writes, and they
    do nothing else; or one makes a variable of a constant, which the other cannot know; or one tells the journal, the
    other one the error list."""
    moves = [MOVE.match(line), MOVE.match(other)]
    if all(moves):
        (to, source), (to_other, source_other) = (move.groups() for move in moves)
        apart = not source.startswith(source_other) and not source_other.startswith(source)
        if apart and not names(to, other) and not names(to_other, line):
            return True
    if (JOURNAL.match(line) and ERRORS.match(other)) or (ERRORS.match(line) and JOURNAL.match(other)):
        return True
    first, second = written_by(line), written_by(other)
    if any(write and write[2] and write[0].startswith("m_") for write in (first, second)):
        return False  # members are made in their order
    if METHOD.match(line) and METHOD.match(other):
        return True
    if first and second:
        return first[0] != second[0] and not names(first[0], second[1]) and not names(second[0], first[1])
    appended = [APPEND.match(text) for text in (line, other)]
    if all(appended):
        return appended[0].group(1) != appended[1].group(1)
    for write, beside in ((first, other), (second, line)):
        if not write or names(write[0], beside):
            continue
        variable, value, is_new = write
        if is_new and (not value or CONSTANT.match(value)):
            return True
        # Journal and error list know nothing of outputs.
        if variable.startswith("o_") and (not value or CONSTANT.match(value)) and \
                any(told.match(beside) for told in (JOURNAL, ERRORS, FRAME)):
            return True
    return False


def changes_of_lines(name, text, mask):
    source = (COPY / name).with_suffix(".cpp")
    constructors = text + (source.read_text(encoding="utf-8") if name.endswith(".h") and source.exists() else "")
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
        if i + 1 < len(lines) and STATEMENT.match(line) and STATEMENT.match(lines[i + 1][2]) and \
                not are_alike_in_any_order(line, lines[i + 1][2]) and \
                not are_members_in_any_order(line, lines[i + 1][2], constructors):
            other_begin, other_end, other = lines[i + 1]
            yield name, begin, other_end, other + " " + line, "order of statements"


def all_changes():
    """(key, line, change) of every change in the copy. The key is the change itself: file, lines, where and what."""
    found = []
    for folder in FOLDERS:
        for path in sorted((COPY / folder).rglob("*")):
            if path.suffix not in (".cpp", ".h"):
                continue
            text = path.read_text(encoding="utf-8")
            seen = {}
            for change in changes_of(str(path.relative_to(COPY)), text):
                told = describe(text, change)
                same = (told["file"], told["old"], told["new"], change[1] - text.rfind("\n", 0, change[1]))
                seen[same] = seen.get(same, 0) + 1
                found.append(("|".join(map(str, (*same, seen[same]))), change))
    return found


def drawn(seed, changes):
    return sorted(changes, key=lambda pair: hashlib.sha256(f"{seed}|{pair[0]}".encode()).digest())


def describe(text, change):
    name, begin, end, new, kind = change
    line = text.count("\n", 0, begin) + 1
    first = text.rfind("\n", 0, begin) + 1
    last = text.find("\n", end)
    old_line = " ".join(text[first:last].split())
    new_line = " ".join((text[first:begin] + new + text[end:last]).split())
    return {"file": name, "line": line, "kind": kind, "old": old_line, "new": new_line}


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
                          **options)


def keep(path, value):
    """Writes a file that is whole or not there, whenever the run is stopped."""
    path.with_suffix(".new").write_text(json.dumps(value, indent=0))
    path.with_suffix(".new").replace(path)


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
        if path.is_file() and BUILD not in path.parents and str(path.relative_to(COPY)) not in wanted:
            path.unlink()
    if not (BUILD / "build.ninja").exists():
        configure()
    built = build("vorntools_program")
    if built.returncode:
        sys.exit(built.stdout[-4000:])


def configure():
    recorder = WORK / "recorder"
    recorder.with_suffix(".c").write_text(RECORDER)
    recorder.with_suffix(".cmake").write_text(CONFIGURATION.replace("@RECORDER@", f"{recorder}.o"))
    done = run(["gcc", "-O2", "-fPIC", "-c", f"{recorder}.c", "-o", f"{recorder}.o"])
    if not done.returncode:
        done = run(["cmake", "-S", COPY, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
                    "-DCMAKE_CXX_FLAGS=-O0 -g1", "-DCMAKE_CXX_COMPILER=g++", "-DVORNTOOLS_STANDALONE_PROGRAM=OFF",
                    f"-DCMAKE_PROJECT_VornTools_INCLUDE={recorder}.cmake"])
    if done.returncode:
        sys.exit(done.stdout)


def build(*more):
    return run(["ninja", "-C", BUILD, "vorntools_tests", *more])


def program():
    """What tells two programs apart: their bytes without the lines they come from."""
    digest = hashlib.sha256()
    for module in (LIBRARY, TESTS):
        bare = WORK / "bare"
        # The build's identity tells of lines, too.
        subprocess.run(["objcopy", "-S", "-R", ".note.gnu.build-id", module, bare], check=True)
        digest.update(bare.read_bytes())
    return digest.hexdigest()


def are_same_optimized(name, text, changed):
    """Whether two texts of a file make the same code in each source of the library that it goes into."""
    commands = run(["ninja", "-C", BUILD, "-t", "compdb"]).stdout
    commands = json.loads(commands[commands.index("["):commands.rindex("]") + 1])
    sources = [command for command in commands if "/VornTools.dir/" in command["output"] and
               f"/{name}\n" in run(["ninja", "-C", BUILD, "-t", "deps", command["output"]]).stdout]

    def code_of(command, content):
        (COPY / name).write_text(content, encoding="utf-8")
        words = shlex.split(command["command"])
        words = [word for word in words[:words.index("-MD")] if not word.startswith("-fsanitize-coverage")]
        code = WORK / "optimized.o"
        subprocess.run([*words, "-O2", "-g0", "-c", command["file"], "-o", code], cwd=BUILD, check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return code.read_bytes()
    return bool(sources) and all(code_of(source, text) == code_of(source, changed) for source in sources)


def test_names():
    names = []
    for line in run([TESTS, "--gtest_list_tests"]).stdout.split("\n"):
        if line.startswith("  "):
            names.append(suite + line.split("#")[0].strip())
        else:
            suite = line.split("#")[0].strip()
    return names


def run_tests(tests, seconds, environment=None):
    """Whether they pass within a time, which is the processor's own: others may use the machine as well."""
    def limit():
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
        resource.setrlimit(resource.RLIMIT_CPU, (int(seconds) + 1, int(seconds) + 1))
    process = subprocess.Popen(
        [TESTS, "--gtest_fail_fast", "--gtest_brief=1", "--gtest_filter=" + ":".join(tests)], cwd=BUILD,
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=environment,
        start_new_session=True, preexec_fn=limit)
    try:
        return process.wait(900) == 0
    except subprocess.TimeoutExpired:
        return False
    finally:
        # What a test started may outlive it.
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.wait()


def processor_time():
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def lines_of_blocks(module):
    """Offset of a block -> the lines of the library, as (file, line), that its instructions come from."""
    listing = subprocess.Popen(["objdump", "-d", "-l", "--no-show-raw-insn", module], stdout=subprocess.PIPE, text=True,
                               errors="replace")
    place = re.compile(r".*?/((?:%s)/[^/:]+):(\d+)" % "|".join(FOLDERS))
    blocks, lines, line, starts = {}, set(), None, False
    for row in listing.stdout:
        if row[0] in " \t":
            if starts:
                lines = blocks[row.split(":")[0].strip()] = set()
            starts = "call" in row and "<__sanitizer_cov_trace_pc>" in row
            if line:
                lines.add(line)
        elif row.endswith(">:\n"):
            lines = set()
        elif ":" in row:
            match = place.match(row)
            line = (match.group(1), int(match.group(2))) if match and "/tests/" not in row else None
    return blocks


class Reach:
    """Which tests reach which line, how long each takes; kept for as long as library and tests are the same."""

    def __init__(self):
        kept = WORK / "reach.json"
        now = program()
        known = json.loads(kept.read_text()) if kept.exists() else {}
        if known.get("program") != now:
            known = {"program": now, **self.record()}
            keep(kept, known)
        self.seconds = known["seconds"]
        self.lines = known["lines"]

    @staticmethod
    def record():
        print("Which test reaches what", flush=True)
        folder = WORK / "reached"
        of_library, of_tests = lines_of_blocks(LIBRARY), lines_of_blocks(TESTS)
        lines = {f"{name}:{line}": [] for at in (*of_library.values(), *of_tests.values()) for name, line in at}
        seconds = {}
        for test in test_names():
            shutil.rmtree(folder, ignore_errors=True)
            folder.mkdir()
            begin = processor_time()
            if not run_tests([test], 300, {**os.environ, "VORNTOOLS_REACH": str(folder)}):
                sys.exit(f"{test} fails in the unchanged library")
            seconds[test] = processor_time() - begin
            reached = set()
            for path in folder.iterdir():
                of_module = of_tests if path.suffix == f".{TESTS.name}" else of_library
                for offset in path.read_text().split():
                    reached |= of_module.get(offset, set())
            for name, line in reached:
                lines[f"{name}:{line}"].append(test)
        return {"seconds": seconds, "lines": lines}

    def tests_of(self, text, change):
        """The tests that can see a change, as lists to be run in this order."""
        name, begin, end, _, _ = change
        first, last = statement_around(text, begin, end)
        with_code = [self.lines[f"{name}:{line}"] for line in range(first, last + 1) if f"{name}:{line}" in self.lines]
        if not with_code:
            # A constant, a declaration: seen by what uses it.
            with_code = [tests for line, tests in self.lines.items() if line.startswith(name + ":")]
        reaching = {test for tests in with_code for test in tests}
        parts = self.batches(reaching)
        if name.endswith(".h"):
            # The tests may hold code of their own that comes from it.
            parts += self.batches(self.seconds.keys() - reaching)
        return parts

    def batches(self, tests):
        """The cheapest tests first, in parts of growing length."""
        parts, spent, most = [], 0, 0
        for test in sorted(tests, key=lambda test: self.seconds[test]):
            if not parts or spent > most:
                most, spent = 2 * most + 0.5, 0
                parts.append([])
            parts[-1].append(test)
            spent += self.seconds[test]
        return parts

    def notices(self, text, change):
        return any(not run_tests(part, 10 + 5 * sum(self.seconds[test] for test in part))
                   for part in self.tests_of(text, change))


def statement_around(text, begin, end):
    """First and last line of the statement, or the statements, that a change stands in."""
    mask = code_mask(text)
    ends = [i for i, letter in enumerate(text) if letter in ";{}" and mask[i]]
    at = bisect.bisect_left(ends, begin)
    first = ends[at - 1] + 1 if at else 0
    at = bisect.bisect_left(ends, end - 1)
    last = ends[at] if at < len(ends) else len(text)
    first += len(text[first:begin]) - len(text[first:begin].lstrip())
    return text.count("\n", 0, first) + 1, text.count("\n", 0, last) + 1


def try_change(change, reach, unchanged):
    """What became of it: "noticed", "survived", or why it does not count."""
    name, begin, end, new, _ = change
    target = COPY / name
    text = target.read_text(encoding="utf-8")
    changed = text[:begin] + new + text[end:]
    target.write_text(changed, encoding="utf-8")
    try:
        if build().returncode:
            return "does not compile"
        if program() == unchanged:
            return "same program"
        if reach.notices(text, change):
            return "noticed"
        return "same optimized program" if are_same_optimized(name, text, changed) else "survived"
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
    survivors = [result for result in results if result["outcome"] == "survived"]
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
    parser.add_argument("--again", action="store_true", help="try once more what survived without a reason")
    options = parser.parse_args()
    seed = options.seed if options.seed is not None else int(time.time())
    WORK.mkdir(parents=True, exist_ok=True)
    state = WORK / f"{seed}.json"
    outcomes = json.loads(state.read_text()) if state.exists() else {}
    print(f"Seed {seed}" + (f", {len(outcomes)} known" if outcomes else ""), flush=True)
    os.nice(19)
    prepare()
    unchanged = program()
    reach = Reach()
    results = []
    for key, change in drawn(seed, all_changes()):
        if len(results) == options.count:
            break
        result = describe((COPY / change[0]).read_text(encoding="utf-8"), change)
        again = options.again and outcomes.get(key) == "survived" and not reason_for(result)
        if again or key not in outcomes:
            outcomes[key] = try_change(change, reach, unchanged)
            keep(state, outcomes)
        if outcomes[key] in ("noticed", "survived"):
            results.append({**result, "outcome": outcomes[key]})
        if outcomes[key] == "survived":
            print(f"{len(results)}: survived: {result['file']}:{result['line']}: {result['kind']}: {result['new']}",
                  flush=True)
    sys.exit(1 if report(seed, results) else 0)


if __name__ == "__main__":
    main()
