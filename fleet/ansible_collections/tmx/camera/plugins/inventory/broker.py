"""Lists the cameras that an MQTT broker knows."""

DOCUMENTATION = r"""
name: broker
short_description: The cameras that an MQTT broker knows
version_added: 1.0.0
author:
  - The developers of tmxd (@tmxd)
description:
  - Lists the cameras whose agents have left something with the broker, the retained C(tmx/1/GUID/about) and C(tmx/1/GUID/online).
  - A host is a camera, and its name the camera's GUID. Its variables are C(tmx_guid), C(tmx_model), C(tmx_version), C(tmx_online), and of a camera with
    an address C(tmx_url), the URL of its console, and C(ansible_host).
  - The groups are C(online), C(away), and one for each model, C(model_kt_a10).
  - Nothing tells that the last of the retained messages has come. The plugin waits until none has come for a while.
requirements:
  - paho-mqtt (C(python3-paho-mqtt) of Debian)
extends_documentation_fragment:
  - constructed
options:
  plugin:
    description: The name of this plugin.
    required: true
    choices: [tmx.camera.broker]
  host:
    description: The broker.
    default: 127.0.0.1
  port:
    description: Its port.
    type: int
    default: 8883
  tls:
    description: Whether the connection is encrypted. Without it the broker knows nobody; that fits a test on the loopback only.
    type: bool
    default: true
  ca:
    description: A PEM file of the authorities that the broker's certificate is checked against; without it those of the machine.
    type: path
  certificate:
    description: A PEM file with the certificate that the broker knows its reader by.
    type: path
  key:
    description: A PEM file with its key.
    type: path
  timeout:
    description: Seconds in which the broker must take the connection and the subscription, and seconds in which all messages must have come.
    type: float
    default: 10
  quiet:
    description: Seconds without a message behind which there is no more.
    type: float
    default: 1
"""

EXAMPLES = r"""
# cameras.tmx.yml
plugin: tmx.camera.broker
host: broker.example.org
ca: /etc/tmx/ca.pem
certificate: /etc/tmx/operator.pem
key: /etc/tmx/operator.key
"""

import json
import ssl
import time

from ansible.errors import AnsibleError, AnsibleParserError
from ansible.plugins.inventory import BaseInventoryPlugin, Constructable
from ansible.utils.unsafe_proxy import wrap_var

try:
    from paho.mqtt import client as mqtt
except ImportError:
    mqtt = None

TOPICS = ("online", "about")


class Reader:
    """One look at what the broker retains."""

    def __init__(self, options):
        self._options = options
        self._refusal = None
        self._is_subscribed = False
        self._last = 0.0  # when something came
        self.found = {}  # by GUID, by the last word of the topic: the payload

    def run(self):
        """Fills C(found)."""
        client = mqtt.Client(protocol=mqtt.MQTTv311)
        client.on_connect = self._connected
        client.on_subscribe = self._subscribed
        client.on_message = self._take
        timeout, quiet = self._options["timeout"], self._options["quiet"]
        try:
            if self._options["tls"]:
                client.tls_set(self._options["ca"], self._options["certificate"], self._options["key"])
            # The time of the keep-alive is also that of the handshake.
            client.connect(self._options["host"], self._options["port"], keepalive=max(1, round(timeout)))
        except (OSError, ValueError, ssl.SSLError) as error:
            raise AnsibleError(f"{self._broker}: {error}") from error
        try:
            begin = time.monotonic()
            while time.monotonic() < begin + timeout:
                if client.loop(timeout=0.1) != mqtt.MQTT_ERR_SUCCESS or self._refusal:
                    raise AnsibleError(f"{self._broker}: {self._refusal or 'the broker has closed the connection'}")
                if self._is_subscribed and time.monotonic() > self._last + quiet:
                    return
            raise AnsibleError(f"{self._broker}: {'messages keep coming' if self._is_subscribed else 'no answer'} within {timeout:g} s")
        finally:
            client.disconnect()

    @property
    def _broker(self):
        return f"the broker {self._options['host']}:{self._options['port']}"

    def _connected(self, client, _data, _flags, code):
        if code != 0:
            self._refusal = mqtt.connack_string(code)
            return
        client.subscribe([(f"tmx/1/+/{word}", 1) for word in TOPICS])

    def _subscribed(self, _client, _data, _message, granted):
        self._is_subscribed = True
        self._last = time.monotonic()
        if any(qos > 2 for qos in granted):
            self._refusal = "may not be subscribed to"

    def _take(self, _client, _data, message):
        self._last = time.monotonic()
        guid, word = message.topic.split("/")[2:]
        try:
            payload = json.loads(message.payload)
        except ValueError:
            return  # an empty message takes a retained one back
        self.found.setdefault(guid, {})[word] = payload


class InventoryModule(BaseInventoryPlugin, Constructable):
    """The plugin."""

    NAME = "tmx.camera.broker"

    def verify_file(self, path):
        """Only files that are meant for it."""
        return super().verify_file(path) and path.endswith((".tmx.yml", ".tmx.yaml"))

    def parse(self, inventory, loader, path, cache=True):
        """Fills the inventory."""
        super().parse(inventory, loader, path, cache)
        if mqtt is None:
            raise AnsibleParserError("the inventory plugin tmx.camera.broker needs paho-mqtt (Debian: python3-paho-mqtt)")
        self._read_config_data(path)
        names = ("host", "port", "tls", "ca", "certificate", "key", "timeout", "quiet")
        reader = Reader({name: self.get_option(name) for name in names})
        reader.run()
        for group in ("online", "away"):
            inventory.add_group(group)
        for guid, known in sorted(reader.found.items()):
            self._add(guid, known.get("online") is True, known.get("about"))

    def _add(self, guid, is_online, about):
        about = about if isinstance(about, dict) else {}
        host = self.inventory.add_host(guid)
        variables = {"tmx_guid": guid, "tmx_online": is_online}
        variables.update({f"tmx_{key}": str(about[key]) for key in ("model", "version") if about.get(key)})
        address = about.get("address")
        if isinstance(address, str) and address:
            variables["tmx_url"] = f"https://{address}"
            variables["ansible_host"] = address.rpartition(":")[0].strip("[]") or address
        for name, value in variables.items():
            # What a camera says of itself is no template.
            self.inventory.set_variable(host, name, wrap_var(value))
        groups = ["online" if is_online else "away"]
        if "tmx_model" in variables:
            groups.append(self.inventory.add_group(self._sanitize_group_name("model_" + variables["tmx_model"].lower())))
        for group in groups:
            self.inventory.add_child(group, host)
        known = self.inventory.get_host(host).get_vars()
        strict = self.get_option("strict")
        self._set_composite_vars(self.get_option("compose"), known, host, strict=strict)
        self._add_host_to_composed_groups(self.get_option("groups"), known, host, strict=strict)
        self._add_host_to_keyed_groups(self.get_option("keyed_groups"), known, host, strict=strict)
