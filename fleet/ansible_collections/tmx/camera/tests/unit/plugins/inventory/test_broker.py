"""The inventory plugin in front of a broker: MQTT 3.1.1 in the clear, as far as one subscription needs it."""

import json
import socketserver
import struct
import threading

import pytest
from ansible.errors import AnsibleError
from ansible.inventory.data import InventoryData
from ansible.parsing.dataloader import DataLoader
from ansible.plugins.loader import inventory_loader

from ansible_collections.tmx.camera.plugins.inventory import broker as plugin_module

CONNECT, CONNACK, PUBLISH, SUBSCRIBE, SUBACK = 0x10, 0x20, 0x30, 0x82, 0x90


class Session(socketserver.StreamRequestHandler):
    """Answers a connection and a subscription, then sends what is retained."""

    def handle(self):
        while True:
            head = self.rfile.read(2)
            if len(head) < 2 or head[0] not in (CONNECT, SUBSCRIBE) or self.server.is_silent:
                return
            size = head[1]
            if size & 0x80:
                size = (size & 0x7F) + 128 * self.rfile.read(1)[0]
            body = self.rfile.read(size)
            if head[0] == CONNECT:
                self.send(CONNACK, bytes([0, self.server.refusal]))
            elif head[0] == SUBSCRIBE:
                # A message in front of the acknowledgement, as some brokers do it, the others behind it.
                messages = [struct.pack(">H", len(topic)) + topic.encode() + payload.encode() for topic, payload in self.server.retained]
                for message in messages[:1]:
                    self.send(PUBLISH | 1, message)
                self.send(SUBACK, body[:2] + bytes([self.server.granted] * 2))
                for message in messages[1:]:
                    self.send(PUBLISH | 1, message)

    def send(self, kind, body):
        """One packet of fewer than 16,384 bytes."""
        size = [len(body)] if len(body) < 128 else [len(body) & 0x7F | 0x80, len(body) >> 7]
        self.wfile.write(bytes([kind, *size]) + body)


@pytest.fixture(name="server")
def one_server():
    """A broker that ends with the test."""
    server = socketserver.ThreadingTCPServer(("127.0.0.1", 0), Session)
    server.daemon_threads = True
    server.retained, server.refusal, server.granted, server.is_silent = [], 0, 1, False
    threading.Thread(target=server.serve_forever, args=(0.01,), daemon=True).start()
    yield server
    server.shutdown()
    server.server_close()


@pytest.fixture(name="parse")
def parser(server, tmp_path):
    """Has the plugin read its file; the inventory."""

    def parse(**options):
        file = tmp_path / "cameras.tmx.yml"
        given = {"port": server.server_address[1], "tls": False, "quiet": 2, "timeout": 30, **options}
        file.write_text(json.dumps({"plugin": "tmx.camera.broker", **given}))
        plugin = inventory_loader.get("tmx.camera.broker")
        assert plugin.verify_file(str(file)) and not plugin.verify_file(str(tmp_path / "other.yml"))
        inventory = InventoryData()
        plugin.parse(inventory, DataLoader(), str(file))
        return inventory

    return parse


def about(model, address):
    """The payload of C(about)."""
    return json.dumps({"model": model, "version": "1.00", "address": address})


def test_lists_the_cameras(server, parse):
    """One that is there, one that is away, and what is no camera's message."""
    server.retained = [
        ("tmx/1/guid-a/online", "true"),
        ("tmx/1/guid-a/about", about("KT-A10", "192.0.2.7:443")),
        ("tmx/1/guid-b/about", about("KT-A20", "[2001:db8::1]:8443")),
        ("tmx/1/guid-b/online", "false"),
        ("tmx/1/guid-c/online", "true"),
        ("tmx/1/guid-d/online", "broken"),
        ("tmx/1/guid-e/about", '["no object"]'),
        ("tmx/1/guid-f/about", about("{{ 7 * 7 }}", 5)),
    ]
    inventory = parse(compose={"nearby": "ansible_host is defined"}, keyed_groups=[{"key": "tmx_version", "prefix": "version"}])
    groups = {name: sorted(host.name for host in group.get_hosts()) for name, group in inventory.groups.items()}
    assert groups["online"] == ["guid-a", "guid-c"]
    assert groups["away"] == ["guid-b", "guid-e", "guid-f"]
    assert (groups["model_kt_a10"], groups["model_kt_a20"], groups["version_1_00"]) == (["guid-a"], ["guid-b"], ["guid-a", "guid-b", "guid-f"])
    known = {name: inventory.hosts[name].get_vars() for name in ("guid-a", "guid-b", "guid-c", "guid-f")}
    assert (known["guid-a"]["tmx_url"], known["guid-a"]["ansible_host"]) == ("https://192.0.2.7:443", "192.0.2.7")
    assert (known["guid-b"]["tmx_url"], known["guid-b"]["ansible_host"]) == ("https://[2001:db8::1]:8443", "2001:db8::1")
    assert "tmx_url" not in known["guid-c"] and known["guid-a"]["nearby"] and not known["guid-c"]["nearby"]
    # What a camera says is shown as it is.
    assert known["guid-f"]["tmx_model"] == "{{ 7 * 7 }}" and known["guid-f"]["tmx_model"].__UNSAFE__


def test_a_broker_without_cameras(parse):
    """Is no failure."""
    assert not parse().hosts


@pytest.mark.parametrize("fault, text", [
    ({"refusal": 5}, "not authorised"),
    ({"granted": 0x80}, "may not be subscribed to"),
    ({"is_silent": True}, "closed the connection"),
    ({"port": 1}, "refused"),
    ({"tls": True}, "the broker 127.0.0.1"),
    ({"ca": "/nowhere.pem", "tls": True}, "No such file"),
])
def test_a_broker_that_cannot_be_read(server, parse, fault, text):
    """The message says which."""
    options = {}
    for name, value in fault.items():
        if hasattr(server, name):
            setattr(server, name, value)
        else:
            options[name] = value
    with pytest.raises(AnsibleError, match=text):
        parse(**options)


def test_messages_without_an_end(server, parse):
    """Are not waited for."""
    server.retained = [("tmx/1/guid-a/online", "true")] * 3
    with pytest.raises(AnsibleError, match="messages keep coming within 1 s"):
        parse(timeout=1, quiet=5)


def test_without_the_library(parse, monkeypatch):
    """It is named with its package."""
    monkeypatch.setattr(plugin_module, "mqtt", None)
    with pytest.raises(AnsibleError, match="python3-paho-mqtt"):
        parse()
