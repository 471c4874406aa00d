"""Wake from sleep: logind's PrepareForSleep(false) on a private system bus brings one evaluation
of the USB rules and then of the WiFi rules, 2 s later."""

import os
import subprocess
import time
import unittest

import dbus
import dbusmock

from obrinta_harness import Scenario

USB_EVALUATION = "🔍 [AppController] Evaluating all bindings..."
WIFI_EVALUATION = "📶 [AppController] Evaluating all WiFi bindings..."
NOT_WATCHED = "⚠️ [Obrinta] Wake from sleep is not watched (no system bus): "


class WakeFromSleep(Scenario, dbusmock.DBusTestCase):
    @classmethod
    def setUpClass(cls):
        cls.start_system_bus()
        cls.logind, cls.logind_obj = cls.spawn_server_template("logind", {}, stdout=subprocess.DEVNULL)

    @classmethod
    def tearDownClass(cls):
        cls.logind.terminate()
        cls.logind.wait()
        super().tearDownClass()

    def prepare_for_sleep(self, going_to_sleep):
        self.logind_obj.EmitSignal("org.freedesktop.login1.Manager", "PrepareForSleep", "b",
                                   [dbus.Boolean(going_to_sleep)], dbus_interface=dbusmock.MOCK_IFACE)

    def test_each_wake_evaluates_usb_then_wifi_rules_two_seconds_later(self):
        lines = self.start(debug=False, testbed=None).read_until(WIFI_EVALUATION, timeout=10)
        self.assertNotIn(NOT_WATCHED, "\n".join(lines))
        self.prepare_for_sleep(True)
        self.assertNotIn(USB_EVALUATION, self.obrinta.read_for(3))

        for _ in range(2):
            self.prepare_for_sleep(False)
            woken = time.monotonic()
            self.obrinta.read_until(USB_EVALUATION, timeout=10)
            delay = time.monotonic() - woken
            self.assertGreater(delay, 1.5)
            self.assertLess(delay, 4.0)
            self.obrinta.read_until(WIFI_EVALUATION, timeout=5)
            # One pass per wake.
            self.assertNotIn(USB_EVALUATION, self.obrinta.read_for(3))

    def test_without_a_system_bus_rules_still_run(self):
        missing = "unix:path=" + os.path.join(self.home.root, "no-system-bus")
        obrinta = self.start(debug=False, testbed=None, env={"DBUS_SYSTEM_BUS_ADDRESS": missing})
        lines = obrinta.read_until(WIFI_EVALUATION, timeout=10)
        self.assertEqual(sum(line.startswith(NOT_WATCHED) for line in lines), 1)
        self.assertIn(USB_EVALUATION, lines)


if __name__ == "__main__":
    unittest.main()
