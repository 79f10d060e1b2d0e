"""A change of a camera's parameters: what differs is written in parts that belong together, each whole or not at all."""

import re

from ansible_collections.tmx.camera.plugins.module_utils.console import LEAVE_TIME, ConsoleError, accepted
from ansible_collections.tmx.camera.plugins.module_utils.tree import bare, names_scene

# Taking these over can cut the controller off, so the camera puts them back unless they are confirmed.
CUTS_OFF = re.compile(r"network\.(interface|gateway|http|https)\b")
# What is interrupted, the later the more it takes along.
STOPS = ["", "the streams by RTSP", "the web server", "the camera"]


class Refused(Exception):
    """Something was refused; the change stands in front of it or was put back."""


def refusal(path, value, answer):
    """An answer as an entry of C(refused)."""
    return {"path": path, "value": value, "status": answer["status"], "text": answer["text"]}


class Change:
    """What is to be done at one camera, and what became of it."""

    def __init__(self, console, tree, user_class, desired, secrets, wait, url_after=None):
        self._console = console
        self._tree = tree
        self._class = user_class
        self._desired = desired  # by path, the secrets too
        self._secrets = frozenset(secrets)
        self._wait = wait
        self._url_after = url_after
        self._unsaved = set()  # paths that read as desired while they wait for their commit
        self._read = {}  # what reads showed at first, by path
        self.differing = []  # paths to be written
        self.taken_along = []  # paths that others have changed, and that wait for the same commits
        self.written = []  # paths that were, and stand
        self.commits = []
        self.refused = []
        self.not_put_back = []

    def look(self):
        """Reads what is there. What cannot be done at all goes into C(refused)."""
        for path, value in self._desired.items():
            fault = self._fault(path, value)
            if fault:
                self.refused.append({"path": path, "value": self._shown(path, value), **fault})
        faulty = {entry["path"] for entry in self.refused}
        known = [path for path in self._desired if path not in faulty]
        readable = [path for path in known if self._tree.may(path, self._class, "R")]
        for path, answer in self._console.read(readable).items():
            if accepted(answer):
                self._read[path] = answer.get("value", "")
            else:
                self.refused.append(refusal(path, self._shown(path, self._desired[path]), answer))
        pending = self._console.pending()
        waiting = {entry["path"] for entry in pending if entry["kind"] != "hidden"}
        self._unsaved = {path for path in known if path in waiting and self._read.get(path) == self._desired[path]}
        self.differing = [path for path in known if path in self._unsaved or self._read.get(path) != self._desired[path]]
        commits = {bare(self._tree.commit(path)) for path in self.differing}
        self.taken_along = [entry["path"] for entry in pending if entry["path"] not in self._desired and bare(entry["commit"]) in commits]

    def doubt(self):
        """What the camera would refuse, as far as its description tells; for a run that changes nothing."""
        return [
            {"path": path, "value": self._shown(path, self._desired[path]), "status": 457, "text": fault}
            for path in self.differing
            if (fault := self._tree.fault(path, self._desired[path]))
        ]

    def run(self):
        """Writes and commits; raises Refused at the first part that was refused."""
        parts = self._parts()
        moved = []
        while parts:
            commit, paths = part = parts.pop(0)
            if self._part(commit, paths):
                continue
            others = sum(self._stops_web(other) for other, rest in parts)
            # One protocol of the web server is closed only once the other is open.
            if not self._stops_web(commit) or others == 0 or part in moved:
                raise Refused()
            self.refused = []
            moved.append(part)
            parts.insert(others, part)

    @property
    def before(self):
        """What was read of all that is to be set, except of the secrets."""
        return {path: value for path, value in self._read.items() if path not in self._secrets}

    def after(self):
        """What is read now, except of the secrets."""
        answers = self._console.read(self.before)
        return {path: answer.get("value", "") for path, answer in answers.items() if accepted(answer)}

    def is_unsaved(self, path):
        """Whether it reads as desired and only waits for its commit."""
        return path in self._unsaved

    def _shown(self, path, value):
        """A secret, and what may be one since it cannot be read, is not told on."""
        parameter = self._tree.find(path)
        is_secret = path in self._secrets or (parameter and "R" not in parameter["rights"]["administrator"])
        return "(secret)" if is_secret else value

    def _fault(self, path, value):
        """What keeps the camera from being asked at all."""
        parameter = self._tree.find(path)
        if parameter is None:
            return {"status": 461, "text": "Command Not Found"}
        if names_scene(path):
            return {"status": 412, "text": "a path that names a scene selects it, for all clients; leave the number out for the scene in force"}
        if not self._tree.may(path, self._class, "W"):
            return {"status": 401, "text": "Unauthorized"}
        takes = parameter.get("takes", {})
        commands = [command["word"] for command in parameter.get("commands", [])] + (["+", "-"] if takes.get("steps") else [])
        if "takes" not in parameter or value in commands:
            return {"status": 405, "text": "starts or moves something, and is no value to keep"}
        if "R" not in parameter["rights"].get(self._class, "") and path not in self._secrets:
            return {"status": 405, "text": "cannot be read, so that it belongs under secrets"}
        return None

    def _parts(self):
        """
        What is written together, by the commit, in the order in which it is done: the encoders first, since streams, recordings,
        detection and masks are measured by them; what needs no commit; then those that interrupt more and more.
        """
        parts = {}
        for path in self.differing:
            parts.setdefault(self._tree.commit(path), []).append(path)

        def rank(commit):
            stops = self._tree.stops(commit)
            if commit.startswith("encode.") or not commit:
                return 0 if commit else 1
            return 2 + (STOPS.index(stops) if stops in STOPS else 1)

        return sorted(parts.items(), key=lambda part: rank(part[0]))

    def _stops_web(self, commit):
        return self._tree.stops(commit) == "the web server"

    def _part(self, commit, paths):
        """Writes what belongs together and commits it; False when it was refused and put back."""
        if CUTS_OFF.match(commit) and all(path in self._read for path in paths):
            return self._apply(commit, paths)
        done, hints = self._write(paths)
        if len(done) < len(paths):
            self._put_back(done, [])
            return False
        restarts = self._tree.stops(commit) in ("the web server", "the camera")
        for number, hint in enumerate(hints):
            if not self._commit(hint, restarts):
                self._put_back(done, [] if restarts else hints[: number + 1])
                return False
        self.written += paths
        return True

    def _write(self, paths):
        """The paths that were taken, and the requests that they wait for. What was refused is sent again while that helps."""
        left, done, hints = list(paths), [], []
        while left:
            answers = self._console.request([{"path": path, "value": self._desired[path]} for path in left])
            refused = []
            for path, answer in zip(left, answers):
                if not accepted(answer):
                    refused.append((path, answer))
                    continue
                done.append(path)
                if answer.get("hint") and answer["hint"] not in hints:
                    hints.append(answer["hint"])
            if len(refused) in (0, len(left)):
                self.refused += [refusal(path, self._shown(path, self._desired[path]), answer) for path, answer in refused]
                break
            left = [path for path, answer in refused]
        return done, hints

    def _commit(self, hint, restarts):
        """Sends a commit, and waits for the camera where it restarts; False when it was refused."""
        path, equals, word = hint.partition("=")
        item = {"path": path, "value": word}
        answer = self._console.restart(item, self._wait) if restarts else self._console.request([item])[0]
        if not accepted(answer):
            self.refused.append(refusal(path, word, answer))
            return False
        self.commits.append(hint)
        return True

    def _put_back(self, paths, hints):
        """Writes what was there, and where a refused commit may have kept something commits again."""
        paths = [path for path in reversed(paths) if path in self._read]
        if paths:
            self._console.request([{"path": path, "value": self._read[path]} for path in paths])
        for hint in hints:
            self._console.request([dict(zip(("path", "value"), hint.split("=")))])
        answers = self._console.read(paths)
        self.not_put_back += [path for path in paths if answers[path].get("value") != self._read[path]]

    def _apply(self, commit, paths):
        """The same with a commit that can cut the controller off: unless it is confirmed the camera puts all of it back."""
        body = {
            "items": [{"path": path, "value": self._desired[path]} for path in paths],
            "commit": commit,
            "confirm": True,
        }
        stream = self._console.events(LEAVE_TIME)
        answers = self._console.last(lambda: self._console.post("api/apply", body)["answers"]) or []
        if not all(accepted(answer) for answer in answers):
            stream.close()
            values = [self._shown(path, self._desired[path]) for path in paths] + [commit.partition("=")[2]]
            self.refused += [refusal(answer["path"], value, answer) for value, answer in zip(values, answers) if not accepted(answer)]
            return False
        self.commits.append(commit)
        if self._url_after:
            self._console.at(self._url_after)
        self._console.come_back(stream, self._wait)
        try:
            self._console.post("api/confirm", {})
        except ConsoleError as error:
            raise ConsoleError(f"{commit} could not be confirmed, so that the camera puts it back: {error}") from error
        self.written += paths
        return True
