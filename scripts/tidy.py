#!/usr/bin/env python3
"""Checks the code with clang-tidy; called by ./test.

Most of its time goes into what a file includes, so several files are checked as one unit, which reads its
headers once. Files that use a name for two things do not go together: their unit is divided.
"""

import concurrent.futures
import glob
import json
import os
import re
import shlex
import subprocess
import sys
from itertools import groupby

FOLDERS = ("base", "app", "settings", "link", "chem", "files", "history", "report", "screens", "platform",
           "program", "simulator", "tools")
OTHER_BUILDS = ("history/NoStore.cpp",)  # of a program without a history
FILES_IN_A_UNIT = 12
PROJECT = os.getcwd()
TREE = os.path.join(PROJECT, "build", "tidy")


def configure():
    """Without precompiled headers: each of them holds all of Qt's, and all of it would be walked through."""
    subprocess.run(["cmake", "--preset", "sanitize", "-B", TREE, "-DBUILD_TESTING=OFF",
                    "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON"], check=True, stdout=subprocess.DEVNULL)
    forms = glob.glob(os.path.join(PROJECT, "screens", "*", "*.ui"))
    headers = [f"screens/ui_{os.path.splitext(os.path.basename(form))[0]}.h" for form in forms]
    subprocess.run(["cmake", "--build", TREE, "--target", *headers, "--", "--quiet"], check=True)


def flags_and_file(entry):
    command = shlex.split(entry["command"])
    return command[1:command.index("-o")], entry["file"]


def units():
    """Files that are compiled alike, some at a time, with their flags."""
    with open(os.path.join(TREE, "compile_commands.json"), encoding="utf-8") as file:
        commands = [flags_and_file(entry) for entry in json.load(file)]
    own = [each for each in commands if os.path.relpath(each[1], PROJECT).split("/")[0] in FOLDERS]
    for flags, alike in groupby(own, key=lambda each: each[0]):
        files = [file for _, file in alike]
        for begin in range(0, len(files), FILES_IN_A_UNIT):
            yield flags, files[begin:begin + FILES_IN_A_UNIT]


def write_unit(files):
    """The text of all of them: what is included would not be analysed. Returns its name, and where each of
    its lines comes from."""
    name = os.path.join(TREE, os.path.relpath(files[0], PROJECT).replace("/", "-"))
    origins = [""]
    with open(name, "w", encoding="utf-8") as unit:
        for each in files:
            with open(each, encoding="utf-8") as file:
                lines = file.readlines()
            unit.writelines(lines)
            origins += [f"{each}:{number}:" for number in range(1, len(lines) + 1)]
    return name, origins


def check(unit):
    """What clang-tidy finds in the unit; empty where nothing."""
    flags, files = unit
    name, origins = write_unit(files)
    headers = f"^{PROJECT}/({'|'.join(FOLDERS)})/.*\\.h$"
    done = subprocess.run(
        ["clang-tidy", "--quiet", f"--header-filter={headers}", name, "--", *flags],
        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False)
    if done.returncode == 0:
        return ""
    if "clang-diagnostic-error" in done.stdout and len(files) > 1:
        half = len(files) // 2
        return check((flags, files[:half])) + check((flags, files[half:]))
    found = re.sub(re.escape(name) + r":(\d+):", lambda place: origins[int(place[1])], done.stdout)
    return found or f"{name}: clang-tidy ends with {done.returncode}\n"


def main():
    configure()
    wanted = list(units())
    checked = {os.path.relpath(file, PROJECT) for _, files in wanted for file in files}
    tracked = subprocess.run(["git", "ls-files", *[f"{each}/*.cpp" for each in FOLDERS]], check=True,
                             stdout=subprocess.PIPE, text=True).stdout.split()
    left = [file for file in tracked if file not in checked and "win32/" not in file
            and "_windows" not in file and file not in OTHER_BUILDS]
    if left:
        sys.exit("Not compiled here, and so not checked: " + " ".join(left))
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for found in pool.map(check, wanted):
            sys.stdout.write(found)
            failed = failed or bool(found)
    sys.exit(failed)


main()
