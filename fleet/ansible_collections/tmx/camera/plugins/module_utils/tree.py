"""The description of the parameters, as far as a roll-out needs it."""

import itertools
import re

# Reads that do something.
READS_THAT_ACT = ("storage.disk.check", "camera.scp_get", "camera.scp_set")
# Below it a read with a number decides what later requests of all clients mean.
SCENE = "camera.scene"


def bare(path):
    """The path without its selectors."""
    return re.sub(r"\([^)]*\)", "", path)


def layers(path):
    """The parts of a path with their selectors, which may hold dots."""
    return re.split(r"\.(?![^(]*\))", path)


def names_scene(path):
    """Whether a request for it selects a scene, for all clients."""
    return path.startswith(SCENE + "(")


class Tree:
    """The description that the camera itself hands out."""

    def __init__(self, description):
        self._short = description["shortNames"]
        self._parameters = {parameter["path"]: parameter for parameter in description["parameters"]}

    def find(self, path):
        """What is known of the parameter at a path; None where there is none."""
        first, dot, rest = bare(path).partition(".")
        return self._parameters.get(self._short.get(first, first) + dot + rest)

    def may(self, path, user_class, right):
        """Whether the class has the right, C(R) or C(W)."""
        parameter = self.find(path)
        return parameter is not None and right in parameter["rights"].get(user_class, "")

    def commit(self, path):
        """The request that takes a value over, as the description writes it; empty where it is taken at once."""
        return self.find(path).get("commit", "")

    def stops(self, commit):
        """What the request interrupts; an empty text for nothing."""
        path, equals, word = commit.partition("=")
        parameter = self.find(path) or {}
        return next((command.get("stops", "") for command in parameter.get("commands", []) if command["word"] == word), "")

    def below(self, top, user_class):
        """All paths at and below one that the class may read, with all selectors; scenes without, and no read that does something."""
        first, dot, rest = bare(top).partition(".")
        first = self._short.get(first, first)
        found = []
        for path, parameter in self._parameters.items():
            is_below = (path + ".").startswith(first + dot + rest + ".")
            if is_below and "R" in parameter["rights"].get(user_class, "") and path not in READS_THAT_ACT:
                found += [full for full in self._expand(parameter) if self._fits(full, top)]
        return found

    @staticmethod
    def _fits(path, top):
        """Whether the path has the selectors that the top names."""
        return all("(" not in wanted or wanted.partition("(")[2] == has.partition("(")[2] for has, wanted in zip(layers(path), layers(top)))

    @staticmethod
    def _expand(parameter):
        selectors = [selector for selector in parameter["selectors"] if selector["layer"] != SCENE]
        for chosen in itertools.product(*(selector["values"] for selector in selectors)):
            parts = parameter["path"].split(".")
            for selector, text in zip(selectors, chosen):
                if text:
                    parts[selector["layer"].count(".")] += f"({text})"
            yield ".".join(parts)

    def fault(self, path, value):
        """Why the camera would not take the value, as far as the description can tell; None where it may."""
        takes = self.find(path)["takes"]
        is_taken = {
            "words": lambda: value in takes["words"],
            "number": lambda: takes["low"] <= int(value) <= takes["high"],
            "list": lambda: int(value) in takes["numbers"],
            "decimal": lambda: takes["low"] <= float(value) <= takes["high"],
        }.get(takes["kind"], lambda: True)
        try:
            return None if is_taken() else f"takes {takes['text']}"
        except ValueError:
            return f"takes {takes['text']}"


def text(value):
    """A value of YAML as the camera writes it: C(on) and C(off), which YAML takes for booleans, are words."""
    if isinstance(value, bool):
        return "on" if value else "off"
    if isinstance(value, float) and value.is_integer():
        return str(int(value))
    if isinstance(value, (str, int, float)):
        return str(value)
    raise ValueError("a value is a text, a number or a boolean")
