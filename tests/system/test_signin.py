#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Signing in through the default browser."""

import os
import signal
import socket
from pathlib import Path
from urllib.parse import parse_qsl, urlencode, urlsplit

from support import desktop, session
from support.browser import Chromium, NotingBrowser
from support.case import LOADING, SIGN_IN, TRY_AGAIN, SystemTest, main
from support.waiting import wait_until

SIGNED_IN_PAGE = "Signed in to velto"
TOKEN_REQUEST = "/auth/oauth2/token"
NO_CODE = "Authorization server returned no code."
STATE_MISMATCH = "OAuth state mismatch (possible CSRF)."
NO_BROWSER = "Server error: Could not open the default browser."
BROWSERS = {"www-browser", "x-www-browser", "sensible-browser", "firefox", "firefox-esr",
            "iceweasel", "seamonkey", "mozilla", "epiphany", "epiphany-browser", "konqueror",
            "chromium", "chromium-browser", "google-chrome", "google-chrome-stable", "links",
            "links2", "lynx", "w3m"}


def listening_addresses(pid):
    """The addresses on which a process accepts TCP connections, as /proc writes them."""
    inodes = set()
    for link in Path(f"/proc/{pid}/fd").iterdir():
        try:
            inodes.add(os.readlink(link))
        except FileNotFoundError:
            continue
    found = []
    for table in ("tcp", "tcp6"):
        for line in Path(f"/proc/{pid}/net/{table}").read_text().splitlines()[1:]:
            fields = line.split()
            if fields[3] == "0A" and f"socket:[{fields[9]}]" in inodes:
                found.append(fields[1].split(":")[0])
    return found


def refuses_connections(port):
    try:
        socket.create_connection(("127.0.0.1", port), 2).close()
    except ConnectionRefusedError:
        return True
    return False


class InChromium(SystemTest):
    """With a real browser as the desktop's default."""

    def setUp(self):
        super().setUp()
        self.service = self.start_service()
        self.chromium = Chromium(self.data_home, self.folder / "profile")
        self.addCleanup(self.chromium.close)
        self.velto = self.start_velto(self.service.base_url)

    def finish_in_the_browser(self):
        page = self.chromium.page("/auth/oauth2/authorize")
        page.wait_for_text("wants to use your account")
        self.assertTrue(self.velto.shows(LOADING))
        self.assertIsNone(desktop.stored_token())
        page.click_button("Continue")
        page.wait_for_text(SIGNED_IN_PAGE)
        self.velto.wait_for_chat()
        token = desktop.stored_token()
        self.assertIsNotNone(token)
        self.velto.wait_for_line("[AuthClient] login: success — stored refresh …"
                                 f"{token[-8:]}, access expires_in=900s")

    def press_by_key(self, key):
        button = self.velto.button(SIGN_IN)
        wait_until(lambda: button.focused, "the focus on the only control")
        desktop.press_key(key)

    def test_by_keyboard(self):
        self.press_by_key("Return")
        self.finish_in_the_browser()

    def test_by_a_screen_readers_action(self):
        self.velto.button(SIGN_IN).act("Press")
        self.finish_in_the_browser()

    def test_by_mouse(self):
        desktop.click(*self.velto.button(SIGN_IN).centre)
        self.finish_in_the_browser()

    def test_cancelled_on_the_consent_page(self):
        self.press_by_key("space")
        self.chromium.page("/auth/oauth2/authorize").click_button("Cancel")
        self.velto.button(TRY_AGAIN)
        self.assertTrue(self.velto.shows(NO_CODE))
        self.assertEqual(self.service.count(TOKEN_REQUEST), 0)
        self.assertIsNone(desktop.stored_token())


class AtTheCallback(SystemTest):
    """With a default browser that leaves the redirect to the test."""

    def setUp(self):
        super().setUp()
        self.service = self.start_service()
        self.browser = NotingBrowser(self.data_home, self.folder)
        self.velto = self.start_velto(self.service.base_url)
        self.velto.button(SIGN_IN).act()
        self.take_address()

    def take_address(self):
        self.url = self.browser.wait_for_url()
        self.query = dict(parse_qsl(urlsplit(self.url).query))
        self.redirect = self.query["redirect_uri"]
        self.port = urlsplit(self.redirect).port

    def call_back(self, **items):
        return session.request("GET", f"{self.redirect}?{urlencode(items)}")

    def assert_failed(self, text):
        self.velto.button(TRY_AGAIN)
        self.assertTrue(self.velto.shows(text), self.velto.tree.dump())
        self.assertEqual(self.service.count(TOKEN_REQUEST), 0)
        self.assertIsNone(desktop.stored_token())
        wait_until(lambda: refuses_connections(self.port), "the listener to close")

    def test_the_address_asks_for_a_code_with_pkce(self):
        self.assertTrue(self.url.startswith(f"{self.service.base_url}/auth/oauth2/authorize?"))
        self.assertEqual([name for name, _ in parse_qsl(urlsplit(self.url).query)],
                         ["response_type", "client_id", "redirect_uri", "code_challenge",
                          "code_challenge_method", "scope", "state"])
        self.assertEqual(self.query["client_id"], "velto-apple")
        self.assertEqual(self.query["code_challenge_method"], "S256")
        self.assertEqual(self.query["scope"], "openid profile email offline_access")
        self.assertRegex(self.query["code_challenge"], r"^[\w-]{43}$")
        self.assertRegex(self.query["state"], r"^[\w-]{86}$")
        self.assertRegex(self.redirect, r"^http://127\.0\.0\.1:\d+/callback$")

    def test_the_listener_is_out_of_reach_of_other_machines(self):
        self.assertEqual(listening_addresses(self.velto.pid), ["0100007F"])

    def test_another_state_is_refused(self):
        answer = self.call_back(code="abc", state="x" * 86)
        self.assertEqual(answer.status, 200)
        self.assert_failed(STATE_MISMATCH)

    def test_a_redirect_without_a_code_is_refused(self):
        self.call_back(state=self.query["state"])
        self.assert_failed(NO_CODE)

    def test_a_redirect_without_a_query_is_refused(self):
        session.request("GET", self.redirect)
        self.assert_failed(NO_CODE)

    def test_an_icon_request_leaves_the_wait_open(self):
        icon = session.request("GET", f"http://127.0.0.1:{self.port}/favicon.ico")
        self.assertEqual(icon.status, 404)
        self.assertEqual(icon.text, "<!doctype html><title>Not found</title>")
        self.assertTrue(self.velto.shows(LOADING))
        answer = session.request("GET", session.decide(self.url))
        self.assertIn(SIGNED_IN_PAGE, answer.text)
        self.velto.wait_for_chat()

    def test_a_second_callback_gets_the_page_and_changes_nothing(self):
        callback = session.decide(self.url)
        # While the service is silent the sign-in goes on, and its listener is still there.
        self.service.freeze()
        first = session.request("GET", callback)
        second = self.call_back(code="other", state="other")
        self.assertEqual((first.status, second.status), (200, 200))
        self.assertEqual(first.body, second.body)
        self.assertEqual(len(first.body), 601)
        self.service.thaw()
        self.velto.wait_for_chat()
        self.assertEqual(self.service.count(f"POST {TOKEN_REQUEST}"), 1)

    def test_the_listener_ends_with_the_sign_in(self):
        session.request("GET", session.decide(self.url))
        self.velto.wait_for_chat()
        wait_until(lambda: refuses_connections(self.port), "the listener to close")
        self.assertEqual(listening_addresses(self.velto.pid), [])

    def test_ending_the_program_ends_the_wait(self):
        self.assertEqual(self.velto.end(), 0)
        self.assertTrue(refuses_connections(self.port))
        self.assertIsNone(desktop.stored_token())

    def test_after_a_failure_a_new_attempt_has_secrets_of_its_own(self):
        self.call_back(state=self.query["state"])
        self.velto.button(TRY_AGAIN).act()
        earlier = self.query
        self.take_address()
        self.assertNotEqual(self.query["state"], earlier["state"])
        self.assertNotEqual(self.query["code_challenge"], earlier["code_challenge"])
        session.request("GET", session.decide(self.url))
        self.velto.wait_for_chat()

    def test_a_token_endpoint_that_is_gone_fails_the_sign_in(self):
        callback = session.decide(self.url)
        self.service.end()
        session.request("GET", callback)
        self.velto.button(TRY_AGAIN)
        self.assertTrue(self.velto.shows("Could not connect to the service."))
        self.assertIsNone(desktop.stored_token())


class WithoutBrowser(SystemTest):
    """On a machine whose programs are all there but for browsers."""

    def setUp(self):
        super().setUp()
        self.service = self.start_service()
        programs = self.folder / "bin"
        programs.mkdir()
        for folder in os.environ["PATH"].split(":"):
            for program in Path(folder).glob("*") if Path(folder).is_dir() else []:
                link = programs / program.name
                if program.name not in BROWSERS and not link.is_symlink():
                    link.symlink_to(program)
        self.velto = self.start_velto(self.service.base_url, PATH=programs)
        self.velto.button(SIGN_IN).act()
        self.velto.button(TRY_AGAIN)

    def test_says_so_and_offers_to_try_again(self):
        self.assertTrue(self.velto.shows(NO_BROWSER), self.velto.tree.dump())
        self.assertEqual(listening_addresses(self.velto.pid), [])

    def test_try_again_works_once_there_is_one(self):
        browser = NotingBrowser(self.data_home, self.folder)
        desktop.press_key("Return")
        session.request("GET", session.decide(browser.wait_for_url()))
        self.velto.wait_for_chat()

    def test_a_browser_that_fails_is_none(self):
        browser = NotingBrowser(self.data_home, self.folder, status=1)
        self.velto.button(TRY_AGAIN).act()
        browser.wait_for_url()
        self.velto.button(TRY_AGAIN)
        self.assertTrue(self.velto.shows(NO_BROWSER))


class Ending(SystemTest):
    def test_sigterm_ends_the_program_at_once(self):
        service = self.start_service()
        velto = self.start_velto(service.base_url)
        velto.button(SIGN_IN)
        velto.signal(signal.SIGTERM)
        self.assertEqual(velto.wait(3), 0)


if __name__ == "__main__":
    main()
