"""WiFi test doubles on a private system bus: NetworkManager (dbusmock's template plus a typed
WiFi device, nm_wifi_template.py) and a small iwd (iwd_template.py), and WiFi rule helpers."""

import os
import subprocess

import dbus
import dbusmock

from obrinta_harness import Scenario

HERE = os.path.dirname(os.path.abspath(__file__))
NM_TEMPLATE = os.path.join(HERE, "nm_wifi_template.py")
IWD_TEMPLATE = os.path.join(HERE, "iwd_template.py")
NM_DEVICE = "/org/freedesktop/NetworkManager/Devices/wlan0"


class WiFiTestCase(Scenario, dbusmock.DBusTestCase):
    """Private system and session buses per test class; NetworkManager and iwd on demand."""

    @classmethod
    def setUpClass(cls):
        cls.start_system_bus()
        cls.start_session_bus()

    def setUp(self):
        super().setUp()
        self.services = []

    def tearDown(self):
        # Obrinta ends before the services it watches.
        super().tearDown()
        for process in self.services:
            stop_service(process)

    def rules(self, *rules):
        self.home.write_rules(list(rules), "wifi-bindings.json")

    def start_networkmanager(self, access_points=(), active=-1, interface="wlan0"):
        """Returns (process, mock interface); access points are SSIDs as bytes."""
        parameters = {
            "Interface": interface,
            "AccessPoints": dbus.Array([dbus.ByteArray(ssid) for ssid in access_points], signature="ay"),
            "Active": dbus.Int32(active),
        }
        process, obj = self.spawn_server_template(NM_TEMPLATE, parameters, stdout=subprocess.DEVNULL)
        self.services.append(process)
        return process, dbus.Interface(obj, dbusmock.MOCK_IFACE)

    def start_iwd(self, networks=(), interface="wlan0"):
        parameters = {"Interface": interface, "Networks": dbus.Array(networks, signature="s")}
        process, obj = self.spawn_server_template(IWD_TEMPLATE, parameters, stdout=subprocess.DEVNULL)
        self.services.append(process)
        return process, dbus.Interface(obj, dbusmock.MOCK_IFACE)


def stop_service(process):
    if process.poll() is None:
        process.terminate()
        process.wait(timeout=5)


def wifi_rule(rule_id, ssid, app_id="", app_name="", app_path="", **extra):
    rule = {"id": rule_id, "ssid": ssid, "appBundleIdentifier": app_id, "appName": app_name,
            "appPath": app_path, "isEnabled": True, "launchOnConnect": True, "killOnDisconnect": True}
    rule.update(extra)
    return rule


def wifi_evaluation(obrinta, timeout=10.0):
    """The lines of the next WiFi evaluation, from its first line to its last."""
    first = "📶 [AppController] Evaluating all WiFi bindings..."
    obrinta.read_until(first, timeout)
    body = obrinta.read_until(lambda l: l in ("✅ [AppController] WiFi evaluation complete",
                                               "   ⏸️ WiFi monitoring disabled, skipping evaluation"), timeout)
    return [first] + body
