"""The options with which every module finds a camera's console."""


class ModuleDocFragment:
    """What C(extends_documentation_fragment) takes in."""

    DOCUMENTATION = r"""
options:
  url:
    description:
      - Where the camera's web server is, C(https://HOST:PORT). The console is below C(/console/).
      - C(http://) is taken too. The password then travels in the clear, so that it fits a test on the loopback only.
    type: str
    required: true
  user:
    description:
      - The account. The class of what is done comes from its name, C(admin), C(operator) or C(user) with nothing, 1, 2 or 3 behind it.
    type: str
    default: operator
  password:
    description:
      - Its password.
    type: str
    required: true
  validate_certs:
    description:
      - Whether the certificate of the camera's web server must be valid for the name in I(url).
    type: bool
    default: true
  ca_path:
    description:
      - A PEM file of the authorities that the certificate is checked against; without it those of the machine.
    type: path
  timeout:
    description:
      - Seconds that one request may take. A camera answers one request after the other, and a save on a busy camera takes seconds.
    type: int
    default: 60
notes:
  - The modules speak with the console over the network, so they run on the controller, with C(connection=local) or C(delegate_to=localhost).
  - A proxy of the environment is not used.
"""
