#!/usr/bin/env python3
"""Breaks the core's statements one at a time and looks whether the tests notice.

All faults are compiled into one build, each behind a question (tests/mutations/Mutant.h), so that a
fault costs a run of the tests that come to its place and no compilation. Called by ./test.
"""

import argparse
import concurrent.futures
import filecmp
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
from collections import defaultdict

sys.path.append("/usr/lib/python3/dist-packages")
from clang import cindex  # noqa: E402
from clang.cindex import CursorKind as Kind, TypeKind  # noqa: E402

OPERATORS = {
    "+": "Add", "-": "Subtract", "*": "Multiply", "/": "Divide", "%": "Remainder",
    "<": "Less", "<=": "AtMost", ">": "Greater", ">=": "AtLeast", "==": "Equal", "!=": "Unequal",
}
NUMBERS = {
    TypeKind.SHORT, TypeKind.USHORT, TypeKind.INT, TypeKind.UINT, TypeKind.LONG, TypeKind.ULONG,
    TypeKind.LONGLONG, TypeKind.ULONGLONG, TypeKind.FLOAT, TypeKind.DOUBLE, TypeKind.LONGDOUBLE,
}
FUNCTIONS = {Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONSTRUCTOR, Kind.DESTRUCTOR,
             Kind.FUNCTION_TEMPLATE, Kind.LAMBDA_EXPR}
EFFECTS = {Kind.CALL_EXPR, Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR,
           Kind.UNARY_OPERATOR, Kind.UNEXPOSED_EXPR, Kind.CXX_DELETE_EXPR}


class Source:
    """A source file, the places in it that can be broken, and the text with all faults in it."""

    def __init__(self, path, arguments, first, dropped):
        with open(path, "rb") as file:
            self.text = file.read()
        self.path = path
        self.next = first
        self.dropped = dropped
        self.faults = {}  # number: (line, what is done)
        self.edits = []  # (offset, closing or opening, order, bytes that go out, what comes in)
        self.order = 0
        unit = cindex.Index.create().parse(path, args=arguments)
        for cursor in unit.cursor.get_children():
            if cursor.location.file and cursor.location.file.name == path:
                self.walk(cursor, None)

    def wrong(self, cursor, what):
        """A number for a fault here, or None where the compiler refused it before."""
        number = self.next
        self.next += 1
        if number in self.dropped:
            return None
        self.faults[number] = (cursor.extent.start.line, what)
        return number

    def open(self, offset, text):
        self.order += 1
        self.edits.append((offset, 1, self.order, 0, text.encode()))

    def close(self, offset, text):
        self.order += 1
        self.edits.append((offset, 0, -self.order, 0, text.encode()))

    def wrap(self, cursor, before, after):
        # What is inside is walked later; it opens behind this and closes before it.
        self.open(cursor.extent.start.offset, before)
        self.close(cursor.extent.end.offset, after)

    def written(self, cursor):
        """The text of this cursor, empty where a macro made it."""
        start, end = cursor.extent.start, cursor.extent.end
        if not start.file or start.file.name != self.path or start.offset >= end.offset:
            return b""
        return self.text[start.offset:end.offset]

    def walk(self, cursor, function):
        if cursor.kind == Kind.STATIC_ASSERT:
            return
        if cursor.kind in FUNCTIONS:
            function = cursor
        if cursor.kind in FUNCTIONS | {Kind.VAR_DECL, Kind.IF_STMT} and self.is_constant(cursor):
            return
        if function is not None and self.written(cursor):
            self.break_here(cursor, function)
        children = list(cursor.get_children())
        if cursor.kind == Kind.CASE_STMT:
            children = children[1:]
        for child in children:
            self.walk(child, function)

    def is_constant(self, cursor):
        head = self.written(cursor).split(b"{")[0].split(b"=")[0].split(b"(")
        return b"constexpr" in head[0]

    def break_here(self, cursor, function):
        kind = cursor.kind
        if kind == Kind.BINARY_OPERATOR:
            self.break_operator(cursor)
        elif kind in (Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL):
            self.break_with(cursor, "Number", "one more")
        elif kind == Kind.CXX_BOOL_LITERAL_EXPR:
            self.break_with(cursor, "Condition", "the other")
        elif kind in (Kind.IF_STMT, Kind.WHILE_STMT):
            self.break_condition(next(cursor.get_children(), None))
        elif kind == Kind.CONDITIONAL_OPERATOR:
            self.break_condition(next(cursor.get_children(), None))
        elif kind == Kind.RETURN_STMT:
            self.break_return(cursor, function)
        elif kind == Kind.COMPOUND_STMT:
            for child in cursor.get_children():
                self.leave_out(child)

    def break_with(self, cursor, name, what):
        number = self.wrong(cursor, f"{self.written(cursor).decode()}: {what}")
        if number is not None:
            self.wrap(cursor, f"mutant::{name}({number}, ", ")")

    def break_condition(self, cursor):
        if cursor is None or not cursor.kind.is_expression() or not self.written(cursor):
            return
        number = self.wrong(cursor, f"{self.written(cursor).decode()}: the contrary")
        if number is not None:
            self.wrap(cursor, f"mutant::Condition({number}, static_cast<bool>(", "))")

    def break_return(self, cursor, function):
        value = next(cursor.get_children(), None)
        if value is None or not self.written(value) or function.kind == Kind.LAMBDA_EXPR:
            return
        kind = function.result_type.get_canonical().kind
        literal = value.kind in (Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL,
                                 Kind.CXX_BOOL_LITERAL_EXPR)
        if kind == TypeKind.BOOL and not literal:
            self.break_with(value, "Condition", "returned as the contrary")
        elif kind in NUMBERS and not literal:
            self.break_with(value, "Number", "returned as one more")

    def break_operator(self, cursor):
        left, right = list(cursor.get_children())
        if not self.written(left) or not self.written(right):
            return
        between = self.text[left.extent.end.offset:right.extent.start.offset]
        token = between.strip().decode()
        if token in ("&&", "||"):
            for side in (left, right):
                word = "true" if token == "&&" else "false"
                number = self.wrong(side, f"{self.written(side).decode()}: {word}")
                if number is not None:
                    self.wrap(side, f"(mutant::On({number}) || " if token == "&&" else
                              f"(!mutant::On({number}) && ", ")")
            return
        kinds = {side.type.get_canonical().kind for side in (left, right)}
        plain = NUMBERS | {TypeKind.BOOL, TypeKind.CHAR_S, TypeKind.UCHAR, TypeKind.SCHAR,
                           TypeKind.ENUM}
        if token not in OPERATORS or not kinds <= plain:
            return
        number = self.wrong(cursor, f"{self.written(cursor).decode()}: another than {token}")
        if number is None:
            return
        self.wrap(cursor, f"mutant::{OPERATORS[token]}({number}, ", ")")
        place = left.extent.end.offset + between.index(token.encode())
        self.order += 1
        self.edits.append((place, 2, self.order, len(token), b","))

    def leave_out(self, cursor):
        if cursor.kind not in EFFECTS or not self.written(cursor):
            return
        end = re.compile(rb"\s*;").match(self.text, cursor.extent.end.offset)
        if not end:
            return
        number = self.wrong(cursor, f"{self.written(cursor).decode()}: left out")
        if number is not None:
            self.open(cursor.extent.start.offset, "{ if (!mutant::On(%d)) " % number)
            self.close(end.end(), " }")

    def mutated(self):
        text, at = [], 0
        for offset, _, _, out, new in sorted(self.edits, key=lambda edit: edit[:3]):
            text += [self.text[at:offset], new]
            at = offset + out
        return b"".join(text + [self.text[at:]])


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          errors="replace", **options)


class Build:
    """A copy of the sources with the faults in it."""

    def __init__(self, project, place, folders):
        self.project, self.place = project, place
        self.tree, self.binaries = os.path.join(place, "source"), os.path.join(place, "build")
        self.folders = folders
        self.faults = {}  # number: (file, line, what)
        self.dropped = set()

    def copy_sources(self):
        """Brings the tree of an earlier run up to date: what has not changed is not built again."""
        names = run(["git", "ls-files", "-z"], cwd=self.project, check=True).stdout.split("\0")
        self.originals = {}
        for name in filter(None, names):
            source, copy = os.path.join(self.project, name), os.path.join(self.tree, name)
            if os.path.dirname(name) in self.folders and name.endswith(".cpp"):
                with open(source, "rb") as file:
                    self.originals[copy] = file.read()
            elif not os.path.exists(copy) or not filecmp.cmp(source, copy, shallow=False):
                os.makedirs(os.path.dirname(copy), exist_ok=True)
                shutil.copy(source, copy)

    def make(self):
        self.copy_sources()
        for path in self.originals:
            if not os.path.exists(path):  # for the build's lists of sources
                os.makedirs(os.path.dirname(path), exist_ok=True)
                open(path, "wb").close()
        cache = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
        configured = run(["cmake", "-S", self.tree, "-B", self.binaries, "-G", "Ninja",
                          "-DCMAKE_BUILD_TYPE=Debug", "-DVANTREL_SCREENS=OFF",
                          "-DVANTREL_BENCH=OFF", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
                          "-DCMAKE_CXX_FLAGS=-w -D_GLIBCXX_ASSERTIONS", *cache])
        if configured.returncode:
            sys.exit(configured.stdout)
        self.compile()

    def compile(self):
        """Builds; what the compiler refuses in a file is dropped, and the file is tried anew."""
        todo = sorted(self.originals)
        numbers = {path: 1 + 500 * i for i, path in enumerate(todo)}
        for _ in range(12):
            for path in todo:
                self.mutate(path, numbers[path])
            built = run(["cmake", "--build", self.binaries, "--", "-k", "0"])
            if built.returncode == 0:
                return
            todo = self.drop_refused(built.stdout)
            if not todo:
                break
        sys.exit("The mutated sources do not build:\n" + built.stdout[-4000:])

    def arguments(self, path):
        with open(os.path.join(self.binaries, "compile_commands.json")) as file:
            for entry in json.load(file):
                if entry["file"] == path:
                    words = entry["command"].split()
                    return [word for word in words if word.startswith(("-I", "-D", "-std"))]
        return None

    def mutate(self, path, first):
        with open(path, "rb") as file:
            before, moment = file.read(), os.stat(path).st_mtime_ns
        with open(path, "wb") as file:
            file.write(self.originals[path])
        arguments = self.arguments(path)
        self.faults = {n: f for n, f in self.faults.items() if f[0] != path}
        if arguments is None:  # of another system
            return
        source = Source(path, arguments, first, self.dropped)
        assert source.next - first <= 500, path
        for number, (line, what) in source.faults.items():
            self.faults[number] = (path, line, what)
        after = b'#include "tests/mutations/Mutant.h"\n' + source.mutated()
        with open(path, "wb") as file:
            file.write(after)
        if after == before:
            os.utime(path, ns=(moment, moment))

    def drop_refused(self, log):
        refused = {(m[1], int(m[2])) for m in re.finditer(r"^(/\S+?):(\d+):\d+: error:", log, re.M)}
        touched = set()
        for path, line in refused:
            if path not in self.originals:
                continue
            with open(path, "rb") as file:
                text = file.read().split(b"\n")[line - 1]
            for number in re.findall(rb"mutant::\w+\((\d+)", text):
                self.dropped.add(int(number))
                touched.add(path)
        return sorted(touched)

    def tests(self):
        listed = run(["ctest", "--test-dir", self.binaries, "--show-only=json-v1"], check=True)
        found = []
        for test in json.loads(listed.stdout[listed.stdout.index("{"):])["tests"]:
            settings = {p["name"]: p["value"] for p in test.get("properties", [])}
            if "command" in test:
                found.append((test["name"], test["command"], settings.get("WORKING_DIRECTORY")))
        return found


def passes(test, environment, limit):
    """Whether the test passes within so many seconds, and how long it took."""
    _, command, folder = test
    began = time.monotonic()
    process = subprocess.Popen(command, cwd=folder, env={**os.environ, **environment},
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               start_new_session=True)
    try:
        good = process.wait(limit) == 0
    except subprocess.TimeoutExpired:
        good = False
    try:
        os.killpg(process.pid, 9)  # with what it has started
    except ProcessLookupError:
        pass
    process.wait()
    return good, time.monotonic() - began


def reached_by(test):
    with tempfile.NamedTemporaryFile() as log:
        good, seconds = passes(test, {"VANTREL_MUTANTS_REACHED": log.name}, 300)
        log.seek(0)
        data = log.read()
    numbers = {int.from_bytes(data[i:i + 4], sys.byteorder) for i in range(0, len(data), 4)}
    return good, seconds, numbers


def is_caught(number, tests):
    """Whether a test fails, and fails again: a busy machine may upset or delay one that is good."""
    fault = {"VANTREL_MUTANT": str(number)}
    for test, seconds in tests:
        limit = 2 + 10 * seconds
        if not passes(test, fault, limit)[0] and not passes(test, fault, 3 * limit)[0]:
            return True
    return False


def survivors_of(report):
    """What survived in the run that wrote this report. A line's number may have changed since."""
    with open(report) as file:
        found = re.findall(r"^survives: (\S+?):\d+: (.*?)(?: \(no test comes here\))?$",
                           file.read(), re.M)
    return set(found)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folders", nargs="*", default=["link", "files", "chem", "settings"])
    parser.add_argument("--least", type=float, default=85, help="percent to be caught")
    parser.add_argument("--every", type=int, default=1, help="try each N-th fault only")
    parser.add_argument("--longest", type=float, default=5, help="leave out tests of more seconds")
    parser.add_argument("--only", metavar="REPORT",
                        help="try only what survived in this earlier run; the figures are theirs")
    options = parser.parse_args()
    project = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    build = Build(project, os.path.join(project, "build", "mutations"), options.folders)
    build.make()
    tests = build.tests()
    print(f"{len(build.faults)} faults ({len(build.dropped)} refused by the compiler), "
          f"{len(tests)} tests", flush=True)

    workers = concurrent.futures.ThreadPoolExecutor(os.cpu_count())
    visitors = defaultdict(list)
    for test, (good, seconds, numbers) in zip(tests, workers.map(reached_by, tests)):
        if not good:
            sys.exit(f"{test[0]} fails without a fault")
        if seconds <= options.longest:
            for number in numbers:
                visitors[number].append((test, seconds))
    for some in visitors.values():
        some.sort(key=lambda each: each[1])

    names = {number: (os.path.relpath(path, build.tree), " ".join(what.split()))
             for number, (path, _, what) in build.faults.items()}
    chosen = sorted(build.faults)[::options.every]
    if options.only:
        earlier = survivors_of(options.only)
        chosen = [number for number in chosen if names[number] in earlier]
    verdicts = workers.map(lambda number: is_caught(number, visitors[number]), chosen)
    counts = defaultdict(lambda: [0, 0])
    for number, caught in zip(chosen, verdicts):
        name, what = names[number]
        count = counts[name.split("/")[0]]
        count[0] += caught
        count[1] += 1
        if not caught:
            reach = "" if visitors[number] else " (no test comes here)"
            print(f"survives: {name}:{build.faults[number][1]}: {what}{reach}", flush=True)
    few = False
    for folder, (caught, all_) in sorted(counts.items()):
        percent = 100 * caught / all_
        few = few or percent < options.least
        print(f"{folder}: {caught} of {all_} caught, {percent:.1f} %")
    sys.exit(1 if few else 0)


if __name__ == "__main__":
    main()
