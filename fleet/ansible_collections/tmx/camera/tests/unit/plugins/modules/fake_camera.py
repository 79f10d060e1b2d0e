"""A camera's console as far as the modules see it: real HTTP, with logins, over a small tree of its own."""

import base64
import gzip
import http.server
import json
import queue
import ssl
import threading

RIGHTS = {"administrator": "RW", "operator": "RW", "user": "R-"}
ENCODERS = [{"layer": "encode", "text": "1 to 3", "values": ["1", "2", "3"], "without": "1"}]


def parameter(path, takes=None, commit=None, **more):
    """An entry of the description."""
    entry = {"path": path, "summary": "It.", "rights": RIGHTS, "selectors": [], **more}
    if takes:
        entry["takes"] = {"text": takes["kind"], **takes}
    if commit:
        entry["commit"] = commit
    return entry


def command(path, word, stops=None, **more):
    """A parameter with a word that starts something."""
    return parameter(path, commands=[{"word": word, **({"stops": stops} if stops else {})}], **more)


WORDS = {"kind": "words", "words": ["on", "off"]}
TEXT = {"kind": "text"}
DESCRIPTION = {
    "version": 1,
    "shortNames": {"net": "network"},
    "hiddenRows": [],
    "parameters": [
        parameter("system.guid"),
        parameter("system.model"),
        parameter("system.software.revision"),
        parameter("system.timezone", TEXT, "system.status=restart", rights={**RIGHTS, "operator": "R-"}),
        command("system.status", "restart", "the camera", rights={**RIGHTS, "administrator": "-W"}),
        parameter("system.password", TEXT, rights={"administrator": "-W", "operator": "--", "user": "--"}),
        parameter("network.hostname", TEXT),
        parameter("network.ntp.host", TEXT, "network.ntp.status=restart"),
        command("network.ntp.status", "restart", takes=WORDS, commit="network.ntp.status=restart"),
        parameter("network.http.port", TEXT, "network.http.status=restart"),
        command("network.http.status", "restart", "the web server", takes=WORDS, commit="network.http.status=restart"),
        command("network.https.status", "restart", "the web server", takes=WORDS, commit="network.https.status=restart"),
        parameter("camera.id", TEXT, "camera.status=save"),
        command("camera.status", "save"),
        parameter("camera.scene.color", TEXT, selectors=[{"layer": "camera.scene", "text": "0 to 7", "values": ["0", "1"]}]),
        parameter("encode.framerate", {"kind": "decimal", "low": 1, "high": 30}, "encode.status=save", selectors=ENCODERS),
        parameter("encode.bitrate", {"kind": "number", "low": 1000, "high": 9000}, "encode.status=save", selectors=ENCODERS),
        command("encode.status", "save", "the streams", takes=WORDS, commit="encode.status=save", selectors=ENCODERS),
        parameter("storage.label", TEXT),
        parameter("storage.disk.check"),
    ],
}
FRAME_RATES = (30, 20, 15, 10, 5, 1)
TEXTS = {200: "OK", 202: "Accepted", 401: "Unauthorized", 412: "Precondition Failed", 457: "Invalid Range", 461: "Command Not Found"}


class FakeCamera:
    """Values in force, staged and stored. C(refuse) maps "PATH=VALUE" to a status, or to a list of those of the next times."""

    def __init__(self, server_certificate=None):
        self.values = {
            "system.guid": "76e66a7c-a101-4d26-b31f-2ec2e6bcbfe3",
            "system.model": "KT-A10",
            "system.software.revision": "1.00.003",
            "system.timezone": "Japan",
            "network.hostname": "gate",
            "network.ntp.host": "0.0.0.0",
            "network.ntp.status": "off",
            "network.http.port": "80",
            "network.http.status": "on",
            "network.https.status": "off",
            "storage.label": "card",
            "camera.id": "one",
            "camera.scene.color": "3",
            "encode(1).framerate": "5",
            "encode(1).bitrate": "2000",
            "encode(2).framerate": "5",
            "encode(2).bitrate": "1000",
        }
        self.staged = {}
        self.refuse = {}
        self.pending = []
        self.log = []  # writes and what else changes something, in their order
        self.confirming = None  # what to put back
        self.is_lost = False  # whoever confirms comes too late
        self.is_breaking = False  # the next write is done and not answered
        self.is_ending = False  # a restart is its end
        self.is_away = False
        self._streams = []
        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), self._handler())
        self._server.daemon_threads = True
        scheme = "http"
        if server_certificate:
            context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
            context.load_cert_chain(server_certificate)
            self._server.socket = context.wrap_socket(self._server.socket, server_side=True)
            scheme = "https"
        self.url = f"{scheme}://127.0.0.1:{self._server.server_port}"
        threading.Thread(target=self._server.serve_forever, args=(0.01,), daemon=True).start()

    def close(self):
        """Ends the server."""
        self.restart()
        self._server.shutdown()
        self._server.server_close()

    def restart(self):
        """The web server goes, and its streams with it."""
        self.is_away = self.is_ending
        while self._streams:
            self._streams.pop().put(None)

    def answer(self, item, user_class):
        """What the daemon says to one item."""
        path, value = item["path"], item.get("value")
        known = next((entry for entry in DESCRIPTION["parameters"] if entry["path"] == path.replace("(1)", "").replace("(2)", "")), None)
        if known is None:
            return self._answer(path, 461)
        if value is None:
            if "R" not in known["rights"][user_class] or path not in self.values:
                return self._answer(path, 401 if path in self.values else 461)
            shown = self.staged if path.startswith("encode") else {}
            return {**self._answer(path, 200), "value": shown.get(path, self.values[path])}
        self.log.append(f"{path}={value}")
        status = self.refuse.get(f"{path}={value}")
        if isinstance(status, list):
            status = status.pop(0) if status else None
        if status:
            return self._answer(path, status)
        if value in [entry["word"] for entry in known.get("commands", [])]:
            return self._commit(path, value, known)
        return self._write(path, value, known)

    def _write(self, path, value, known):
        if path.endswith("framerate"):
            value = str(next(rate for rate in FRAME_RATES if rate <= float(value)))
        if "commit" not in known or path == "camera.id":
            self.values[path] = value  # in force at once
        else:
            self.staged[path] = value
        if "commit" not in known:
            return self._answer(path, 200)
        return {**self._answer(path, 202), "hint": known["commit"].replace("encode.", path.partition(".")[0] + ".")}

    def _commit(self, path, value, known):
        family = f"{path}={value}".replace("(1)", "").replace("(2)", "")
        for staged in list(self.staged):
            entry = next(entry for entry in DESCRIPTION["parameters"] if entry["path"] == staged.replace("(1)", "").replace("(2)", ""))
            if entry["commit"] == family:
                self.values[staged] = self.staged.pop(staged)
        if "stops" in known["commands"][0] and known["commands"][0]["stops"] != "the streams":
            self.restart()
        return self._answer(path, 200)

    @staticmethod
    def _answer(path, status):
        return {"path": path, "status": status, "text": TEXTS.get(status, "Internal Server Error")}

    def apply(self, body, user_class):
        """Writes and a commit that are to be confirmed."""
        self.confirming = {item["path"]: self.values[item["path"]] for item in body["items"]}
        answers = [self.answer(item, user_class) for item in body["items"]]
        if all(answer["status"] < 300 for answer in answers):
            path, equals, word = body["commit"].partition("=")
            answers.append(self.answer({"path": path, "value": word}, user_class))
        if not all(answer["status"] < 300 for answer in answers):
            self.staged.clear()
            self.confirming = None
        return answers

    def _handler(fake):  # pylint: disable=no-self-argument # the other self is the handler's
        class Handler(http.server.BaseHTTPRequestHandler):
            """One request."""

            def log_message(self, format, *args):  # pylint: disable=redefined-builtin
                """Says nothing."""

            def reply(self, status, body=None):
                """A body in JSON, compressed as the web server compresses it."""
                data = b"" if body is None else gzip.compress(json.dumps(body).encode())
                self.send_response(status)
                self.send_header("Content-Encoding", "gzip")
                self.send_header("Content-Length", str(len(data)))
                self.end_headers()
                self.wfile.write(data)

            def account(self):
                """The class of who has logged in; None behind a refusal."""
                if fake.is_away:
                    self.send_error(503)
                    return None
                scheme, blank, text = self.headers.get("Authorization", "").partition(" ")
                user, colon, password = base64.b64decode(text).decode().partition(":")
                if scheme == "Basic" and password == "pw":
                    return {"admin": "administrator", "operator": "operator", "user": "user"}[user]
                self.send_error(401)
                return None

            def do_GET(self):
                """Reads."""
                user_class = self.account()
                if user_class is None:
                    return
                if self.path == "/console/api/events":
                    self.stream()
                elif self.path == "/console/api/me":
                    self.reply(200, {"user": "x", "class": user_class, "simulated": True})
                elif self.path == "/console/parameters.json":
                    self.reply(200, DESCRIPTION)
                else:
                    self.reply(404, {"error": "no such file"})

            def stream(self):
                """Events until the web server goes."""
                end = queue.Queue()
                fake._streams.append(end)  # pylint: disable=protected-access
                self.send_response(200)
                self.end_headers()
                pending = json.dumps(fake.pending)
                self.wfile.write(f'event: hello\ndata: {{"id": "1"}}\n\nevent: pending\ndata: {pending}\n\n'.encode())
                end.get()

            def do_POST(self):
                """Requests."""
                user_class = self.account()
                if user_class is None:
                    return
                if self.headers.get("X-Tmx-Console") != "1" or self.headers.get("Content-Type") != "application/json":
                    self.reply(403, {"error": "no request of a page"})
                    return
                body = json.loads(self.rfile.read(int(self.headers["Content-Length"])))
                call = self.path.rpartition("/")[2]
                if call == "confirm":
                    self.confirm()
                    return
                if call == "request" and len(body["items"]) > 200:
                    self.reply(400, {"error": '"items" takes 1 to 200'})
                    return
                answers = fake.apply(body, user_class) if call == "apply" else [fake.answer(item, user_class) for item in body["items"]]
                if fake.is_breaking and any("value" in item for item in body["items"]):
                    self.close_connection = True
                    return
                self.reply(200, {"answers": answers})

            def confirm(self):
                """Keeps a change, unless the camera was quicker."""
                if fake.is_lost:
                    fake.values.update(fake.confirming)
                    fake.confirming = None
                if fake.confirming is None:
                    self.reply(404, {"error": "nothing waits to be confirmed"})
                    return
                fake.confirming = None
                fake.log.append("confirmed")
                self.reply(204)

        return Handler
