#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""scripts/run.sh: service and client together, on desktops of several kinds."""

import os
import re
import signal
from pathlib import Path

from support import desktop, session
from support.accessibility import Program as AccessibleProgram
from support.browser import NotingBrowser
from support.case import SIGN_IN, SystemTest, main
from support.processes import BUILD_FOLDER, SOURCE_FOLDER, Program
from support.waiting import wait_until


def descendants(pid):
    """{pid: name} of everything that a process has started and that still runs."""
    found = {}
    for task in Path(f"/proc/{pid}/task").glob("*/children"):
        try:
            children = task.read_text().split()
        except OSError:
            continue
        for child in children:
            try:
                found[int(child)] = Path(f"/proc/{child}/comm").read_text().strip()
            except OSError:
                continue
            found.update(descendants(int(child)))
    return found


class Run(SystemTest):
    def run_script(self, **more):
        environment = self.environment(VELTO_RUN_BUILD=BUILD_FOLDER, **more)
        environment.pop("QT_QUICK_BACKEND")
        return self.run_with(environment)

    def run_with(self, environment):
        program = Program("run.sh", [SOURCE_FOLDER / "scripts/run.sh"], environment)
        self.programs.append(program)
        return program

    def pid_of(self, script, name):
        def find():
            self.assertTrue(script.running(), script.log)
            return next((pid for pid, comm in descendants(script.pid).items() if comm == name),
                        None)

        return wait_until(find, lambda: f"{name} under run.sh, which printed:\n{script.log}")

    def wait_for_velto(self, script):
        pid = self.pid_of(script, "velto")
        desktop.wait_for_window(pid)
        return pid

    def end_client(self, script, pid):
        """The client ends; then so does all that the script started for it."""
        others = descendants(script.pid)
        os.kill(pid, signal.SIGTERM)
        self.assertEqual(script.wait(), 0, script.log)
        self.assert_gone(others)

    def assert_gone(self, processes):
        wait_until(lambda: not [pid for pid, name in processes.items() if self.runs(pid, name)],
                   lambda: f"the end of {processes}")

    @staticmethod
    def runs(pid, name):
        try:
            stat = Path(f"/proc/{pid}/stat").read_text()
        except OSError:
            return False
        return f"({name})" in stat and not re.search(r"\) Z ", stat)

    def test_with_a_session_bus_and_a_keyring(self):
        script = self.run_script()
        velto = self.wait_for_velto(script)
        service = self.pid_of(script, "velto-local")
        AccessibleProgram(velto).wait_for(name=SIGN_IN)
        self.assertEqual(script.count("bringing one up"), 0, script.log)
        self.assertIn("velto-local answers at http://127.0.0.1:", script.output)
        self.assertTrue((self.data_home / "velto-local").is_dir())
        self.assertTrue(self.runs(service, "velto-local"))
        self.end_client(script, velto)

    def test_the_end_of_the_script_is_the_end_of_all(self):
        script = self.run_script()
        self.wait_for_velto(script)
        started = descendants(script.pid)
        self.assertIn("velto-local", started.values())
        script.signal(signal.SIGTERM)
        script.wait()
        self.assert_gone(started)

    def test_without_a_session_bus_it_brings_one_up_and_the_sign_in_lasts(self):
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        browser = NotingBrowser(self.data_home, self.folder)
        environment = self.environment(VELTO_RUN_BUILD=BUILD_FOLDER, XDG_RUNTIME_DIR=runtime)
        for name in ("DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "GNOME_KEYRING_CONTROL"):
            environment.pop(name, None)

        script = self.run_with(environment)
        velto = self.wait_for_velto(script)
        script.wait_for_line("no session bus here: bringing one up for this run")
        # Its accessible objects are on the other bus: all there is are keys.
        wait_until(lambda: self.press_return_until_opened(browser), "the sign-in to begin")
        session.request("GET", session.decide(browser.wait_for_url()))
        script.wait_for_line("[AuthClient] login: success")
        self.assertIsNone(desktop.stored_token(), "the token is in the other keyring")
        self.end_client(script, velto)

        script = self.run_with(environment)
        velto = self.wait_for_velto(script)
        script.wait_for_line("[AuthClient] refresh: success")
        self.end_client(script, velto)

    @staticmethod
    def press_return_until_opened(browser):
        if browser.was_opened():
            return True
        desktop.press_key("Return")
        return False

    def test_a_second_run_brings_the_first_one_forward(self):
        script = self.run_script()
        velto = self.wait_for_velto(script)
        window = desktop.windows_of(velto)[0]
        desktop.minimise(window)
        wait_until(lambda: not desktop.windows_of(velto), "the window to be minimised")
        again = self.run_script()
        self.assertEqual(again.wait(), 0, again.log)
        self.assertIn("velto runs in this session already", again.output)
        wait_until(lambda: desktop.active_window() == window, "the window to come forward")
        self.end_client(script, velto)

    def test_without_a_display_it_says_so(self):
        environment = self.environment(VELTO_RUN_BUILD=BUILD_FOLDER)
        environment.pop("DISPLAY")
        script = self.run_with(environment)
        self.assertNotEqual(script.wait(), 0)
        self.assertIn("no display", script.output)


if __name__ == "__main__":
    main()
