"""A client of the interface of the camera's console."""

import json
import time
from urllib.error import HTTPError

from ansible.module_utils.urls import Request

ARGUMENTS = {
    "url": {"type": "str", "required": True},
    "user": {"type": "str", "default": "operator"},
    "password": {"type": "str", "required": True, "no_log": True},
    "validate_certs": {"type": "bool", "default": True},
    "ca_path": {"type": "path"},
    "timeout": {"type": "int", "default": 60},
}

MAX_ITEMS = 200  # of one request
MAX_BODY = 60000  # bytes; the console takes 64 KiB
# Seconds in which the web server goes, behind a request that restarts it.
LEAVE_TIME = 20


class ConsoleError(Exception):
    """The console did not do what was asked; the text says why. It never holds the password."""

    def __init__(self, text, status=None):
        super().__init__(text)
        self.status = status  # of HTTP, None where there was no answer


def accepted(answer):
    """Whether an answer is 200 or 202."""
    return answer["status"] < 300


def chunks(items):
    """The items in parts that one request takes."""
    part, size = [], 0
    for item in items:
        length = len(json.dumps(item)) + 2
        if part and (len(part) == MAX_ITEMS or size + length > MAX_BODY):
            yield part
            part, size = [], 0
        part.append(item)
        size += length
    if part:
        yield part


class Events:
    """A page's stream of events. It ends with the web server."""

    def __init__(self, response, stop):
        self._response = response
        self._stop = stop

    def __iter__(self):
        """Pairs of name and data until the stream ends or the time is over, which is seen within a sign of life, 15 s."""
        name = None
        try:
            while time.monotonic() < self._stop:
                line = self._response.readline()
                if not line:
                    return
                key, colon, text = line.decode("utf-8").rstrip("\r\n").partition(": ")
                if key == "event":
                    name = text
                elif key == "data" and colon:
                    yield name, json.loads(text)
        except (OSError, ValueError):
            return

    def close(self):
        """Leaves."""
        self._response.close()


class Console:
    """One camera's console, as one account."""

    def __init__(self, params):
        self.at(params["url"])
        self._timeout = params["timeout"]
        self._http = Request(
            url_username=params["user"],
            url_password=params["password"],
            force_basic_auth=True,
            validate_certs=params["validate_certs"],
            ca_path=params["ca_path"],
            follow_redirects="none",
            use_proxy=False,
            headers={"Accept-Encoding": "gzip"},
        )

    def at(self, url):
        """The console is elsewhere from now on."""
        self.url = url.rstrip("/")

    def get(self, path):
        """The JSON of a file or a call."""
        return self._call("GET", path, None, self._timeout)

    def post(self, path, body, timeout=None):
        """The JSON that answers a call, None for an answer without a body."""
        return self._call("POST", path, body, timeout or self._timeout)

    def request(self, items):
        """The answers to reads and writes, in their order."""
        answers = []
        for part in chunks(items):
            answers += self.post("api/request", {"items": part})["answers"]
        return answers

    def read(self, paths):
        """What reads answer, by path."""
        paths = list(paths)
        return dict(zip(paths, self.request([{"path": path} for path in paths])))

    def events(self, seconds):
        """The stream of events; nothing is heard for longer than so many seconds."""
        response = self._open("GET", "api/events", None, seconds)
        return Events(response, time.monotonic() + seconds)

    def pending(self, seconds=0):
        """
        The changes that wait for their commit: at once those that came by this console. What others have changed is
        found by comparing with flash, twice in 8 s, for which the seconds are.
        """
        found = None
        stop = time.monotonic() + seconds
        stream = self.events(seconds or self._timeout)
        try:
            for name, data in stream:
                if name == "pending":
                    found = data
                if found is not None and time.monotonic() >= stop:
                    break
        finally:
            stream.close()
        if found is None:
            raise ConsoleError(f"{self.url}: nothing is told of the changes that wait")
        return found

    def wait(self, seconds):
        """Returns once the console answers; raises ConsoleError when it does not in time."""
        stop = time.monotonic() + seconds
        while True:
            try:
                # Of the daemon, since the web server is there before it.
                self.post("api/request", {"items": [{"path": "system.guid"}]}, timeout=5)
                return
            except ConsoleError as error:
                if error.status in (401, 403):
                    raise
                if time.monotonic() >= stop:
                    raise ConsoleError(f"the camera did not come back within {seconds} s: {error}") from error
            time.sleep(0.5)

    @staticmethod
    def last(call):
        """What a call answers that may end the web server; None where it went without an answer."""
        try:
            return call()
        except ConsoleError as error:
            if error.status not in (None, 503):
                raise
            return None

    def come_back(self, stream, seconds):
        """Waits until the web server has gone, which ends the stream, and the camera answers again."""
        for event in stream:
            pass
        stream.close()
        self.wait(seconds)

    def restart(self, item, seconds):
        """Sends an item that restarts the web server or the camera, and waits until it answers again; the answer to the item."""
        stream = self.events(LEAVE_TIME)
        answers = self.last(lambda: self.request([item])) or [{"path": item["path"], "status": 200, "text": "OK"}]
        if accepted(answers[0]):
            self.come_back(stream, seconds)
        else:
            stream.close()
        return answers[0]

    def _open(self, method, path, body, timeout):
        headers = {"Content-Type": "application/json", "X-Tmx-Console": "1"} if method == "POST" else {}
        data = None if body is None else json.dumps(body).encode()
        try:
            return self._http.open(method, f"{self.url}/console/{path}", data=data, headers=headers, timeout=timeout)
        except HTTPError as error:
            raise ConsoleError(self._text(error), error.code) from error
        except Exception as error:  # of urllib, ssl and http.client, which have no common kind
            raise ConsoleError(f"{self.url}: {error}") from error

    def _call(self, method, path, body, timeout):
        with self._open(method, path, body, timeout) as response:
            try:
                text = response.read()
                return json.loads(text) if text else None
            except Exception as error:
                raise ConsoleError(f"{self.url}: the answer to {path} breaks off: {error}") from error

    def _text(self, error):
        """Why the console refuses a call."""
        try:
            text = json.loads(error.read(MAX_BODY))["error"]
        except Exception:  # not the console's own, such as the web server's page for a wrong password
            text = "wrong user or password" if error.code == 401 else str(error.reason)
        return f"{self.url}: {error.code}: {text}"
