#!/usr/bin/python3
"""
A roll-out over a fleet in waves: some of the third wave refuse, which stops it, and a second play puts all of it back. Eight cameras in
waves of two, or with TMX_LONG twenty in waves of five.
"""

import json
import os
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
CAMERAS, WAVE = (20, 5) if os.environ.get("TMX_LONG") else (8, 2)
NETWORK = f"127.{100 + os.getpid() % 150}"
RATE = "encode(1).framerate"
NEW = "15"


class Fleet:
    """The cameras in the order of the inventory, by their GUIDs."""

    def __init__(self, folder):
        self.folder = folder
        self.homes = {}
        self.environment = {
            **os.environ,
            "ANSIBLE_COLLECTIONS_PATH": str(ROOT / "fleet"),
            "ANSIBLE_FORKS": str(WAVE),
            "ANSIBLE_HOME": str(folder / "ansible"),
            "ANSIBLE_NOCOLOR": "1",
            "PATH": "/usr/bin:/bin:/usr/sbin:/sbin",
        }

    def camera(self, *words):
        """Runs ./camera; what it says."""
        done = subprocess.run([ROOT / "camera", *map(str, words)], capture_output=True, text=True, check=False)
        assert done.returncode == 0, f"camera {words}: {done.stdout}{done.stderr}"
        return done.stdout

    def up(self):
        """Boots it."""
        self.camera("--home", self.folder, "fleet", "up", CAMERAS, "--network", NETWORK)
        homes = [home for home in self.folder.iterdir() if home.name.isdigit()]
        self.homes = dict(sorted(((home / "sysinfo/uuid").read_text().strip(), home) for home in homes))

    def await_online(self):
        """Waits until all are at the broker."""
        end = time.monotonic() + 60
        while f"{CAMERAS} at the broker" not in self.camera("--home", self.folder, "fleet", "status"):
            assert time.monotonic() < end, "not all are at the broker"
            time.sleep(0.5)

    def down(self):
        """Ends it."""
        self.camera("--home", self.folder, "fleet", "down")

    def ctl(self, guid, *words):
        """One camera's parameters, read or written by another client than the console."""
        return self.camera("--home", self.homes[guid], "ctl", "--quiet", *words).strip()

    def rates(self):
        """What is on flash: neither staged nor only in force."""
        files = {guid: (home / "flash/sysconfig/encode/encode0.conf").read_text() for guid, home in self.homes.items()}
        return {guid: next(line.partition("=")[2] for line in text.splitlines() if line.startswith("FRAME_RATE=")) for guid, text in files.items()}

    def play(self, name, **variables):
        """Runs a playbook; whether it succeeded, and the numbers of its recap by GUID."""
        variables = {"before": str(self.folder / "before"), "wave": WAVE, **variables}
        command = ["ansible-playbook", "-i", self.folder / "inventory", f"tmx.camera.{name}", "-e", json.dumps(variables)]
        done = subprocess.run(command, capture_output=True, text=True, check=False, env=self.environment, timeout=1200)
        print(done.stdout + done.stderr)
        recap = {}
        for line in done.stdout.partition("PLAY RECAP")[2].splitlines()[1:]:
            guid, colon, counts = line.partition(" : ")
            if colon:
                recap[guid.strip()] = {key: int(value) for key, value in (count.split("=") for count in counts.split())}
        return done.returncode == 0, recap

    def certificates(self):
        """By which the broker knows them."""
        return {guid: (home / "flash/mqtt/certificate.pem").read_text() for guid, home in self.homes.items()}

    def kept(self):
        """Whose values are kept."""
        return {file.stem for file in (self.folder / "before").glob("*.json")}


def expect(what, found, wanted):
    """Two values, or the difference as the failure."""
    assert found == wanted, f"{what}: {found}, and not {wanted}"


def roll_out(fleet):
    """The order of things; the cameras had different rates."""
    guids = list(fleet.homes)
    waves = [guids[first : first + WAVE] for first in range(0, CAMERAS, WAVE)]
    refusing = waves[2][1:4:2]
    for guid in guids[::2]:
        fleet.ctl(guid, f"{RATE}=10", "encode(1).status=save")
    before = fleet.rates()
    expect("rates", sorted(set(before.values())), ["10", "5"])

    for guid in refusing:
        fleet.camera("--home", fleet.homes[guid], "tell", "dsp", "fail=zr_set_video_framerate:0")
    has_succeeded, recap = fleet.play("frame_rates", frame_rate=NEW)
    assert not has_succeeded
    expect("cameras that were asked", list(recap), waves[0] + waves[1] + waves[2])
    expect("failures", [guid for guid, counts in recap.items() if counts["failed"]], refusing)
    ordered = [guid for wave in waves[:3] for guid in wave if guid not in refusing]
    expect("rates behind the roll-out", fleet.rates(), before | dict.fromkeys(ordered, NEW))
    expect("read by other clients", {fleet.ctl(guid, RATE) for guid in ordered}, {NEW})
    expect("kept", fleet.kept(), set(waves[0] + waves[1] + waves[2]))

    for guid in refusing:
        fleet.camera("--home", fleet.homes[guid], "tell", "dsp", "clear")
    has_succeeded, recap = fleet.play("put_back")
    assert has_succeeded
    expect("put back", [guid for guid, counts in recap.items() if counts["changed"]], ordered)
    expect("rates that were put back", fleet.rates(), before)
    expect("kept at last", fleet.kept(), set())

    # What was in force by the time of the refusal goes back too; the first camera is a wave.
    values = {RATE: NEW, "network.destination(1).host": "nowhere"}
    has_succeeded, recap = fleet.play("time_server", time_server="", wave=1, roll_out_values=values)
    expect("asked for the time server", (has_succeeded, list(recap)), (False, guids[:1]))
    expect("rescued by a change", (recap[guids[0]]["rescued"], recap[guids[0]]["changed"]), (1, 1))
    expect("rates behind the time server", fleet.rates(), before)


def issue(fleet, name, ca=()):
    """A folder with a certificate for each camera, signed by the authority, or by another than the broker's."""
    folder = fleet.folder / name
    folder.mkdir()
    for file in ca:
        shutil.copy(fleet.folder / "broker" / file, folder)
    for words in (["ca"], *(["camera", guid] for guid in fleet.homes)):
        subprocess.run([ROOT / "fleet/certificates", folder, *words], check=True)
    return folder


def renew_certificates(fleet):
    """New ones bring the cameras to the broker again; of those that do not the first is put back, and the others never see them."""
    for folder, is_good in ((issue(fleet, "new", ("ca.pem", "ca.key")), True), (issue(fleet, "foreign"), False)):
        before = fleet.certificates()
        has_succeeded, recap = fleet.play("certificates", certificates=str(folder), wave=[1, CAMERAS])
        expect("renewed", has_succeeded, is_good)
        expect("asked", len(recap), CAMERAS if is_good else 1)
        issued = {guid: (folder / f"{guid}.pem").read_text() for guid in fleet.homes}
        expect("certificates", fleet.certificates() == (issued if is_good else before), True)
        fleet.await_online()


def main():
    """The fleet ends whatever happens."""
    with tempfile.TemporaryDirectory(prefix="tmx-fleet-", dir=os.environ.get("TMX_TEST_HOMES", "/dev/shm")) as folder:
        fleet = Fleet(Path(folder))
        try:
            fleet.up()
            roll_out(fleet)
            if os.environ.get("TMX_LONG"):
                renew_certificates(fleet)
        finally:
            fleet.down()


if __name__ == "__main__":
    main()
