# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""The program as a screen reader sees it."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from .waiting import PATIENCE, wait_until  # noqa: E402

Atspi.set_timeout(10_000, 15_000)

BUTTON = "push button"
ENTRY = "text"
LIST = "list"
DOCUMENT = "document frame"
LIST_ITEM = "list item"
LABEL = "label"


class Node:
    """One object of the tree. It may be gone by the time it is asked, which raises GLib.Error."""

    def __init__(self, accessible):
        self._accessible = accessible

    @property
    def role(self):
        return self._accessible.get_role_name()

    @property
    def name(self):
        return self._accessible.get_name() or ""

    @property
    def description(self):
        return self._accessible.get_description() or ""

    @property
    def children(self):
        nodes = []
        for index in range(self._accessible.get_child_count()):
            child = self._accessible.get_child_at_index(index)
            if child is not None:
                nodes.append(Node(child))
        return nodes

    def has_state(self, name):
        return self._accessible.get_state_set().contains(getattr(Atspi.StateType, name.upper()))

    @property
    def focusable(self):
        return self.has_state("focusable")

    @property
    def focused(self):
        return self.has_state("focused")

    @property
    def showing(self):
        return self.has_state("showing") and self.has_state("visible")

    @property
    def enabled(self):
        return self.has_state("enabled")

    @property
    def text(self):
        """What the object's text interface holds, its paragraphs as lines; None without one."""
        interface = self._accessible.get_text_iface()
        if interface is None:
            return None
        count = Atspi.Text.get_character_count(interface)
        text = Atspi.Text.get_text(interface, 0, count)
        return text.replace("\u2029", "\n").replace("\u2028", "\n")

    @property
    def actions(self):
        if self._accessible.get_action_iface() is None:
            return []
        return [self._accessible.get_action_name(index)
                for index in range(self._accessible.get_n_actions())]

    def act(self, name="Press"):
        """What a screen reader does when its user presses the object."""
        index = [action.lower() for action in self.actions].index(name.lower())
        if not self._accessible.do_action(index):
            raise AssertionError(f"{self} refused {name}")

    def take_focus(self):
        if not self._accessible.get_component_iface().grab_focus():
            raise AssertionError(f"{self} refused the focus")

    @property
    def centre(self):
        box = self._accessible.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
        return box.x + box.width // 2, box.y + box.height // 2

    @property
    def box(self):
        """(x, y, width, height) on the screen."""
        box = self._accessible.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
        return box.x, box.y, box.width, box.height

    def walk(self):
        """This object and everything below it, depth first."""
        self._accessible.clear_cache()
        yield self
        for child in self.children:
            yield from child.walk()

    def __str__(self):
        return f"{self.role} {self.name!r}"


class Program:
    """The accessible objects of one process."""

    def __init__(self, pid):
        self.pid = pid

    def root(self):
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for index in range(desktop.get_child_count()):
            try:
                application = desktop.get_child_at_index(index)
                if application is not None and application.get_process_id() == self.pid:
                    return Node(application)
            except GLib.Error:
                continue
        return None

    def nodes(self):
        """Everything that shows; empty while the program is not on the bus."""
        while True:
            root = self.root()
            try:
                return [node for node in root.walk() if node.showing] if root else []
            except GLib.Error:
                # An object went away while the walk was on its way to it: look again.
                continue

    def find_all(self, role=None, name=None, matching=None):
        found = []
        for node in self.nodes():
            try:
                if ((role is None or node.role == role) and (name is None or node.name == name)
                        and (matching is None or matching(node))):
                    found.append(node)
            except GLib.Error:
                continue
        return found

    def find(self, role=None, name=None, matching=None):
        found = self.find_all(role, name, matching)
        return found[0] if found else None

    def wait_for(self, role=None, name=None, matching=None, seconds=PATIENCE):
        return wait_until(lambda: self.find(role, name, matching),
                          lambda: f"{role or 'anything'} {name or ''} in:\n{self.dump()}", seconds)

    def wait_gone(self, role=None, name=None, matching=None, seconds=PATIENCE):
        wait_until(lambda: not self.find(role, name, matching),
                   lambda: f"{role or 'anything'} {name or ''} to go from:\n{self.dump()}", seconds)

    def focused(self):
        """The innermost one: what holds the focus within itself says that it has it, too."""
        found = self.find_all(matching=lambda node: node.focused and node.role != "frame")
        return found[-1] if found else None

    def dump(self):
        root = self.root()
        lines = []

        def add(node, depth):
            text = node.text
            lines.append("  " * depth + str(node) + (f" text={text[:80]!r}" if text else "")
                         + (" focusable" if node.focusable else "")
                         + (" FOCUSED" if node.focused else "")
                         + ("" if node.showing else " hidden")
                         + (f" actions={node.actions}" if node.actions else ""))
            for child in node.children:
                add(child, depth + 1)

        try:
            if root:
                add(root, 0)
        except GLib.Error as error:
            lines.append(f"(the tree changed: {error})")
        return "\n".join(lines) or "(not on the accessibility bus)"
