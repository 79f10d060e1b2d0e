#!/usr/bin/python
"""Reads a camera."""

DOCUMENTATION = r"""
---
module: facts
short_description: Reads a camera
version_added: 1.0.0
description:
  - Reads what a camera is, the values of parameters, and the changes that wait for their commit, by the interface of the camera's console.
author:
  - The developers of tmxd (@tmxd)
options:
  paths:
    description:
      - What to read. A path of a parameter, C(encode(1).framerate), or one of a part of the tree, C(encode(1)) or C(network.ntp), with all below it
        that the account's class may read. What the model does not have is left out.
      - Of the scenes the one in force is read, since the read of another selects it for all clients.
    type: list
    elements: str
    default: []
  pending_wait:
    description:
      - Seconds to look for changes that wait. Without them those are found that came by the console; what other clients have changed is found within 10 s.
    type: int
    default: 0
extends_documentation_fragment:
  - tmx.camera.console
"""

EXAMPLES = r"""
- name: What it is, and how its encoders are set
  tmx.camera.facts:
    url: "{{ tmx_url }}"
    user: operator
    password: "{{ tmx_password }}"
    ca_path: /etc/tmx/cameras.pem
    paths:
      - encode
      - network.ntp.host
  delegate_to: localhost

- name: Its frame rate
  ansible.builtin.debug:
    msg: "{{ tmx_camera.parameters['encode(1).framerate'] }}"
"""

RETURN = r"""
ansible_facts:
  description: The camera, as facts of the host.
  returned: always
  type: dict
  contains:
    tmx_camera:
      description: The camera.
      type: dict
      contains:
        guid:
          description: The identifier of this one camera.
          type: str
        model:
          description: The name of its model.
          type: str
        version:
          description: The version of its software.
          type: str
        user_class:
          description: The class of the account, C(administrator), C(operator) or C(user).
          type: str
        parameters:
          description: The values of I(paths).
          type: dict
          sample: {"encode(1).framerate": "10"}
        pending:
          description: The changes that wait for their commit, as the event C(pending) of the console has them.
          type: list
          elements: dict
"""

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.tmx.camera.plugins.module_utils.console import ARGUMENTS, Console, ConsoleError, accepted
from ansible_collections.tmx.camera.plugins.module_utils.tree import Tree

IDENTITY = {"guid": "system.guid", "model": "system.model", "version": "system.software.revision"}


def read(console, paths, pending_wait):
    """The camera, and those of the paths where there is nothing to be read."""
    user_class = console.get("api/me")["class"]
    tree = Tree(console.get("parameters.json"))
    below = {top: tree.below(top, user_class) for top in paths}
    wanted = [path for found in below.values() for path in found]
    answers = console.read(dict.fromkeys([*IDENTITY.values(), *wanted]))
    values = {path: answer.get("value", "") for path, answer in answers.items() if accepted(answer)}
    camera = {
        **{name: values.get(path, "") for name, path in IDENTITY.items()},
        "user_class": user_class,
        "parameters": {path: values[path] for path in wanted if path in values},
        "pending": console.pending(pending_wait),
    }
    return camera, [top for top, found in below.items() if not any(path in values for path in found)]


def main():
    """The module."""
    module = AnsibleModule(
        argument_spec={
            **ARGUMENTS,
            "paths": {"type": "list", "elements": "str", "default": []},
            "pending_wait": {"type": "int", "default": 0},
        },
        supports_check_mode=True,
    )
    try:
        camera, missing = read(Console(module.params), module.params["paths"], module.params["pending_wait"])
    except ConsoleError as error:
        module.fail_json(msg=str(error))
    if missing:
        module.fail_json(msg=f"nothing to be read at {', '.join(missing)}, as {camera['user_class']}")
    module.exit_json(ansible_facts={"tmx_camera": camera})


if __name__ == "__main__":
    main()
