#!/usr/bin/python
"""Sets parameters of a camera."""

DOCUMENTATION = r"""
---
module: parameters
short_description: Sets parameters of a camera
version_added: 1.0.0
description:
  - Reads the parameters, writes those that differ, and sends the commits that they wait for, all by the interface of the camera's console.
  - Values of one commit belong together. Where the camera refuses one of them, or the commit, what was written of them is put back,
    nothing of them is committed, and nothing behind them is sent.
  - The order is that of C(tmxctl load --commit). The encoders come first; then what needs no commit; then the commits that interrupt nothing, the
    streams, the web server and the camera.
  - A change of the address or of the web server is applied so that the camera puts it back by itself after 90 s, unless the module reaches it behind
    the change and confirms it.
author:
  - The developers of tmxd (@tmxd)
options:
  values:
    description:
      - The desired value of each path. Numbers become texts; booleans become C(on) and C(off), which is what YAML makes booleans of.
      - A path is written as in the camera's description, C(encode(1).framerate). One that names a scene is refused, since its read
        already selects that scene for all clients; without the number it is the scene in force.
    type: dict
    default: {}
  secrets:
    description:
      - The same for what must not be shown, such as passwords. These values are in no result, no diff and no log.
      - One that cannot be read is written at each run, and counts as changed.
    type: dict
    default: {}
  wait:
    description:
      - Seconds in which the camera must answer again behind a commit that restarts its web server or itself.
    type: int
    default: 60
  url_after:
    description:
      - Where the console is behind the change, when the change moves it to another address or port.
    type: str
extends_documentation_fragment:
  - tmx.camera.console
notes:
  - The camera may take another value than was written, 10 frames a second for 12. That is no failure, and stands in C(taken). A second run writes 12
    again, and reports C(changed=false) since the camera reads 10 as before. What cannot be known is said in advance, so that C(--check) reports a change there.
    Write the value that the camera takes, also because a commit is sent again for such a value.
  - A commit takes along what somebody else has written and not committed. The module warns of it where it was written by the console.
  - A value that reads as desired but waits for its commit is committed, where it was written by the console. What other clients have written
    without a commit is not looked for; M(tmx.camera.facts) finds it.
  - In check mode refusals are foretold from the description. What depends on other values or on the moment is seen only when it is written.
"""

EXAMPLES = r"""
- name: Ten frames a second
  tmx.camera.parameters:
    url: "{{ tmx_url }}"
    user: operator
    password: "{{ tmx_password }}"
    ca_path: /etc/tmx/cameras.pem
    values:
      encode(1).framerate: 10
  delegate_to: localhost

- name: A time server, and the password of the users
  tmx.camera.parameters:
    url: "{{ tmx_url }}"
    user: admin
    password: "{{ tmx_password }}"
    values:
      network.ntp.host: 192.0.2.1
      network.ntp.status: on
    secrets:
      system.password.user: "{{ new_password }}"
  delegate_to: localhost
"""

RETURN = r"""
before:
  description: What was read in front of the change, of all paths of I(values). As I(values) of another run it is what to put back.
  returned: always
  type: dict
  sample: {"encode(1).framerate": "5"}
after:
  description: What was read behind it; in check mode what was desired.
  returned: always
  type: dict
  sample: {"encode(1).framerate": "10"}
taken:
  description: The values that the camera took otherwise than they were written.
  returned: always
  type: dict
  sample: {"encode(1).framerate": "10"}
commits:
  description: The commits that were sent and accepted.
  returned: always
  type: list
  elements: str
  sample: ["encode(1).status=save"]
refused:
  description: What was refused, or in check mode would be.
  returned: always
  type: list
  elements: dict
  contains:
    path:
      description: The path, of a parameter or of a commit.
      type: str
    status:
      description: The status of the camera's protocol.
      type: int
    text:
      description: The status in words, or the reason.
      type: str
    value:
      description: The value that was refused.
      type: str
not_set:
  description: The paths that were left as they are because of a refusal.
  returned: when something was refused
  type: list
  elements: str
not_put_back:
  description: The paths of a refused commit that read otherwise than before.
  returned: when something was refused
  type: list
  elements: str
"""

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.tmx.camera.plugins.module_utils.change import Change, Refused
from ansible_collections.tmx.camera.plugins.module_utils.console import ARGUMENTS, Console, ConsoleError
from ansible_collections.tmx.camera.plugins.module_utils.tree import Tree, text


def texts(module, option):
    """The values of an option as the camera writes them."""
    result = {}
    for path, value in module.params[option].items():
        try:
            result[path] = text(value)
        except ValueError as error:
            module.fail_json(msg=f"{option}: {path}: {error}")
    return result


def lines(values):
    """Values as a dump has them, for a diff."""
    return "".join(f"{path}={value}\n" for path, value in sorted(values.items()))


def report(change, after, values):
    """The result, but for C(changed)."""
    before = change.before
    result = {
        "before": before,
        "after": after,
        "taken": {path: after[path] for path in change.written if path in after and after[path] != values[path]},
        "commits": change.commits,
        "refused": change.refused,
        "diff": {"before": lines(before), "after": lines(after)},
    }
    if change.refused:
        result["not_set"] = [path for path in change.differing if path not in change.written]
        result["not_put_back"] = change.not_put_back
    return result


def end(module, change, result):
    """Exits, or fails and names what was refused."""
    if not change.refused:
        module.exit_json(**result)
    refused = ", ".join(f"{entry['path']}={entry['value']}: {entry['status']} {entry['text']}" for entry in change.refused)
    kept = f"; not put back: {', '.join(change.not_put_back)}" if change.not_put_back else ""
    module.fail_json(msg=f"refused: {refused}{kept}", **result)


def foretell(module, change, values):
    """Check mode: the result without a write."""
    change.refused += change.doubt()
    after = {path: values[path] for path in change.before}
    end(module, change, {**report(change, after, values), "changed": bool(change.differing)})


def carry_out(module, change, values):
    """The writes, and the result behind them."""
    try:
        if not change.refused:
            change.run()
    except Refused:
        pass
    except ConsoleError as error:
        # What is there now is not known.
        module.fail_json(msg=str(error), **{**report(change, {}, values), "changed": True})
    after = change.after()
    unread = [path for path in change.written if path not in change.before or change.is_unsaved(path)]
    end(module, change, {**report(change, after, values), "changed": bool(unread) or after != change.before})


def main():
    """The module."""
    module = AnsibleModule(
        argument_spec={
            **ARGUMENTS,
            "values": {"type": "dict", "default": {}},
            "secrets": {"type": "dict", "default": {}, "no_log": True},
            "wait": {"type": "int", "default": 60},
            "url_after": {"type": "str"},
        },
        supports_check_mode=True,
    )
    values, secrets = texts(module, "values"), texts(module, "secrets")
    console = Console(module.params)
    try:
        user_class = console.get("api/me")["class"]
        tree = Tree(console.get("parameters.json"))
        change = Change(console, tree, user_class, {**values, **secrets}, secrets, module.params["wait"], module.params["url_after"])
        change.look()
        for path in change.taken_along:
            module.warn(f"{path} was changed by somebody else and waits for the same commit, which takes it along")
        (foretell if module.check_mode else carry_out)(module, change, values)
    except ConsoleError as error:
        module.fail_json(msg=str(error))


if __name__ == "__main__":
    main()
