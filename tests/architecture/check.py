#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Checks the rules of docs/architecture.md that a compiler can't: check.py SOURCE_FOLDER

Prints one line "file:line: [rule] what is wrong" for each violation and ends with 1 if there is one.
"""

import re
import sys
from pathlib import Path

# Whom a room may use directly. It may also use whatever those may use: an arrow that the long way
# round allows doesn't tangle anything.
ARROWS = {
    "base": [],
    "platform": ["base"],
    "keyring": ["platform"],
    "service": ["platform"],
    "auth": ["service"],
    "agent": ["service"],
    "workspace": ["service"],
    "chat": ["auth", "agent", "workspace"],
    "controls": ["base"],
    "markdown/model": [],
    "markdown/images": ["base"],
    "markdown": ["markdown/model", "markdown/images", "controls"],
    "presentation/code": [],
    "presentation/media": ["service", "markdown/images"],
    "presentation/video": ["controls"],
    "presentation": ["presentation/code", "presentation/media", "presentation/video", "chat",
                     "markdown", "controls"],
    "agent/screens": ["chat", "markdown", "controls"],
    "workspace/screens": ["chat", "markdown", "controls"],
    "shell": ["presentation", "agent/screens", "workspace/screens"],
    "app": ["shell"],
    "local": ["base"],
}
# Targets that are not named after the folder of their room.
TARGETS = {"highlighter": "presentation/code", "media": "presentation/media",
           "video": "presentation/video"}
# These link without Qt Quick, so that they can be tested and measured without a window.
WINDOWLESS = ["base", "platform", "keyring", "service", "auth", "agent", "workspace", "chat",
              "markdown/model", "markdown/images", "presentation/code", "presentation/media",
              "local"]
# Libraries that stay behind the interface of these rooms.
OWNED_HEADERS = {
    r"curl/": ["service"],
    r"(libsecret|gio)/": ["keyring"],
    r"cmark-gfm": ["markdown/model"],
    r"mpv/": ["presentation/video"],
    # QML asks for one; what it gets refuses every request.
    r"QNetworkAccessManager|QNetworkRequest|QNetworkReply": ["shell", "app"],
}
QUICK_HEADER = re.compile(r"(Qt(Quick|Qml)\w*/)?(QQuick|QQml|QJS|qqml\.h|qquick)")
LONGEST = {".cpp": 700, ".h": 300, ".qml": 350}
SPDX_SUFFIXES = {".cpp", ".h", ".qml", ".py", ".sh", ".cmake", ".in"}
SPDX_NAMES = {"CMakeLists.txt", "Makefile"}
TEXT_SUFFIXES = SPDX_SUFFIXES | {".md", ".txt", ".json", ".ini", ".desktop", ".xml", ".service"}
SKIPPED_FOLDERS = {".git", "build", "node_modules", "__pycache__"}
MACHINE_PATH = re.compile(r"(?<![\w.$}~*-])/(home/(?!someone\b)|root/|Users/|mnt/)\w")
SKIPPED_TEST = re.compile(r"\b(GTEST_SKIP|QSKIP|DISABLED_\w+|QEXPECT_FAIL)\b")
COLOR_NAMES = set("""aliceblue antiquewhite aqua azure beige black blue brown coral crimson cyan
darkblue darkgray darkgreen darkgrey darkred dimgray firebrick fuchsia gold gray green grey hotpink
indigo ivory khaki lavender lightblue lightgray lightgreen lightgrey lime linen magenta maroon navy
olive orange orangered orchid pink plum purple red royalblue salmon seagreen sienna silver skyblue
slategray snow steelblue tan teal tomato turquoise violet wheat white whitesmoke yellow""".split())
COLOR = re.compile(r"""["']\#[0-9a-fA-F]{3,8}["']|\bQt\.(rgba|hsla|hsva|color)\s*\(""")
COLOR_BINDING = re.compile(r"[cC]olor\w*(\s+\w+)?\s*:")
STRING = re.compile(r"""["'](\w+)["']""")
# A file whose looks don't follow the desktop says so and why.
OWN_COLORS = re.compile(r"^\s*// Colours of its own: \w+", re.M)
TEXT_ELEMENT = re.compile(r"(?<![\w.])(?:\w+\.)?(Text|Label|TextEdit|TextArea)\s*\{")


def reachable(room):
    found, todo = {room}, list(ARROWS.get(room, []))
    while todo:
        name = todo.pop()
        if name not in found:
            found.add(name)
            todo += ARROWS[name]
    return found


def without_comments(text):
    """The text with comments blanked out, line numbers and strings kept."""
    pattern = r"""//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])*'"""

    def blank(match):
        found = match.group()
        return found if found[0] in "\"'" else re.sub(r"[^\n]", " ", found)

    return re.sub(pattern, blank, text, flags=re.S)


def without_strings(text):
    return re.sub(r"""(["'])(?:\\.|(?!\1)[^\\\n])*\1""", '""', text)


class Checker:
    def __init__(self, root):
        self.root = Path(root).resolve()
        self.violations = []
        self.files = [path for path in sorted(self.root.rglob("*")) if self.is_ours(path)]
        self.modules = self.qml_modules()

    def is_ours(self, path):
        parts = path.relative_to(self.root).parts
        return path.is_file() and not SKIPPED_FOLDERS & set(parts) and "data" not in parts[:-1]

    def report(self, path, line, rule, what):
        self.violations.append(f"{path.relative_to(self.root)}:{line}: [{rule}] {what}")

    def room_of(self, path):
        """The room a file or folder belongs to, None outside src/ and local/."""
        try:
            parts = path.resolve().relative_to(self.root).parts
        except ValueError:
            return None
        if parts[:1] == ("local",):
            return "local"
        if parts[:1] != ("src",) or len(parts) < 2:
            return None
        return self.room_named("/".join(parts[1:]))

    @staticmethod
    def room_named(path):
        parts = path.split("/")
        if len(parts) > 1 and "/".join(parts[:2]) in ARROWS:
            return "/".join(parts[:2])
        return parts[0] if parts[0] in ARROWS else None

    def qml_modules(self):
        modules = {}
        for path in self.files:
            if path.name == "CMakeLists.txt" and self.room_of(path):
                for uri in re.findall(r"\b(?:QML_URI|URI)\s+([\w.]+)", path.read_text()):
                    modules[uri] = self.room_of(path)
        return modules

    def check_arrow(self, path, line, target, what):
        room = self.room_of(path)
        if target and target not in reachable(room):
            self.report(path, line, "arrow", f"{room} may not use {target} ({what})")

    def check_includes(self, path, text):
        room = self.room_of(path)
        for match in re.finditer(r'^\s*#\s*include\s+(["<])([^">]+)[">]', text, re.M):
            name, line = match.group(2), text.count("\n", 0, match.start(2)) + 1
            near = path.parent / name
            if match.group(1) == '"' and (near.is_file() or name.startswith(".")):
                self.check_arrow(path, line, self.room_of(near), name)
            else:
                full = name.removeprefix("src/")
                first = full.split("/")[0]
                target = self.room_named(full) if "/" in full else None
                self.check_arrow(path, line, target, name)
                if first == "tests":
                    self.report(path, line, "arrow", f"{room} may not use the tests ({name})")
            for header, owners in OWNED_HEADERS.items():
                if re.search(rf"(^|/)({header})", name) and room not in owners:
                    self.report(path, line, "owner", f"only {' and '.join(owners)} may use {name}")
            if room in WINDOWLESS and QUICK_HEADER.match(name):
                self.report(path, line, "window", f"{room} links without Qt Quick ({name})")

    def check_uses(self, path, text):
        for block in re.finditer(r"velto_add_room\((.*?)\)", text, re.S):
            uses = re.search(r"\bUSES\b(.*?)(?=\b[A-Z_]{4,}\b|\Z)", block.group(1), re.S)
            names = uses.group(1).split() if uses else []
            links = re.findall(r"\bvelto::(\w+)", block.group(1))
            line = text.count("\n", 0, block.start()) + 1
            for name in names + [link.removesuffix("_plugin") for link in links]:
                target = TARGETS.get(name, name if name in ARROWS else name.replace("_", "/"))
                if target in ARROWS:
                    self.check_arrow(path, line, target, "in CMakeLists.txt")
                else:
                    self.report(path, line, "arrow", f"there is no room {name}")

    def check_imports(self, path, text):
        for match in re.finditer(r"^\s*import\s+(\"[^\"]+\"|[\w.]+)", text, re.M):
            name, line = match.group(1), text.count("\n", 0, match.start(1)) + 1
            if name.startswith('"'):
                self.check_arrow(path, line, self.room_of(path.parent / name.strip('"')), name)
            elif name in self.modules:
                self.check_arrow(path, line, self.modules[name], name)
            elif name.lower().startswith("velto"):
                self.report(path, line, "arrow", f"no room has the module {name}")
            elif name == "QtNetwork" or name.startswith("QtWebEngine"):
                self.report(path, line, "owner", f"{name}: only service speaks HTTP")

    def own_elements(self, path, text):
        """The parts of controls that this file sees by their bare names."""
        if re.search(r"^\s*import\s+QtQuick\.(Controls|Templates)[\w.]*\s*$", text, re.M):
            return set()
        imports = re.findall(r"^\s*import\s+([\w.]+)", text, re.M)
        if "controls" in [self.room_of(path)] + [self.modules.get(name) for name in imports]:
            return {part.stem for part in (self.root / "src/controls").glob("*.qml")}
        return set()

    def check_text_format(self, path, text):
        settled = self.own_elements(path, text)
        for match in TEXT_ELEMENT.finditer(text):
            depth, own, position = 1, [], match.end()
            while depth and position < len(text):
                char = text[position]
                depth += {"{": 1, "}": -1}.get(char, 0)
                if depth == 1:
                    own.append(char)
                position += 1
            own = "".join(own)
            if match.group(0).rstrip("{ \n") in settled and "textFormat" not in own:
                continue
            if not re.search(r"\btextFormat\s*:\s*\w+\.PlainText\b", own):
                line = text.count("\n", 0, match.start()) + 1
                self.report(path, line, "plain-text",
                            f"{match.group(1)} without textFormat: PlainText fetches remote images")

    def check_colors(self, path, text):
        if self.room_of(path) in ("controls", None):
            return
        for number, line in enumerate(text.splitlines(), 1):
            named = {name.lower() for name in STRING.findall(line)} & COLOR_NAMES
            if COLOR.search(line) or (named and COLOR_BINDING.search(line)):
                self.report(path, number, "colour", "literal colours live in src/controls")

    def check_any_text(self, path, text):
        lines = text.splitlines()
        if path.suffix in SPDX_SUFFIXES or path.name in SPDX_NAMES:
            head = "\n".join(lines[:3])
            for tag in ("SPDX-FileCopyrightText: 2026 The velto authors",
                        "SPDX-License-Identifier: MIT"):
                if tag not in head:
                    self.report(path, 1, "spdx", f"no {tag.split(':')[0]}")
        limit = LONGEST.get(path.suffix)
        if limit and len(lines) > limit:
            self.report(path, len(lines), "length", f"{len(lines)} lines, {limit} at most")
        for number, line in enumerate(lines, 1):
            if MACHINE_PATH.search(line):
                self.report(path, number, "path", "a path of one machine")
            if path.suffix in (".cpp", ".h", ".qml") and SKIPPED_TEST.search(line):
                self.report(path, number, "skip", "no test is skipped")

    def check_readmes(self):
        folders = [self.root / "src" / name for name in ARROWS] + [
            folder for folder in (self.root / "src").iterdir() if folder.is_dir()]
        folders += [self.root / name for name in
                    ("local", "tests", "bench", "fuzz", "scripts", "packaging", "translations")]
        for folder in sorted(set(folders)):
            if folder.is_dir() and not (folder / "README.md").is_file():
                self.report(folder, 1, "readme", "a room needs a README.md")

    def check_file(self, path):
        if not (path.suffix in TEXT_SUFFIXES or path.name in SPDX_NAMES or path.name == "run"):
            return
        text = path.read_text(encoding="utf-8")
        self.check_any_text(path, text)
        if path.suffix == ".qml":
            plain = without_comments(text)
            self.check_text_format(path, without_strings(plain))
            if not OWN_COLORS.search(text):
                self.check_colors(path, plain)
        if self.room_of(path) is None:
            return
        if path.suffix in (".cpp", ".h"):
            self.check_includes(path, text)
        elif path.suffix == ".qml":
            self.check_imports(path, without_comments(text))
        elif path.name == "CMakeLists.txt":
            self.check_uses(path, re.sub(r"#[^\n]*", "", text))

    def run(self):
        for path in self.files:
            self.check_file(path)
        self.check_readmes()
        return self.violations


def main():
    if len(sys.argv) != 2 or not (Path(sys.argv[1]) / "src").is_dir():
        sys.exit("usage: check.py SOURCE_FOLDER")
    checker = Checker(sys.argv[1])
    violations = checker.run()
    for violation in violations:
        print(violation)
    print(f"{len(checker.files)} files, {len(violations)} violations")
    sys.exit(1 if violations else 0)


if __name__ == "__main__":
    main()
