"""The module C(parameters) in front of a camera's console."""

import json

import pytest

from ansible_collections.tmx.camera.plugins.modules import parameters

FRAME_RATE = "encode(1).framerate"


def test_writes_only_what_differs_in_the_order_of_what_it_interrupts(camera, run):
    """The encoders first, then what needs no commit, then commits that interrupt more and more; a second run does nothing."""
    values = {
        "system.timezone": "UTC",
        "network.ntp.status": True,
        "network.http.port": 8080,
        "network.hostname": "gate",
        "camera.id": "two",
        "encode(2).bitrate": 1500.0,
        FRAME_RATE: 15,
    }
    result = run(parameters, user="admin", values=values)
    assert camera.log == [
        "encode(2).bitrate=1500",
        "encode(1).framerate=15",
        "encode(2).status=save",
        "encode(1).status=save",
        "network.ntp.status=on",
        "network.ntp.status=restart",
        "camera.id=two",
        "camera.status=save",
        "network.http.port=8080",
        "network.http.status=restart",
        "confirmed",
        "system.timezone=UTC",
        "system.status=restart",
    ]
    assert result["changed"] and result["before"][FRAME_RATE] == "5" and result["after"]["network.http.port"] == "8080"
    assert "network.ntp.status=off\n" in result["diff"]["before"] and "network.ntp.status=on\n" in result["diff"]["after"]

    del camera.log[:]
    assert not run(parameters, user="admin", values=values)["changed"]
    assert camera.log == []
    back = run(parameters, user="admin", values=result["before"])
    assert back["changed"] and back["after"] == result["before"]


@pytest.mark.parametrize("rate, changed", [(12, True), (5.5, False)])
def test_another_value_is_taken(run, rate, changed):
    """What the camera makes of a value is told, and is a change only where it reads otherwise."""
    first = run(parameters, values={FRAME_RATE: rate})
    again = run(parameters, values={FRAME_RATE: rate})
    assert (first["changed"], again["changed"]) == (changed, False)
    assert first["taken"] == again["taken"] == {FRAME_RATE: "10" if changed else "5"}


@pytest.mark.parametrize("values, log, refused", [
    # A value of the encoders: nothing of them stays, nothing behind them is sent.
    (
        {"network.hostname": "new", FRAME_RATE: 15, "encode(1).bitrate": 99},
        ["encode(1).framerate=15", "encode(1).bitrate=99", "encode(1).bitrate=99", "encode(1).framerate=5"],
        ("encode(1).bitrate", 457),
    ),
    # The commit: the values go back, and since it may have kept some it is sent again.
    (
        {"network.ntp.host": "192.0.2.1"},
        ["network.ntp.host=192.0.2.1", "network.ntp.status=restart", "network.ntp.host=0.0.0.0", "network.ntp.status=restart"],
        ("network.ntp.status", 500),
    ),
    # What can cut the controller off is put back by the camera.
    ({"network.http.port": "1"}, ["network.http.port=1"], ("network.http.port", 412)),
    # What is in force at once.
    (
        {"camera.id": "two"},
        ["camera.id=two", "camera.status=save", "camera.id=one", "camera.status=save"],
        ("camera.status", 500),
    ),
    # What needs no commit.
    (
        {"network.hostname": "new", "storage.label": "bad", "camera.id": "two"},
        ["network.hostname=new", "storage.label=bad", "storage.label=bad", "network.hostname=gate"],
        ("storage.label", 457),
    ),
])
def test_a_refused_part_is_put_back(camera, run, values, log, refused):
    """Each kind of part, and the refusal that is told."""
    camera.refuse = {"encode(1).bitrate=99": 457, "network.ntp.status=restart": [500], "network.http.port=1": 412}
    camera.refuse |= {"storage.label=bad": 457, "camera.status=save": [500]}
    before = dict(camera.values)
    result = run(parameters, values=values)
    assert camera.log == log
    assert camera.values == before
    assert [(entry["path"], entry["status"]) for entry in result["refused"]] == [refused]
    assert result["failed"] and not result["changed"] and result["not_put_back"] == [] and result["commits"] == []
    assert sorted(result["not_set"]) == sorted(values) and refused[0] in result["msg"]


def test_a_part_in_front_of_a_refusal_stays(camera, run):
    """It is told what changed, so that it can be put back."""
    camera.refuse = {"network.ntp.host=x": 457}
    result = run(parameters, values={"network.ntp.host": "x", FRAME_RATE: 15})
    assert result["failed"] and result["changed"] and result["not_set"] == ["network.ntp.host"]
    assert camera.values[FRAME_RATE] == "15" and result["before"][FRAME_RATE] == "5"


def test_values_that_need_each_other_in_another_order(camera, run):
    """A refused value is sent again behind the others, as a protocol of the web server is closed once the other is open."""
    camera.refuse = {"encode(1).framerate=30": [457], "network.http.status=off": [412]}
    values = {FRAME_RATE: 30, "encode(1).bitrate": 8000, "network.http.status": "off", "network.https.status": "on"}
    result = run(parameters, values=values)
    assert not result.get("failed") and result["after"] == {path: str(value) for path, value in values.items()}
    assert camera.log[-2:] == ["network.http.status=restart", "confirmed"]


@pytest.mark.parametrize("user, values, status", [
    ("admin", {"nix.da": 1}, 461),
    ("user", {FRAME_RATE: 10}, 401),
    ("operator", {"system.timezone": "UTC"}, 401),
    ("admin", {"encode(1).status": "save"}, 405),
    ("admin", {"system.guid": "x"}, 405),
    ("admin", {"system.password": "geheim"}, 405),
    ("admin", {"camera.scene(1).color": 3}, 412),
])
def test_what_cannot_be_done_is_refused_before_anything_is_sent(camera, run, user, values, status):
    """In a run as in check mode."""
    for check in (False, True):
        result = run(parameters, check=check, user=user, values=values)
        assert result["failed"] and [entry["status"] for entry in result["refused"]] == [status]
        assert "geheim" not in json.dumps({**result, "invocation": None})
    assert camera.log == []


def test_check_mode_foretells_and_changes_nothing(camera, run):
    """A change, none, and a refusal by the description."""
    result = run(parameters, check=True, values={FRAME_RATE: 10, "camera.id": "one"})
    assert result["changed"] and result["diff"]["before"] == "camera.id=one\nencode(1).framerate=5\n"
    assert result["diff"]["after"] == "camera.id=one\nencode(1).framerate=10\n"
    assert not run(parameters, check=True, values={FRAME_RATE: 5})["changed"]
    refused = run(parameters, check=True, values={FRAME_RATE: 31, "encode(1).bitrate": "many", "network.ntp.status": "x"})["refused"]
    assert [entry["path"] for entry in refused] == [FRAME_RATE, "encode(1).bitrate", "network.ntp.status"]
    assert camera.log == []


def test_what_reads_as_desired_but_waits_is_committed(camera, run):
    """Somebody has staged it by the console."""
    camera.staged[FRAME_RATE] = "10"
    assert not run(parameters, values={FRAME_RATE: 10})["changed"]
    camera.pending = [{"path": FRAME_RATE, "live": "10", "kind": "shown", "commit": "encode.status=save"}]
    assert run(parameters, values={FRAME_RATE: 10})["changed"]
    assert camera.values[FRAME_RATE] == "10"
    warnings = run(parameters, values={"encode(2).framerate": 10, "camera.id": "two"})["warnings"]
    assert len(warnings) == 1 and FRAME_RATE in warnings[0]


def test_secrets_are_never_shown(camera, run):
    """Neither the value that was, nor the new one, nor the password of the account."""
    result = run(parameters, user="admin", secrets={"system.password": "geheim", "camera.id": "versteckt"})
    assert result["changed"] and camera.log[-1] == "camera.status=save" and "system.password=geheim" in camera.log
    camera.refuse = {"system.password=anders": 457}
    refused = run(parameters, user="admin", secrets={"system.password": "anders"})
    assert refused["refused"][0]["path"] == "system.password"
    told = json.dumps([result, refused])
    assert not [word for word in ("geheim", "versteckt", "anders", '"one"', '"pw"') if word in told]


@pytest.mark.parametrize("path, texts", [
    ("url", ["refused"]),
    ("password", ["wrong user or password"]),
])
def test_a_console_that_cannot_be_asked(run, path, texts):
    """The message says which it is, and does not hold the password."""
    result = run(parameters, values={FRAME_RATE: 10}, **{path: {"url": "http://127.0.0.1:1", "password": "falsch"}[path]})
    assert result["failed"] and "falsch" not in json.dumps(result)
    assert all(text in result["msg"] for text in texts)


def test_a_connection_that_breaks_tells_what_to_put_back(camera, run):
    """The write was done, and its answer lost."""
    camera.is_breaking = True
    result = run(parameters, values={FRAME_RATE: 10})
    assert result["failed"] and result["changed"] and result["before"] == {FRAME_RATE: "5"}


def test_a_change_that_is_confirmed_too_late(camera, run):
    """The camera has put it back by itself, which is a failure."""
    camera.is_lost = True
    result = run(parameters, values={"network.http.port": "8080"})
    assert result["failed"] and "confirmed" in result["msg"] and camera.values["network.http.port"] == "80"


def test_many_values_go_in_parts(camera, run):
    """More than one request takes."""
    result = run(parameters, values={f"nix.{number}": 1 for number in range(450)} | {FRAME_RATE: 10})
    assert len(result["refused"]) == 450 and camera.log == []
