#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Tokens: renewed while the program is in use, and seen nowhere."""

import base64
import os
import re
from pathlib import Path
from urllib.parse import quote

from support import desktop, session
from support.browser import NotingBrowser
from support.case import SIGN_IN, SystemTest, main
from support.proxy import RecordingProxy, Trap
from support.waiting import wait_until

PRESENTING = "[AuthClient] refresh: presenting token …"
ROTATED = "[AuthClient] refresh: success — rotated to …"
# Under the profile of a user's own keyring daemon a token is ciphertext; a copy in the clear would
# be one of these.
ENCODINGS = ["utf-8", "utf-16-le"]


def written_forms(secret):
    """The ways in which a secret could have ended up in a file."""
    for encoding in ENCODINGS:
        yield secret.encode(encoding)
    yield secret.encode().hex().encode()
    yield quote(secret, safe="").encode()
    # Base64 at each of the three alignments, without the ends that depend on what stands beside.
    for shift in range(3):
        yield base64.b64encode(b"\0" * shift + secret.encode())[4:-4]


class Expiry(SystemTest):
    def test_a_chat_goes_on_when_the_access_token_expires(self):
        service, velto = self.start_signed_in(access_token_seconds=4)
        for index in range(3):
            first = desktop.stored_token()
            before = velto.count(ROTATED)
            answered = service.count("POST /v1/chat 200")
            # The token of the last answer has to expire first: only the service knows when.
            expired = session.sign_in(service.base_url)
            wait_until(lambda: session.request("GET", f"{service.base_url}/v1/me",
                                               token=expired.access).status == 401,
                       "an access token to expire")
            velto.send(f"message {index}")
            velto.wait_for_reply(f"message {index}")
            velto.wait_for_answer()
            service.wait_for_line("POST /v1/chat 200", times=answered + 1)
            self.assertGreater(velto.count(ROTATED), before)
            self.assertNotEqual(desktop.stored_token(), first)
        self.assertEqual(velto.count(PRESENTING), velto.count(ROTATED))
        velto.wait_for_line(f"{ROTATED}{desktop.stored_token()[-8:]}, access expires_in=4s")
        self.assertIsNone(velto.find(name=SIGN_IN))

    def test_a_revoked_grant_leads_to_the_sign_in_screen(self):
        service, velto = self.start_signed_in(access_token_seconds=4)
        velto.send("hello")
        velto.wait_for_reply("hello")
        velto.wait_for_answer()
        cache = session.cache_file(self.data_home)
        wait_until(cache.exists, "the conversation to be kept")
        token = desktop.stored_token()
        # Two clients with one token: the service takes the grant back from both.
        session.refresh(service.base_url, token)
        expired = session.sign_in(service.base_url)
        wait_until(lambda: session.request("GET", f"{service.base_url}/v1/me",
                                           token=expired.access).status == 401,
                   "an access token to expire")
        velto.send("another")
        velto.button(SIGN_IN)
        velto.wait_for_line("[AuthClient] refresh: server rejected token — body: ")
        self.assertIsNone(desktop.stored_token())
        self.assertTrue(cache.exists(), "an expired session keeps its conversation")


class Keyring(SystemTest):
    def test_it_is_asked_by_a_helper_that_leaves_nothing_behind(self):
        _, velto = self.start_signed_in()
        # The token that it was given is used up: it has read one and written another.
        velto.wait_for_line(f"{ROTATED}{desktop.stored_token()[-8:]}")
        loaded = set(re.findall(r"/(lib[\w+]+)[-.\d]*\.so",
                                Path(f"/proc/{velto.pid}/maps").read_text()))
        self.assertIn("libQt6Core", loaded)
        self.assertEqual(loaded & {"libsecret", "libgio", "libgobject"}, set())
        wait_until(lambda: "velto-keyring" not in names_of_children(velto.pid),
                   "the helper to end")


def names_of_children(pid):
    """Those that nobody has waited for included."""
    found = []
    for folder in Path("/proc").glob("[0-9]*"):
        try:
            name, rest = (folder / "stat").read_text().split("(", 1)[1].rsplit(")", 1)
        except (FileNotFoundError, ProcessLookupError):
            continue
        if int(rest.split()[1]) == pid:
            found.append(name)
    return found


class Hygiene(SystemTest):
    def setUp(self):
        super().setUp()
        self.secrets = {}
        self.service = self.start_service(access_token_seconds=4)
        self.proxy = RecordingProxy(self.service.port)
        self.addCleanup(self.proxy.close)
        self.trap = Trap()
        self.addCleanup(self.trap.close)
        self.browser = NotingBrowser(self.data_home, self.folder)

    def note_stored_token(self):
        token = desktop.stored_token()
        self.assertIsNotNone(token)
        self.secrets[token] = "refresh token"

    def sign_in(self, velto):
        velto.button(SIGN_IN).act()
        session.request("GET", session.decide(self.browser.wait_for_url()))
        velto.wait_for_chat()
        self.note_stored_token()

    def chat(self, velto, *prompts):
        for prompt in prompts:
            answered = self.service.count("POST /v1/chat 200")
            velto.send(prompt)
            self.service.wait_for_line("POST /v1/chat 200", times=answered + 1)
            velto.wait_for_answer()
            self.note_stored_token()

    def wait_for_expiry(self):
        rotated = session.sign_in(self.service.base_url)
        wait_until(lambda: session.request("GET", f"{self.service.base_url}/v1/me",
                                           token=rotated.access).status == 401,
                   "an access token to expire")

    def scripted_session(self):
        """Sign-in, chats of every kind, expiry, redirects, a restart, an end."""
        # Whatever the service answers, another origin is told nothing.
        self.proxy.redirect_once("/v1/conversations", f"{self.trap.base_url}/elsewhere")
        first = self.start_velto(self.proxy.base_url)
        self.sign_in(first)
        wait_until(lambda: self.trap.requests, "the redirect to be followed")
        # An answer to a message without a word for the agent says the message again.
        self.chat(first, "hello", "tools", "error", "image video table",
                  f"![picture]({self.trap.base_url}/picture.png)")
        wait_until(lambda: "/picture.png" in [request.path for request in self.trap.requests],
                   "the picture of an answer to be asked for")
        self.wait_for_expiry()
        self.chat(first, "after the token expired")
        self.assertEqual(first.end(), 0)
        second = self.start_velto(self.proxy.base_url)
        second.wait_for_chat()
        self.note_stored_token()
        self.wait_for_expiry()
        self.chat(second, "drop", "after the restart")
        self.assertEqual(second.end(), 0)
        return first, second

    def scanned_files(self):
        folders = [Path(os.environ["VELTO_DESKTOP"]), self.folder]
        return [file for folder in folders for file in folder.rglob("*")
                if file.is_file() and not file.is_symlink()]

    def test_no_file_and_no_line_holds_a_token(self):
        first, second = self.scripted_session()
        self.secrets.update(self.proxy.secrets())
        kinds = list(self.secrets.values())
        for kind, least in {"access token": 3, "refresh token": 3, "code": 1,
                            "verifier": 1}.items():
            self.assertGreaterEqual(kinds.count(kind), least, f"the session showed no {kind}")

        for program in (first, second, self.service):
            self.assertNotEqual(program.output, "")
            for secret, kind in self.secrets.items():
                self.assertNotIn(secret, program.output, f"{program.name} printed a {kind}")

        files = self.scanned_files()
        names = {file.name for file in files}
        # The scan is worth something only if it looks where tokens would be.
        self.assertTrue(any(name.endswith(".keyring") for name in names), names)
        self.assertIn("last-conversation.json", names)
        for file in files:
            content = file.read_bytes()
            for secret, kind in self.secrets.items():
                for form in written_forms(secret):
                    self.assertNotIn(form, content, f"{file} holds a {kind}")

    def test_tokens_go_to_the_service_alone(self):
        self.scripted_session()
        secrets = self.proxy.secrets()
        self.assertGreaterEqual(len(self.trap.requests), 1)
        for request in self.trap.requests:
            self.assertIsNone(request.header("Authorization"))
            for secret, kind in secrets.items():
                self.assertNotIn(secret.encode(), request.head + request.body,
                                 f"another origin was sent a {kind}")
        # The redirect and the picture of an answer led there, and nothing else.
        self.assertEqual({request.path for request in self.trap.requests},
                         {"/elsewhere", "/picture.png"})
        # The token endpoints are asked without the access token. So are the pictures of the cached
        # conversation that shows before the session goes on.
        media = 0
        for request in self.proxy.requests:
            token = request.header("Authorization")
            if request.path.startswith("/auth/"):
                self.assertIsNone(token)
            elif token is not None or not request.path.startswith("/v1/media/"):
                self.assertRegex(token or "", r"^Bearer \S+$", request.path)
                media += request.path.startswith("/v1/media/")
        self.assertGreaterEqual(media, 3, "pictures and the video, with the token")


if __name__ == "__main__":
    main()
