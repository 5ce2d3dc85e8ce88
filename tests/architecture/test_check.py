#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""The checker must find what data/ holds: test_check.py

data/clean is a small tree without a violation; each folder of data/broken is laid over a copy of
it and must bring out exactly the violations that its file `expected` lists.
"""

import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent


def check(overlay=None):
    with tempfile.TemporaryDirectory() as folder:
        shutil.copytree(HERE / "data/clean", folder, dirs_exist_ok=True)
        if overlay:
            shutil.copytree(overlay, folder, dirs_exist_ok=True,
                            ignore=shutil.ignore_patterns("expected"))
        result = subprocess.run([sys.executable, HERE / "check.py", folder],
                                capture_output=True, text=True, check=False)
    return result.returncode, result.stdout.splitlines()[:-1], result.stderr


class CheckerTest(unittest.TestCase):
    def test_clean_tree_passes(self):
        self.assertEqual(check(), (0, [], ""))

    def test_a_folder_that_is_no_source_tree_fails(self):
        result = subprocess.run([sys.executable, HERE / "check.py", HERE / "data"],
                                capture_output=True, check=False)
        self.assertEqual(result.returncode, 1)

    def test_every_kind_of_violation_is_found(self):
        overlays = sorted((HERE / "data/broken").iterdir())
        self.assertGreater(len(overlays), 0)
        for overlay in overlays:
            with self.subTest(overlay.name):
                expected = (overlay / "expected").read_text().splitlines()
                status, violations, errors = check(overlay)
                self.assertEqual((violations, errors), (expected, ""))
                self.assertEqual(status, 1)


if __name__ == "__main__":
    unittest.main()
