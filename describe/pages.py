#!/usr/bin/python3
"""Prints a page made from the description of the parameters (tmx-describe) on standard input.

usage: pages.py parameters | selectors | man
"""

import json
import sys


def cell(text):
    return text.replace("|", "\\|")


def rights(parameter):
    """The rights of administrator, operator and user: "rw rw r"."""
    return " ".join(pair.lower().replace("-", "") or "–" for pair in parameter["rights"].values())


def taken(parameter):
    """What a write takes, words that start something behind it."""
    words = [command["word"] for command in parameter.get("commands", [])]
    texts = [parameter["takes"]["text"]] if "takes" in parameter else []
    return "; ".join(texts + ([" ".join(["does:", ", ".join(words)])] if words else []))


def by_root(parameters):
    roots = {}
    for parameter in parameters:
        roots.setdefault(parameter["path"].split(".")[0], []).append(parameter)
    return roots.items()


def force(parameter):
    text = parameter.get("when", "")
    return text + (f"; stops {parameter['commitStops']}" if "commitStops" in parameter else "")


def parameters_page(description):
    print(
        """# Parameters

Every parameter, what it takes, its unit and built-in default, the rights of administrator, operator and user (r reads, w
writes; the ONVIF service and the debug user pass without a test), and when an accepted value is in force and stored.
`./camera reference` makes this page from the rules that run. Selectors: [selectors.md](selectors.md)."""
    )
    for root, parameters in by_root(description["parameters"]):
        print(f"\n## {root}\n")
        print("| parameter | what it is | takes | unit | default | rights | when |\n|---|---|---|---|---|---|---|")
        for p in parameters:
            default = f"`{p['default']}`" if p.get("default") else ""
            summary = p["summary"] + "".join(f" Only {c['text']} ({c['of']})." for c in p.get("conditions", []))
            columns = [f"`{p['path']}`", summary, taken(p), p.get("unit", ""), default, rights(p), force(p)]
            print("| " + " | ".join(map(cell, columns)) + " |")


def selectors_page(description):
    print(
        """# Selectors

What stands between the brackets of a layer, as in `network.destination(2).host`. Where a layer is not listed, any selector
is accepted and means nothing. A text that is not understood answers 451, a number out of its range 456, a layer that the
camera lacks 461; the check runs for reads and writes alike, in the order of the path. `./camera reference` makes this page
from the rules that run.

| layer | takes | no brackets | only with |
|---|---|---|---|"""
    )
    layers = {s["layer"]: s for p in description["parameters"] for s in p["selectors"]}
    for s in layers.values():
        without = s.get("without", str(s.get("refusedWithout", "any")))
        print("| " + " | ".join([f"`{s['layer']}`", s["text"], without, s.get("needs", "")]) + " |")


def roff(text):
    return text.replace("\\", "\\e").replace("-", "\\-")


def man_page(description):
    print('.TH TMXD\\-PARAMETERS 7 "" "tmxd" "Parameters of the camera"')
    print(".SH NAME\ntmxd\\-parameters \\- what the parameters of the camera are and take")
    print(".SH DESCRIPTION\nEach parameter with its sentence, what a write takes, the built\\-in default, the rights of")
    print("administrator, operator and user, and when an accepted value is in force and stored.")
    for root, parameters in by_root(description["parameters"]):
        print(f".SH {root.upper()}")
        for p in parameters:
            print(f".TP\n.B {roff(p['path'])}")
            lines = [p["summary"]]
            if taken(p):
                unit = f" ({p['unit']})" if "unit" in p else ""
                lines.append(f"Takes {taken(p)}{unit}.")
            if p.get("default"):
                lines.append(f"Default: {p['default']}.")
            lines.append(f"Rights: {rights(p)}.")
            if force(p):
                lines.append(f"When: {force(p)}.")
            print("\n".join(roff(line) for line in lines))
    print('.SH SEE ALSO\n.BR tmxctl (1)')


if __name__ == "__main__":
    PAGES = {"parameters": parameters_page, "selectors": selectors_page, "man": man_page}
    if len(sys.argv) != 2 or sys.argv[1] not in PAGES:
        sys.exit(__doc__)
    PAGES[sys.argv[1]](json.load(sys.stdin))
