"""What the tests of the modules share: a camera, and a way to run a module in front of it."""

import json

import pytest
from ansible.module_utils import basic

from ansible_collections.tmx.camera.tests.unit.plugins.modules.fake_camera import FakeCamera


@pytest.fixture(name="camera")
def one_camera():
    """A camera that ends with the test."""
    camera = FakeCamera()
    yield camera
    camera.close()


@pytest.fixture(name="run")
def runner(camera, capsys, monkeypatch):
    """Runs a module as Ansible does; the JSON that it prints."""

    def run(module, check=False, **arguments):
        given = {"url": camera.url, "password": "pw", "timeout": 30, **arguments, "_ansible_check_mode": check, "_ansible_diff": True}
        monkeypatch.setattr(basic, "_ANSIBLE_ARGS", json.dumps({"ANSIBLE_MODULE_ARGS": given}).encode())
        with pytest.raises(SystemExit):
            module.main()
        return json.loads(capsys.readouterr().out)

    return run
