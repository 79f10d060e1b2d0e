"""The module C(restart) in front of a camera's console."""

from ansible_collections.tmx.camera.plugins.modules import restart


def test_restarts(camera, run):
    """Waits for the answer behind it; a refusal is one."""
    assert run(restart, check=True, user="admin")["changed"] and camera.log == []
    assert run(restart, user="admin")["changed"] and camera.log == ["system.status=restart"]
    camera.refuse = {"system.status=restart": 401}
    assert "401 Unauthorized" in run(restart)["msg"]


def test_a_camera_that_stays_away(camera, run):
    """Is waited for no longer than was said."""
    camera.is_ending = True
    assert "did not come back within 1 s" in run(restart, user="admin", wait=1)["msg"]
