#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""What `cmake --install` puts where, and whether the desktop understands it."""

import configparser
import os
import re
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as xml
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ.get("VELTO_BUILD_DIR", SOURCE / "build/dev"))
CMAKE = os.environ.get("VELTO_CMAKE", "cmake")
NAME = "ltd.orbax.velto"
SIZES = (16, 24, 32, 48, 64, 128, 256)


def run(*command):
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, timeout=60)
    return done.returncode, done.stdout


def entry_of(file):
    parser = configparser.ConfigParser(interpolation=None, delimiters="=")
    parser.optionxform = str
    parser.read(file)
    return parser


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="velto-packaging.")
        cls.root = Path(cls.folder.name)
        status, output = run(CMAKE, "--install", BUILD, "--prefix", cls.root)
        if status != 0:
            raise AssertionError(output)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def share(self, path):
        return self.root / "share" / path

    def test_is_complete_and_holds_nothing_else(self):
        expected = {"bin/velto", "bin/velto-local", "libexec/velto/velto-keyring",
                    f"share/applications/{NAME}.desktop",
                    f"share/dbus-1/services/{NAME}.service", f"share/metainfo/{NAME}.metainfo.xml",
                    f"share/icons/hicolor/scalable/apps/{NAME}.svg",
                    f"share/icons/hicolor/symbolic/apps/{NAME}-symbolic.svg",
                    "lib/systemd/user/velto-local.service",
                    *(f"share/icons/hicolor/{size}x{size}/apps/{NAME}.png" for size in SIZES)}
        installed = {str(path.relative_to(self.root)) for path in self.root.rglob("*")
                     if path.is_file()}
        self.assertEqual(installed, expected)

    def test_programs_run_from_there(self):
        self.assertEqual(run(self.root / "bin/velto", "--version"),
                         (0, f"velto {os.environ['VELTO_VERSION']}\n"))

    def test_only_the_helper_needs_the_libraries_of_the_keyring(self):
        keyring = {"libsecret", "libgio", "libgobject"}
        self.assertEqual(self.libraries("bin/velto") & keyring, set())
        helper = self.libraries("libexec/velto/velto-keyring")
        self.assertLessEqual(keyring, helper)
        self.assertEqual({name for name in helper if name.startswith("libQt")}, {"libQt6Core"})

    def libraries(self, program):
        """What the program names as needed, without versions."""
        status, output = run("readelf", "--dynamic", self.root / program)
        self.assertEqual(status, 0, output)
        return {re.split(r"-2\.0|-1\b|\.so", name)[0]
                for name in re.findall(r"\(NEEDED\).*\[(.+)\]", output)}

    def test_desktop_entry_is_valid_and_takes_the_links(self):
        file = self.share(f"applications/{NAME}.desktop")
        self.assertEqual(run("desktop-file-validate", file), (0, ""))
        entry = entry_of(file)["Desktop Entry"]
        self.assertEqual(entry["MimeType"], f"x-scheme-handler/{NAME};")
        self.assertEqual(entry["Exec"], "velto %u")
        self.assertEqual(entry["DBusActivatable"], "true")
        self.assertEqual(entry["Icon"], NAME)

    def test_bus_file_starts_the_installed_program_without_a_window(self):
        service = entry_of(self.share(f"dbus-1/services/{NAME}.service"))["D-BUS Service"]
        self.assertEqual(service["Name"], NAME)
        program, option = service["Exec"].split()
        self.assertEqual(option, "--service")
        prefix = next(line.split("=", 1)[1] for line in
                      (BUILD / "CMakeCache.txt").read_text().splitlines()
                      if line.startswith("CMAKE_INSTALL_PREFIX:"))
        self.assertEqual(program, f"{prefix}/bin/velto")

    def test_description_is_valid_and_of_this_version(self):
        file = self.share(f"metainfo/{NAME}.metainfo.xml")
        status, output = run("appstreamcli", "validate", "--no-net", file)
        self.assertEqual(status, 0, output)
        component = xml.parse(file).getroot()
        self.assertEqual(component.findtext("id"), NAME)
        self.assertEqual(component.find("releases/release").get("version"),
                         os.environ["VELTO_VERSION"])

    def test_icons_have_the_sizes_of_their_folders(self):
        for size in SIZES:
            data = self.share(f"icons/hicolor/{size}x{size}/apps/{NAME}.png").read_bytes()
            width, height = (int.from_bytes(data[at:at + 4], "big") for at in (16, 20))
            self.assertEqual((width, height), (size, size))
        for kind in (f"scalable/apps/{NAME}", f"symbolic/apps/{NAME}-symbolic"):
            drawing = xml.parse(self.share(f"icons/hicolor/{kind}.svg")).getroot()
            self.assertEqual(drawing.tag, "{http://www.w3.org/2000/svg}svg")

    def test_unit_starts_the_local_service(self):
        unit = entry_of(self.root / "lib/systemd/user/velto-local.service")
        self.assertTrue(unit["Service"]["ExecStart"].endswith("/bin/velto-local"))


if __name__ == "__main__":
    os.environ.setdefault("VELTO_VERSION", "0.1.0")
    unittest.main(verbosity=2)
