"""One Obrinta per session: a second start asks the first, over a private session bus, to show
its settings window and exits with status 0 before evaluating anything."""

import time
import unittest

import dbus
import dbusmock

from obrinta_harness import Home, Obrinta

NAME = "io.github.obrinta.Obrinta"
USB_EVALUATION = "🔍 [AppController] Evaluating all bindings..."
FORWARDED = "ℹ️ [Obrinta] Already running; its settings window was opened"


class SingleInstance(dbusmock.DBusTestCase):
    @classmethod
    def setUpClass(cls):
        cls.start_session_bus()
        cls.bus = cls.get_dbus(system_bus=False)

    def setUp(self):
        self.homes = []
        self.running = []

    def tearDown(self):
        for obrinta in self.running:
            self.assertEqual(obrinta.stop(), 0)
        for home in self.homes:
            home.cleanup()

    def start(self, args=(), env=None):
        home = Home()
        self.homes.append(home)
        obrinta = Obrinta(home, args=args, env=env, debug=False)
        self.running.append(obrinta)
        return obrinta

    def wait_for_owner(self, timeout=10):
        deadline = time.monotonic() + timeout
        while not self.bus.name_has_owner(NAME):
            self.assertLess(time.monotonic(), deadline, "the first Obrinta never took its name")
            time.sleep(0.05)

    def test_second_start_forwards_and_exits(self):
        first = self.start()
        first.read_until(USB_EVALUATION, timeout=10)
        self.wait_for_owner()

        second = self.start()
        self.assertEqual(second.process.wait(timeout=15), 0)
        lines = second.read_for(1)
        self.assertEqual(lines, [FORWARDED])

        # The first runs on and still answers.
        self.assertIsNone(first.process.poll())
        proxy = self.bus.get_object(NAME, "/io/github/obrinta/Obrinta")
        proxy.ShowSettings(dbus_interface=NAME, timeout=10)
        self.assertEqual(first.stop(), 0)
        self.running.remove(first)
        self.assertFalse(self.bus.name_has_owner(NAME))

    def test_without_a_session_bus_each_start_runs(self):
        missing = {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent/obrinta-session-bus"}
        first = self.start(env=missing)
        second = self.start(env=missing)
        for obrinta in (first, second):
            obrinta.read_until(USB_EVALUATION, timeout=10)
            self.assertIsNone(obrinta.process.poll())


if __name__ == "__main__":
    unittest.main()
