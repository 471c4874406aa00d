"""Launching and quitting real applications from desktop entries in a temporary XDG data folder,
with the desktop notifications read back from dbusmock's notification daemon."""

import os
import signal
import subprocess
import time
import unittest

import dbus
import dbusmock

from obrinta_harness import (Home, Obrinta, add_usb_device, new_testbed, remove_usb_device,
                             usb_rule)

RULE = "B0000000-0000-4000-8000-000000000001"

QUITS_ON_TERM = "#!/bin/sh\ntrap 'exit 0' TERM\nwhile :; do sleep 0.1; done\n"
IGNORES_TERM = "#!/bin/sh\ntrap '' TERM\nwhile :; do sleep 0.1; done\n"
FORKS_CHILD = "#!/bin/sh\ntrap 'kill $child; exit 0' TERM\nsleep 300 & child=$!\nwhile :; do sleep 0.1; done\n"


class LaunchAndQuit(dbusmock.DBusTestCase):
    @classmethod
    def setUpClass(cls):
        cls.start_session_bus()
        cls.daemon, cls.daemon_obj = cls.spawn_server_template("notification_daemon", {}, stdout=subprocess.DEVNULL)

    @classmethod
    def tearDownClass(cls):
        cls.daemon.terminate()
        cls.daemon.wait()
        super().tearDownClass()

    def setUp(self):
        self.home = Home()
        self.testbed = new_testbed()
        self.obrinta = None
        self.mock = dbus.Interface(self.daemon_obj, dbusmock.MOCK_IFACE)
        self.mock.ClearCalls()

    def tearDown(self):
        if self.obrinta:
            self.assertEqual(self.obrinta.stop(), 0)
        # Only what this test itself had Obrinta start is cleaned up.
        subprocess.run(["pkill", "-KILL", "-f", self.home.root], check=False)
        self.home.cleanup()

    def app(self, desktop_id, body):
        script = os.path.join(self.home.root, desktop_id + ".sh")
        with open(script, "w") as f:
            f.write(body)
        os.chmod(script, 0o755)
        self.home.add_desktop_entry(desktop_id, desktop_id, script)
        return script

    def notifications(self, count, timeout=10):
        deadline = time.monotonic() + timeout
        while time.monotonic() < deadline:
            calls = self.mock.GetMethodCalls("Notify")
            if len(calls) >= count:
                return [(str(a[3]), str(a[4]), int(a[6]["urgency"])) for _, a in calls]
            time.sleep(0.05)
        self.fail("expected %d notifications, got %r" % (count, self.mock.GetMethodCalls("Notify")))

    def running(self, script):
        out = subprocess.run(["pgrep", "-f", "^/bin/sh " + script], capture_output=True, text=True)
        return [int(p) for p in out.stdout.split()]

    def test_plug_launches_unplug_quits(self):
        script = self.app("org.test.Quitter", QUITS_ON_TERM)
        self.home.write_rules([usb_rule(RULE, 0x0FD9, 0x0060, "Stream Deck", "org.test.Quitter", "Quitter")])
        self.obrinta = Obrinta(self.home, testbed=self.testbed)
        self.obrinta.read_until("Notification permission granted: true")
        self.obrinta.evaluation()

        deck = add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        lines = self.obrinta.read_until("      ✅ Successfully launched Quitter")
        self.assertIn("      📍 Found app at: " + self.home.data + "/applications/org.test.Quitter.desktop", lines)
        self.assertEqual(self.notifications(1), [
            ("Application Started", "Quitter was launched because Stream Deck is connected.", 1)])
        self.assertEqual(len(self.running(script)), 1)

        # Evaluating again while it runs starts nothing new.
        remove_usb_device(self.testbed, add_usb_device(self.testbed, "2", 0x1050, 0x0407))
        self.assertIn("      ⏭️ Action: SKIP (already running)", self.obrinta.evaluation())

        pid = self.running(script)[0]
        remove_usb_device(self.testbed, deck)
        lines = self.obrinta.read_until("      ✅ Terminated Quitter via quit")
        self.assertEqual(lines[-3:], [
            "      Found 1 instance(s) of Quitter",
            "      🛑 Gracefully terminating Quitter (PID: %d)" % pid,
            "      ✅ Terminated Quitter via quit"])
        self.assertEqual(self.notifications(2)[1],
                         ("Application Stopped", "Quitter was quit because Stream Deck is no longer connected.", 1))
        deadline = time.monotonic() + 5
        while self.running(script) and time.monotonic() < deadline:
            time.sleep(0.05)
        self.assertEqual(self.running(script), [])

    def test_stubborn_application_is_forced_after_the_timeout(self):
        script = self.app("org.test.Stubborn", IGNORES_TERM)
        self.home.write_rules([usb_rule(RULE, 0x0FD9, 0x0060, "Stream Deck", "org.test.Stubborn", "Stubborn",
                                        forceQuitAllowed=True, forceQuitTimeout=1)])
        deck = add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        self.obrinta = Obrinta(self.home, testbed=self.testbed)
        self.obrinta.read_until("      ✅ Successfully launched Stubborn")
        self.notifications(1)
        remove_usb_device(self.testbed, deck)
        self.obrinta.read_until("      ✅ Terminated Stubborn via quit")
        lines = self.obrinta.read_until("      ✅ Terminated Stubborn via force quit")
        self.assertIn("      ⏰ Timeout expired, forcing termination now", lines)
        self.assertEqual(self.notifications(2)[1][0], "Application Stopped")
        time.sleep(0.5)
        self.assertEqual(len(self.mock.GetMethodCalls("Notify")), 2)
        self.assertEqual(self.running(script), [])

    def test_forking_application_is_one_instance(self):
        script = self.app("org.test.Forker", FORKS_CHILD)
        self.home.write_rules([usb_rule(RULE, 0x0FD9, 0x0060, "Deck", "org.test.Forker", "Forker")])
        deck = add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        self.obrinta = Obrinta(self.home, testbed=self.testbed)
        self.obrinta.read_until("      ✅ Successfully launched Forker")
        remove_usb_device(self.testbed, deck)
        self.assertIn("      Found 1 instance(s) of Forker",
                      self.obrinta.read_until("      ✅ Terminated Forker via quit"))

    def test_broken_entry_and_notification_click(self):
        # GIO does not resolve an id whose program is missing; the path is tried and fails.
        entry = self.home.add_desktop_entry("org.test.Broken", "Broken", "/nonexistent/binary --flag \"%f\"")
        self.home.write_rules([usb_rule(RULE, 0x0FD9, 0x0060, "Deck", "org.test.Broken", "Broken", entry)])
        add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        self.obrinta = Obrinta(self.home, testbed=self.testbed)
        lines = self.obrinta.read_until(lambda l: l.startswith("      ❌ Failed to launch Broken from path: "))
        self.assertIn("      ⚠️ Could not find app by bundle ID, trying path: " + entry, lines)
        self.assertEqual(self.notifications(1), [("Failed to Launch", "Could not start Broken", 2)])

        # A click on the notification asks for the settings window.
        notification_id = 1
        self.mock.EmitSignal("org.freedesktop.Notifications", "ActionInvoked", "us",
                             [dbus.UInt32(notification_id), "default"])
        self.obrinta.read_until(lambda l: "settings window" in l.lower(), timeout=5)

    def test_notifications_switched_off_post_nothing(self):
        self.home.write_settings({"showNotifications": False})
        self.home.write_rules([usb_rule(RULE, 0x0FD9, 0x0060, "Deck", "org.test.None", "None", "/none")])
        add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        self.obrinta = Obrinta(self.home, testbed=self.testbed)
        self.obrinta.read_until("      ❌ App path does not exist: /none")
        time.sleep(0.3)
        self.assertEqual(self.mock.GetMethodCalls("Notify"), [])

    def test_notification_server_vanishing_and_coming_back(self):
        self.home.write_rules([usb_rule(RULE, 0x0FD9, 0x0060, "Deck", "org.test.None", "None", "/none")])
        self.obrinta = Obrinta(self.home, testbed=self.testbed)
        self.obrinta.evaluation()
        type(self).daemon.terminate()
        type(self).daemon.wait()
        deck = add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        self.obrinta.read_until(lambda l: l.startswith("Failed to post notification: "))
        remove_usb_device(self.testbed, deck)
        self.obrinta.evaluation()

        type(self).daemon, type(self).daemon_obj = self.spawn_server_template(
            "notification_daemon", {}, stdout=subprocess.DEVNULL)
        self.mock = dbus.Interface(type(self).daemon_obj, dbusmock.MOCK_IFACE)
        add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        self.assertEqual(self.notifications(1)[0][0], "Failed to Launch")


if __name__ == "__main__":
    unittest.main()
