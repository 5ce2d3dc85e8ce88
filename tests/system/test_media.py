#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""Pictures and videos of answers, from the service that has them."""

from support.accessibility import BUTTON
from support.case import SystemTest, main
from support.waiting import wait_until

TIDE = "The tide, six seconds of it"
TIDE_REQUEST = "GET /v1/media/clips/tide.webm"


class Media(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_tall_window()
        self.service, self.velto = self.start_signed_in()

    def ask(self, words):
        self.velto.send(words)
        wait_until(self.velto.answer, "the answer to begin")
        self.velto.wait_for_answer()

    def test_a_video_waits_for_play_and_then_plays(self):
        self.ask("video")
        play = self.velto.button("Play")
        self.velto.wait_for(name=TIDE)
        self.assertIsNone(self.velto.find(BUTTON, "Pause"))
        # Without its token the service would have refused.
        self.assertGreater(self.service.count(f"{TIDE_REQUEST} 20"), 0)
        self.assertEqual(self.service.count(f"{TIDE_REQUEST} 4"), 0)
        play.act()
        self.velto.button("Pause").act()
        self.velto.button("Play")

    def test_what_the_service_does_not_have_says_so(self):
        self.ask("missing")
        self.velto.wait_for_text("Video unavailable")
        self.velto.wait_for_text("Image unavailable")

    def test_pictures_come_with_the_token(self):
        self.ask("image")
        for path in ("charts/arrivals.png", "pictures/harbour.jpg"):
            self.service.wait_for_line(f"GET /v1/media/{path} 200")
            self.assertEqual(self.service.count(f"GET /v1/media/{path} 401"), 0)


if __name__ == "__main__":
    main()
