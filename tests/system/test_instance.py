#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""One velto for each session: later starts, links, the life of the window."""

import signal

from support import bus, desktop, session
from support.accessibility import BUTTON
from support.browser import NotingBrowser
from support.case import SIGN_IN, SystemTest, Velto, main
from support.processes import VELTO, Program
from support.waiting import wait_until

KEEPS_RUNNING = "velto keeps running"
MOMENTS = 3


class InstanceTest(SystemTest):
    def setUp(self):
        super().setUp()
        self.bus = bus.connect()

    def assert_hands_over(self, base_url, *arguments, **more):
        again = self.start_again(base_url, *arguments, **more)
        self.assertEqual(again.wait(MOMENTS), 0)
        self.assertEqual(again.output, "")

    def wait_for_draft(self, velto, text):
        wait_until(lambda: velto.input().text == text,
                   lambda: f"the draft {text!r}, not {velto.input().text!r}")

    @staticmethod
    def wait_hidden(velto):
        wait_until(lambda: not desktop.windows_of(velto.pid), "the window to close")

    @staticmethod
    def wait_active(velto):
        """A window that was closed comes back as another one of the X server's."""
        def active_window():
            window = desktop.active_window()
            return window if window in desktop.windows_named("^velto$") else None

        velto.window = wait_until(active_window, "the window to come forward")

    def close(self, velto):
        """Closes the window for the first time, and reads what is said then."""
        desktop.activate(velto.window)
        desktop.close_window()
        velto.button("Close window").act()
        self.wait_hidden(velto)


class SecondStart(InstanceTest):
    def test_brings_a_window_behind_others_forward(self):
        service, velto = self.start_signed_in()
        other = Program("xev", ["xev", "-name", "elsewhere"], self.environment())
        self.programs.append(other)
        in_front = wait_until(lambda: desktop.windows_named("elsewhere"), "another window")[0]
        desktop.activate(in_front)
        self.assert_hands_over(service.base_url)
        self.wait_active(velto)
        self.assertEqual(desktop.windows_named("^velto$"), [velto.window])

    def test_brings_a_minimised_window_back(self):
        service, velto = self.start_signed_in()
        desktop.minimise(velto.window)
        self.wait_hidden(velto)
        self.assert_hands_over(service.base_url)
        self.wait_active(velto)

    def test_hands_its_links_over_in_order(self):
        service, velto = self.start_signed_in()
        self.assert_hands_over(service.base_url, "ltd.orbax.velto://new?text=first",
                               "LTD.orbax.velto://new?text=the%20second%2C%20%C3%BCber")
        self.wait_for_draft(velto, "the second, über")

    def test_passes_the_desktops_token_on(self):
        service, velto = self.start_signed_in()
        velto.end()
        heard = bus.Provider(bus.NAME, bus.PATH, """<node>
          <interface name="org.freedesktop.Application">
            <method name="Activate"><arg type="a{sv}"/></method>
          </interface></node>""")
        self.addCleanup(heard.leave)
        self.assert_hands_over(service.base_url, DESKTOP_STARTUP_ID="launcher_TIME42")
        self.assertEqual(heard.calls, [("Activate", ({
            "desktop-startup-id": "launcher_TIME42", "activation-token": "launcher_TIME42"},))])

    def test_of_several_at_the_same_instant_one_shows_a_window(self):
        service = self.start_service()
        environment = self.environment(VELTO_API_BASE_URL=service.base_url)
        starts = [Velto(environment) for _ in range(4)]
        self.programs += starts
        wait_until(lambda: sum(start.running() for start in starts) == 1, "three to end")
        first = next(start for start in starts if start.running())
        first.wait_for_window()
        first.button(SIGN_IN)
        self.assertEqual(len(desktop.windows_of(first.pid)), 1)
        for start in starts:
            if start is not first:
                self.assertEqual(start.wait(), 0)
                self.assertEqual(start.output, "")

    def test_takes_the_place_of_one_that_hangs(self):
        service, hung = self.start_signed_in()
        hung.signal(signal.SIGSTOP)
        velto = self.start_velto(service.base_url)
        velto.wait_for_line("the velto that runs doesn't answer: this one takes over")
        velto.wait_for_chat()
        hung.signal(signal.SIGCONT)
        hung.wait_for_line("another velto has taken over")
        self.assertEqual(hung.wait(), 0)
        self.assertTrue(velto.running())

    def test_after_a_crash_the_next_start_is_the_first(self):
        service, velto = self.start_signed_in()
        velto.kill()
        velto = self.start_velto(service.base_url)
        velto.wait_for_chat()
        self.assertEqual(velto.output.count("takes over"), 0)

    def test_after_the_end_the_next_start_is_the_first(self):
        service, velto = self.start_signed_in()
        bus.do_action(self.bus, "quit")
        self.start_velto(service.base_url).wait_for_chat()
        self.assertEqual(velto.wait(), 0)

    def test_without_a_session_bus_each_is_for_itself(self):
        service = self.start_service()
        for _ in range(2):
            velto = self.start_velto(service.base_url, DBUS_SESSION_BUS_ADDRESS="disabled:",
                                     XDG_RUNTIME_DIR=self.folder)
            self.assertTrue(velto.running())
        self.assertIsNone(bus.owner_of(self.bus))


class CommandLine(InstanceTest):
    def run_velto(self, *arguments, **more):
        program = Program("velto", [VELTO, *arguments], self.environment(**more))
        self.programs.append(program)
        return program.wait(), program.output

    def test_what_is_no_link_is_refused(self):
        for argument in ("https://example.com", "chat/1", "--tray", "ltd.orbax.veltox://new"):
            status, output = self.run_velto(argument)
            self.assertEqual(status, 2)
            self.assertIn(f"“{argument}” is neither an option nor a link of velto", output)
            self.assertIn("Usage: velto", output)

    def test_help_and_version_need_no_display(self):
        status, output = self.run_velto("--version", DISPLAY=":none")
        self.assertEqual(status, 0)
        self.assertRegex(output, r"^velto \d+\.\d+\.\d+$")
        status, output = self.run_velto("--help", DISPLAY=":none")
        self.assertEqual(status, 0)
        self.assertIn("ltd.orbax.velto://new?text=TEXT", output)


class Links(InstanceTest):
    def conversation(self, velto, text):
        """The id of a new conversation that holds the text."""
        known = self.ids()
        velto.send(text)
        velto.wait_for_reply(text)
        velto.wait_for_answer()
        return wait_until(lambda: [id for id in self.ids() if id not in known],
                          "the conversation on the service")[0]

    def ids(self):
        return [entry["id"] for entry in
                session.conversations(self.service.base_url, self.tokens.access)]

    def start_with_conversation(self, text):
        self.service, velto = self.start_signed_in()
        self.tokens = session.sign_in(self.service.base_url)
        return velto, self.conversation(velto, text)

    def test_a_start_with_a_conversation_opens_it(self):
        velto, first = self.start_with_conversation("remember the lighthouse")
        desktop.press_key("ctrl+n")
        wait_until(lambda: not velto.messages(), "the window to empty")
        self.conversation(velto, "remember the ferry")
        self.assertEqual(velto.end(), 0)
        velto = self.start_velto(self.service.base_url, [f"ltd.orbax.velto://chat/{first}"])
        velto.wait_for_chat()
        velto.wait_for_reply("remember the lighthouse")
        self.assertNotIn("ferry", str(velto.messages()))

    def test_a_start_with_a_text_shows_it_as_a_draft(self):
        velto, _ = self.start_with_conversation("remember the lighthouse")
        self.assertEqual(velto.end(), 0)
        velto = self.start_velto(self.service.base_url,
                                 ["ltd.orbax.velto://new?text=a%20new%20idea"])
        velto.wait_for_chat()
        self.wait_for_draft(velto, "a new idea")
        self.assertEqual(velto.messages(), [])
        wait_until(lambda: velto.input().focused, "the composer to have the focus")

    def test_a_text_waits_for_the_sign_in(self):
        self.service = self.start_service()
        browser = NotingBrowser(self.data_home, self.folder)
        velto = self.start_velto(self.service.base_url, ["ltd.orbax.velto://new?text=later"])
        velto.button(SIGN_IN).act()
        session.request("GET", session.decide(browser.wait_for_url()))
        velto.wait_for_chat()
        self.wait_for_draft(velto, "later")

    def test_links_to_the_running_program_act_at_once(self):
        velto, first = self.start_with_conversation("remember the lighthouse")
        bus.open_links(self.bus, "ltd.orbax.velto://new?text=draft")
        self.wait_for_draft(velto, "draft")
        wait_until(lambda: not velto.messages(), "the window to empty")
        bus.open_links(self.bus, f"ltd.orbax.velto://chat/{first}")
        velto.wait_for_reply("remember the lighthouse")
        self.wait_for_draft(velto, "draft")

    def test_an_empty_text_leaves_the_draft_alone(self):
        _, velto = self.start_signed_in()
        desktop.type_text("half a thought")
        bus.open_links(self.bus, "ltd.orbax.velto://new?text=")
        self.wait_for_draft(velto, "half a thought")
        wait_until(lambda: velto.input().focused, "the composer to have the focus")

    def test_junk_is_dropped_without_a_word(self):
        velto, _ = self.start_with_conversation("remember the lighthouse")
        before = velto.messages()
        for junk in ("ltd.orbax.velto:", "ltd.orbax.velto://", "ltd.orbax.velto://nowhere/1",
                     "ltd.orbax.velto://chat", "ltd.orbax.velto://chat/chat",
                     "ltd.orbax.velto://[", "ltd.orbax.velto:///chat/1"):
            self.assert_hands_over(self.service.base_url, junk)
        bus.open_links(self.bus, "", "no link", "ltd.orbax.velto://%zz/")
        # Behind them all in the same queue.
        bus.open_links(self.bus, "ltd.orbax.velto://nowhere")
        self.assertEqual(velto.messages(), before)

    def test_new_chat_of_the_desktop_entry(self):
        velto, _ = self.start_with_conversation("remember the lighthouse")
        self.close(velto)
        bus.do_action(self.bus, "new-chat")
        self.wait_active(velto)
        wait_until(lambda: not velto.messages(), "the window to empty")
        wait_until(lambda: velto.input().focused, "the composer to have the focus")


class ClosedWindow(InstanceTest):
    def test_comes_back_as_it_was(self):
        service, velto = self.start_signed_in()
        velto.send("remember the lighthouse")
        velto.wait_for_reply("remember the lighthouse")
        velto.wait_for_answer()
        before = velto.messages()
        velto.focus_input()
        desktop.type_text("half a thought")
        self.close(velto)
        self.assertTrue(velto.running())
        self.assert_hands_over(service.base_url)
        self.wait_active(velto)
        self.wait_for_draft(velto, "half a thought")
        self.assertEqual(velto.messages(), before)

    def test_an_answer_goes_on_without_it(self):
        service, velto = self.start_signed_in()
        velto.send("slow long 40")
        velto.button("Stop")
        self.close(velto)
        tokens = session.sign_in(service.base_url)
        wait_until(lambda: session.conversations(service.base_url, tokens.access),
                   "the conversation on the service")
        bus.activate(self.bus)
        self.wait_active(velto)
        velto.wait_for_answer()
        self.assertNotEqual(velto.answer(), "")
        self.assertFalse(velto.shows("stopped"))

    def test_ends_with_sigterm_and_keeps_its_size(self):
        service, velto = self.start_signed_in()
        desktop.resize(velto.window, 820, 690)
        wait_until(lambda: desktop.size_of(velto.window) == (820, 690), "the size")
        self.close(velto)
        self.assertEqual(velto.end(MOMENTS), 0)
        velto = self.start_velto(service.base_url)
        wait_until(lambda: desktop.size_of(velto.window) == (820, 690), "the size again")

    def test_ctrl_q_ends_the_program(self):
        _, velto = self.start_signed_in()
        desktop.press_key("ctrl+q")
        self.assertEqual(velto.wait(MOMENTS), 0)

    def test_quit_ends_the_program_with_and_without_a_window(self):
        service, velto = self.start_signed_in()
        bus.do_action(self.bus, "quit")
        self.assertEqual(velto.wait(MOMENTS), 0)
        velto = self.start_velto(service.base_url)
        velto.wait_for_chat()
        self.close(velto)
        bus.do_action(self.bus, "quit")
        self.assertEqual(velto.wait(MOMENTS), 0)


class CloseNotice(InstanceTest):
    def test_the_desktop_tells_once_that_velto_keeps_running(self):
        notifications = bus.Notifications()
        self.addCleanup(notifications.leave)
        service, velto = self.start_signed_in()
        desktop.activate(velto.window)
        desktop.close_window()
        self.wait_hidden(velto)
        self.assertEqual(notifications.titles, [KEEPS_RUNNING])
        self.assert_hands_over(service.base_url)
        self.wait_active(velto)
        desktop.close_window()
        self.wait_hidden(velto)
        self.assertEqual(velto.end(), 0)
        velto = self.start_velto(service.base_url)
        velto.wait_for_chat()
        desktop.close_window()
        self.wait_hidden(velto)
        self.assertEqual(notifications.titles, [KEEPS_RUNNING])

    def test_else_the_window_tells_once_before_it_closes(self):
        service, velto = self.start_signed_in()
        desktop.activate(velto.window)
        # Pressed again while it tells, the key does nothing.
        wait_until(lambda: velto.shows(KEEPS_RUNNING) or desktop.close_window(),
                   lambda: f"a note in:\n{velto.tree.dump()}")
        desktop.close_window()  # says nothing more
        velto.button("Close window").act()
        self.wait_hidden(velto)
        self.assert_hands_over(service.base_url)
        self.wait_active(velto)
        self.assertIsNone(velto.find(BUTTON, "Close window"))
        desktop.close_window()
        self.wait_hidden(velto)
        self.assertTrue(velto.running())

    def test_quitting_asks_nothing(self):
        _, velto = self.start_signed_in()
        velto.signal(signal.SIGTERM)
        self.assertEqual(velto.wait(MOMENTS), 0)
        self.assertNotIn("told", (self.home / ".config/velto/velto.conf").read_text())


class Service(InstanceTest):
    def test_started_by_the_bus_it_waits_for_what_is_wanted(self):
        service = self.start_service()
        session.sign_in_to_keyring(service.base_url)
        velto = Velto(self.environment(VELTO_API_BASE_URL=service.base_url), ["--service"])
        self.programs.append(velto)
        wait_until(lambda: bus.owner_of(self.bus), "the name")
        self.assertEqual(desktop.windows_of(velto.pid), [])
        bus.open_links(self.bus, "ltd.orbax.velto://new?text=from%20the%20bus")
        velto.wait_for_window()
        velto.wait_for_chat()
        self.wait_for_draft(velto, "from the bus")

    def test_a_second_one_ends_without_showing_anything(self):
        service, velto = self.start_signed_in()
        desktop.minimise(velto.window)
        self.wait_hidden(velto)
        self.assert_hands_over(service.base_url, "--service")
        self.assertEqual(desktop.windows_of(velto.pid), [])


if __name__ == "__main__":
    main()
