#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Runs benchmarks and compares them with their goals: run.py OUTPUT.json PROGRAM...

A program prints lines "RESULT <name> <number>"; what else it prints is passed on. The table goes
to standard output, the numbers as one flat object to OUTPUT.json. Ends with 1 when a program
failed, a goal has no result or a result misses its goal.
"""

import json
import math
import operator
import subprocess
import sys
from pathlib import Path

COMPARE = {"<": operator.lt, "<=": operator.le, ">": operator.gt, ">=": operator.ge}
GOALS = Path(__file__).resolve().parent / "goals.json"


def run(program):
    """The results of one program and whether it ended well."""
    results = {}
    with subprocess.Popen([program], stdout=subprocess.PIPE, text=True) as process:
        for line in process.stdout:
            words = line.split()
            if len(words) == 3 and words[0] == "RESULT":
                results[words[1]] = float(words[2])
            else:
                print(line, end="", flush=True)
    return results, process.returncode == 0


def verdict(name, value, goals):
    """The goal as text and whether the value meets it: "yes", "NO" or "" where there is none."""
    goal = goals.get(name)
    if goal is None:
        return "", ""
    text = " and ".join(f"{sign} {limit:g}" for sign, limit in goal.items())
    met = value is not None and math.isfinite(value) and all(
        COMPARE[sign](value, limit) for sign, limit in goal.items())
    return text, "yes" if met else "NO"


def print_table(rows):
    header = ("name", "value", "goal", "met")
    widths = [max(len(row[i]) for row in rows + [header]) for i in range(4)]
    for row in [header] + rows:
        print("  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip())


def main():
    if len(sys.argv) < 2:
        sys.exit("usage: run.py OUTPUT.json PROGRAM...")
    goals = json.loads(GOALS.read_text())
    results, failed = {}, []
    for program in sys.argv[2:]:
        found, well = run(program)
        results.update(found)
        if not well:
            failed.append(program)
    rows = []
    for name in list(results) + [name for name in goals if name not in results]:
        value = results.get(name)
        rows.append((name, "no result" if value is None else f"{value:.6g}",
                     *verdict(name, value, goals)))
    print_table(rows)
    Path(sys.argv[1]).write_text(json.dumps(results, indent=2) + "\n")
    for program in failed:
        print(f"failed: {program}")
    sys.exit(1 if failed or any(row[3] == "NO" for row in rows) else 0)


if __name__ == "__main__":
    main()
