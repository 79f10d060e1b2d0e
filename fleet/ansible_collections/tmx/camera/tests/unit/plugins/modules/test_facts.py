"""The module C(facts) in front of a camera's console."""

import subprocess

import pytest

from ansible_collections.tmx.camera.plugins.modules import facts
from ansible_collections.tmx.camera.tests.unit.plugins.modules.fake_camera import FakeCamera

IDENTITY = {"guid": "76e66a7c-a101-4d26-b31f-2ec2e6bcbfe3", "model": "KT-A10", "version": "1.00.003", "user_class": "operator"}


@pytest.mark.parametrize("paths, values", [
    ([], {}),
    (["encode(1).framerate"], {"encode(1).framerate": "5"}),
    (["encode(2)", "net.ntp.host"], {"encode(2).framerate": "5", "encode(2).bitrate": "1000", "network.ntp.host": "0.0.0.0"}),
    (["network.http"], {"network.http.port": "80", "network.http.status": "on"}),  # not https
    (["camera.scene"], {"camera.scene.color": "3"}),  # of the scene in force
])
def test_reads(camera, run, paths, values):
    """A path, parts of the tree, and what waits."""
    camera.pending = [{"path": "camera.id", "live": "x", "kind": "live", "commit": "camera.status=save"}]
    result = run(facts, paths=paths)
    assert not result.get("failed")
    assert result["ansible_facts"]["tmx_camera"] == {**IDENTITY, "parameters": values, "pending": camera.pending}


@pytest.mark.parametrize("path", ["nix", "storage.disk.check", "system.password"])
def test_what_cannot_be_read(run, path):
    """One without an answer is named."""
    result = run(facts, paths=["encode", path])
    assert result["failed"] and path in result["msg"]


def test_the_certificate_is_checked(run, tmp_path):
    """Against the authorities that are named, and not against none unless that is asked for."""
    certificate = tmp_path / "camera.pem"
    subprocess.run(
        ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-subj", "/CN=camera"]
        + ["-addext", "subjectAltName=IP:127.0.0.1", "-keyout", str(certificate), "-out", str(tmp_path / "ca.pem")],
        check=True,
        capture_output=True,
    )
    certificate.write_text(certificate.read_text() + (tmp_path / "ca.pem").read_text())
    camera = FakeCamera(certificate)
    try:
        named = {"url": camera.url.replace("127.0.0.1", "localhost"), "ca_path": str(tmp_path / "ca.pem")}
        assert not run(facts, url=camera.url, ca_path=str(tmp_path / "ca.pem")).get("failed")
        assert not run(facts, url=camera.url, validate_certs=False).get("failed")
        for wrong in ({"url": camera.url}, named):
            assert "certificate verify failed" in run(facts, **wrong)["msg"]
    finally:
        camera.close()
