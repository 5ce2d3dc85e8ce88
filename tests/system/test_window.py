#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""The main window: its size, its end."""

import signal

from support import desktop
from support.accessibility import BUTTON, ENTRY
from support.case import INPUT, SIGN_IN, SystemTest, main
from support.waiting import wait_until

SMALLEST = (480, 600)


class Window(SystemTest):
    def start(self):
        velto = self.start_velto(self.service.base_url)
        velto.button(SIGN_IN)
        return velto

    def setUp(self):
        super().setUp()
        self.service = self.start_service()

    def resize(self, velto, width, height):
        desktop.resize(velto.window, width, height)
        wait_until(lambda: desktop.size_of(velto.window) == (width, height),
                   lambda: f"{width} x {height}, not {desktop.size_of(velto.window)}")

    def assert_restored(self, size):
        velto = self.start()
        wait_until(lambda: desktop.size_of(velto.window) == size,
                   lambda: f"{size}, not {desktop.size_of(velto.window)}")

    def test_is_never_smaller_than_its_content_needs(self):
        velto = self.start()
        self.resize(velto, 700, 700)
        desktop.resize(velto.window, 200, 200)
        wait_until(lambda: desktop.size_of(velto.window) == SMALLEST,
                   lambda: f"{SMALLEST}, not {desktop.size_of(velto.window)}")
        x, y, width, height = velto.button(SIGN_IN).box
        left, top, whole_width, whole_height = velto.find("frame").box
        self.assertTrue(left <= x and x + width <= left + whole_width)
        self.assertTrue(top <= y and y + height <= top + whole_height)

    def test_comes_back_in_its_size_after_sigterm(self):
        velto = self.start()
        self.resize(velto, 820, 690)
        self.assertEqual(velto.end(), 0)
        self.assert_restored((820, 690))

    def test_comes_back_in_its_size_after_its_close_button_and_a_crash(self):
        velto = self.start()
        self.resize(velto, 930, 640)
        desktop.close_window()
        velto.button("Close window").act()
        wait_until(lambda: not desktop.windows_of(velto.pid), "the window to close")
        velto.kill()
        self.assert_restored((930, 640))

    def test_a_remembered_size_below_the_smallest_is_not_taken(self):
        settings = self.home / ".config/velto/velto.conf"
        settings.parent.mkdir()
        settings.write_text("[window]\nsize=@Size(100 100)\n")
        self.assert_restored(SMALLEST)

    def test_says_its_name(self):
        velto = self.start()
        self.assertEqual(desktop.title_of(velto.window), "velto")


class End(SystemTest):
    def assert_ends(self, velto, number):
        velto.signal(number)
        self.assertEqual(velto.wait(3), 0)

    def test_sigterm_on_the_sign_in_screen(self):
        velto = self.start_velto(self.start_service().base_url)
        velto.button(SIGN_IN)
        self.assert_ends(velto, signal.SIGTERM)

    def test_sigint_on_the_chat_screen(self):
        _, velto = self.start_signed_in()
        self.assert_ends(velto, signal.SIGINT)

    def test_sigterm_in_the_middle_of_an_answer(self):
        _, velto = self.start_signed_in()
        velto.send("slow long 3000")
        velto.wait_for(BUTTON, "Stop")
        self.assert_ends(velto, signal.SIGTERM)

    def test_sigterm_while_the_service_is_silent(self):
        service, velto = self.start_signed_in()
        self.assertIsNotNone(velto.find(ENTRY, INPUT))
        service.freeze()
        velto.send("hello")
        velto.wait_for(BUTTON, "Stop")
        self.assert_ends(velto, signal.SIGTERM)


if __name__ == "__main__":
    main()
