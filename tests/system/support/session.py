# SPDX-FileCopyrightText: 2026 The velto authors
# SPDX-License-Identifier: MIT
"""A session on velto-local without a browser and without the client: tokens, keyring, cache."""

import base64
import hashlib
import html
import http.client
import json
import os
import re
from dataclasses import dataclass
from pathlib import Path
from urllib.parse import parse_qs, urlencode, urlsplit

from . import desktop

CLIENT = "velto-apple"
FORM = "application/x-www-form-urlencoded"


@dataclass(frozen=True)
class Answer:
    status: int
    headers: dict
    body: bytes

    @property
    def text(self):
        return self.body.decode("utf-8", "replace")

    @property
    def json(self):
        return json.loads(self.body)


@dataclass(frozen=True)
class Tokens:
    access: str
    refresh: str


def request(method, url, body=None, content_type=None, token=None, host=None):
    """One request, with no proxy and no redirect followed."""
    parts = urlsplit(url)
    connection = http.client.HTTPConnection(parts.hostname, parts.port, timeout=20)
    headers = {"Content-Type": content_type} if content_type else {}
    if token:
        headers["Authorization"] = f"Bearer {token}"
    if host:
        headers["Host"] = host
    target = (parts.path or "/") + (f"?{parts.query}" if parts.query else "")
    try:
        connection.request(method, target, body, headers)
        response = connection.getresponse()
        return Answer(response.status, {name.lower(): value
                                        for name, value in response.getheaders()},
                      response.read())
    finally:
        connection.close()


def _url_safe(data):
    return base64.urlsafe_b64encode(data).decode().rstrip("=")


def decide(authorize_url, decision="approve"):
    """Answers the consent page as its buttons do; the address that the browser is sent to."""
    parts = urlsplit(authorize_url)
    page = request("GET", authorize_url)
    if page.status != 200:
        raise AssertionError(f"no consent page: {page.status} {page.text}")
    action = html.unescape(re.search(r'<form[^>]*action="([^"]*)"', page.text).group(1))
    fields = {html.unescape(name): html.unescape(value) for name, value in
              re.findall(r'<input type="hidden" name="([^"]*)" value="([^"]*)"', page.text)}
    answer = request("POST", f"{parts.scheme}://{parts.netloc}{action}",
                     urlencode({**fields, "decision": decision}), FORM)
    if answer.status != 303:
        raise AssertionError(f"no redirect: {answer.status} {answer.text}")
    return answer.headers["location"]


def sign_in(base_url):
    """Tokens of a new grant, taken along the same road as the client's."""
    verifier = _url_safe(os.urandom(64))
    redirect = "http://127.0.0.1:1/callback"
    query = urlencode({
        "response_type": "code", "client_id": CLIENT, "redirect_uri": redirect,
        "code_challenge": _url_safe(hashlib.sha256(verifier.encode()).digest()),
        "code_challenge_method": "S256", "scope": "openid profile email offline_access",
        "state": "session"})
    location = decide(f"{base_url}/auth/oauth2/authorize?{query}")
    code = parse_qs(urlsplit(location).query)["code"][0]
    return _tokens(base_url, {"grant_type": "authorization_code", "code": code,
                              "code_verifier": verifier, "redirect_uri": redirect,
                              "client_id": CLIENT})


def refresh(base_url, token):
    return _tokens(base_url, {"grant_type": "refresh_token", "refresh_token": token,
                              "client_id": CLIENT})


def _tokens(base_url, form):
    answer = request("POST", f"{base_url}/auth/oauth2/token", urlencode(form), FORM)
    if answer.status != 200:
        raise AssertionError(f"no tokens: {answer.status} {answer.text}")
    return Tokens(answer.json["access_token"], answer.json["refresh_token"])


def sign_in_to_keyring(base_url):
    """Leaves a refresh token where the client looks for it; a start of it is then signed in."""
    tokens = sign_in(base_url)
    desktop.store_token(tokens.refresh)
    return tokens


def conversations(base_url, access_token):
    answer = request("GET", f"{base_url}/v1/conversations?limit=50&channel=chat_ui",
                     token=access_token)
    if answer.status != 200:
        raise AssertionError(f"no conversations: {answer.status} {answer.text}")
    return answer.json


def newest_text(base_url, access_token):
    """The texts of the last turn of the newest conversation, as the service keeps them."""
    newest = conversations(base_url, access_token)[0]["id"]
    answer = request("GET", f"{base_url}/v1/conversations/{newest}/messages", token=access_token)
    if answer.status != 200:
        raise AssertionError(f"no messages: {answer.status} {answer.text}")
    return "".join(part["text"] for part in answer.json[-1]["parts"] if part.get("type") == "text")


def cache_file(data_home):
    return Path(data_home) / "velto/last-conversation.json"


def cached_texts(count):
    """Texts of a conversation of `count` messages, the user's and the agent's in turn."""
    question = "Question {}: how high is the tide at the north quay?"
    reply = ("Answer {}: the tide at the north quay is **2.4 m** and rising.\n\n"
             "- high water at `14:39`\n- low water at `20:51`\n\nAsk again in an hour.")
    return [(question, reply)[index % 2].format(index // 2 + 1) for index in range(count)]


def write_cached_conversation(data_home, count, conversation_id="cached-conversation"):
    """The cache file of a conversation, as the client writes it."""
    file = cache_file(data_home)
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text(json.dumps({
        "conversationID": conversation_id,
        "messages": [{"role": ("user", "assistant")[index % 2],
                      "parts": [{"kind": "text", "text": text}]}
                     for index, text in enumerate(cached_texts(count))]}))
    return file
