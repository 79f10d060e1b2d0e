#!/usr/bin/python
"""Restarts a camera."""

DOCUMENTATION = r"""
---
module: restart
short_description: Restarts a camera
version_added: 1.0.0
description:
  - Restarts a camera by the interface of its console, and waits until it answers again.
  - What was changed and not committed is lost.
author:
  - The developers of tmxd (@tmxd)
options:
  wait:
    description:
      - Seconds in which the camera must answer again.
    type: int
    default: 60
extends_documentation_fragment:
  - tmx.camera.console
"""

EXAMPLES = r"""
- name: Restart
  tmx.camera.restart:
    url: "{{ tmx_url }}"
    user: admin
    password: "{{ tmx_password }}"
    ca_path: /etc/tmx/cameras.pem
  delegate_to: localhost
"""

RETURN = r""" # """

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.tmx.camera.plugins.module_utils.console import ARGUMENTS, Console, ConsoleError, accepted


def main():
    """The module."""
    module = AnsibleModule(argument_spec={**ARGUMENTS, "wait": {"type": "int", "default": 60}}, supports_check_mode=True)
    if not module.check_mode:
        try:
            answer = Console(module.params).restart({"path": "system.status", "value": "restart"}, module.params["wait"])
        except ConsoleError as error:
            module.fail_json(msg=str(error))
        if not accepted(answer):
            module.fail_json(msg=f"refused: {answer['status']} {answer['text']}")
    module.exit_json(changed=True)


if __name__ == "__main__":
    main()
