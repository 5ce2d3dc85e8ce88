#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""scripts/tidy.py <build folder>

clang-tidy on every source of src/ and local/, with the commands that the build folder has for them.
In CI, which has thirty minutes for everything, on every third unit only, others on the next day.

Most of its work goes into the headers of Qt, which every file includes. So files of one folder that
are compiled alike are read as one; where they can't be, since two of them have something of the same
name, they are read in two halves.
"""

import json
import os
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from datetime import date
from pathlib import Path

SOURCE_DIR = Path(__file__).resolve().parents[1]
WORK_DIR = SOURCE_DIR / "build/lint"
ROOMS = ("src", "local")
SHARES = 3  # of the units, one of which CI reads
TOGETHER = 12  # files, so that there is work for every processor
OWN_FILES = r"/(src|local)/[A-Za-z_/]+\.(h|cpp)$"
# A precompiled header is of no use to another compiler than its own.
DROPPED = re.compile(r" -Winvalid-pch -include \S*cmake_pch\.hxx")


def commands(build):
    """Compile command of every source of our own, without its outputs and its input."""
    found = {}
    for entry in json.loads((build / "compile_commands.json").read_text(encoding="utf-8")):
        path = Path(entry["file"])
        if not path.is_relative_to(SOURCE_DIR) or "build" in path.relative_to(SOURCE_DIR).parts:
            continue
        if path.relative_to(SOURCE_DIR).parts[0] not in ROOMS:
            continue
        words = shlex.split(DROPPED.sub("", entry["command"]))
        flags, skip = [], False
        for word in words[1:]:
            if skip:
                skip = False
            elif word in ("-o", "-MF", "-MT"):
                skip = True
            elif word not in ("-c", "-MD", entry["file"]):
                flags.append(word)
        found[path] = (entry["directory"], tuple(flags))
    return found


def groups(found):
    alike = {}
    for path, command in sorted(found.items()):
        alike.setdefault((path.parent, command), []).append(path)
    for (_, command), paths in alike.items():
        for start in range(0, len(paths), TOGETHER):
            yield command, paths[start:start + TOGETHER]


def tidy(name, command, paths):
    """Whether nothing was found, and what clang-tidy printed."""
    unit = WORK_DIR / f"{name}.cpp"
    unit.write_text("".join(f'#include "{path}"\n' for path in paths), encoding="utf-8")
    directory, flags = command
    run = subprocess.run(
        ["clang-tidy", "--quiet", f"--header-filter={OWN_FILES}",
         "--checks=-bugprone-suspicious-include", f"--config-file={SOURCE_DIR}/.clang-tidy", str(unit),
         "--", *flags, "-Wno-unknown-warning-option", "-Wno-unused-command-line-argument"],
        cwd=directory, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)
    crash = f"clang-tidy crashed on {unit}:\n{run.stderr}" if run.returncode < 0 else ""
    return run.returncode == 0, run.stdout + crash


def check(name, command, paths):
    """As tidy, of files that may not go together."""
    clean, output = tidy(name, command, paths)
    if clean or len(paths) == 1 or "clang-diagnostic-error" not in output:
        return clean, output
    middle = len(paths) // 2
    halves = [check(f"{name}_1", command, paths[:middle]),
              check(f"{name}_2", command, paths[middle:])]
    return all(ok for ok, _ in halves), "".join(text for _, text in halves)


def main():
    WORK_DIR.mkdir(parents=True, exist_ok=True)
    found = commands(Path(sys.argv[1]).resolve())
    known = {path for room in ROOMS for path in (SOURCE_DIR / room).rglob("*.cpp")}
    if missing := sorted(path for path in known - found.keys() if "data" not in path.parts):
        print("not compiled by this build:", *missing, sep="\n  ")
        sys.exit(1)
    units = list(enumerate(groups(found)))
    if os.environ.get("CI"):
        today = date.today().toordinal() % SHARES
        units = [unit for unit in units if unit[0] % SHARES == today]
        print(f"every {SHARES}rd unit from unit {today} on")
    failed = 0
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        runs = [pool.submit(check, f"unit{number}", command, paths)
                for number, (command, paths) in units]
        for unit in runs:
            clean, output = unit.result()
            if not clean:
                failed += 1
                print(output, flush=True)
    print(f"{sum(len(paths) for _, (_, paths) in units)} files, {failed} units with findings")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
