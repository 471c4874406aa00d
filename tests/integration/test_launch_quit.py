"""Launching and quitting real applications from desktop entries in a temporary XDG data folder,
with the desktop notifications read back from dbusmock's notification daemon."""

import subprocess
import time
import unittest

import dbus
import dbusmock

from obrinta_harness import Scenario, add_usb_device, remove_usb_device, usb_rule, wait_for

RULE = "B0000000-0000-4000-8000-000000000001"

QUITS_ON_TERM = "#!/bin/sh\ntrap 'exit 0' TERM\nwhile :; do sleep 0.1; done\n"
IGNORES_TERM = "#!/bin/sh\ntrap '' TERM\nwhile :; do sleep 0.1; done\n"
FORKS_CHILD = "#!/bin/sh\ntrap 'kill $child; exit 0' TERM\nsleep 300 & child=$!\nwhile :; do sleep 0.1; done\n"


class LaunchAndQuit(Scenario, dbusmock.DBusTestCase):
    @classmethod
    def setUpClass(cls):
        cls.start_session_bus()
        cls.start_daemon()

    @classmethod
    def start_daemon(cls):
        cls.daemon, obj = cls.spawn_server_template("notification_daemon", {}, stdout=subprocess.DEVNULL)
        cls.mock = dbus.Interface(obj, dbusmock.MOCK_IFACE)

    @classmethod
    def tearDownClass(cls):
        cls.daemon.terminate()
        cls.daemon.wait()
        super().tearDownClass()

    def setUp(self):
        super().setUp()
        self.mock.ClearCalls()

    def notifications(self, count, timeout=10):
        calls = wait_for(lambda: len(self.mock.GetMethodCalls("Notify")) >= count, timeout)
        self.assertTrue(calls, "expected %d notifications, got %r" % (count, self.mock.GetMethodCalls("Notify")))
        return [(str(a[3]), str(a[4]), int(a[6]["urgency"])) for _, a in self.mock.GetMethodCalls("Notify")]

    def deck_rule(self, app, **extra):
        self.home.write_rules([usb_rule(RULE, 0x0FD9, 0x0060, "Stream Deck", "org.test." + app, app, **extra)])

    def test_plug_launches_unplug_quits(self):
        self.home.add_app("org.test.Quitter", QUITS_ON_TERM)
        self.deck_rule("Quitter")
        self.start().read_until("Notification permission granted: true")
        self.obrinta.evaluation()

        deck = add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        lines = self.obrinta.read_until("      ✅ Successfully launched Quitter")
        self.assertIn("      📍 Found app at: " + self.home.data + "/applications/org.test.Quitter.desktop", lines)
        self.assertEqual(self.notifications(1), [
            ("Application Started", "Quitter was launched because Stream Deck is connected.", 1)])
        self.assertEqual(len(self.home.running()), 1)

        # Evaluating again while it runs starts nothing new.
        remove_usb_device(self.testbed, add_usb_device(self.testbed, "2", 0x1050, 0x0407))
        self.assertIn("      ⏭️ Action: SKIP (already running)", self.obrinta.evaluation())

        pid = self.home.running()[0]
        remove_usb_device(self.testbed, deck)
        lines = self.obrinta.read_until("      ✅ Terminated Quitter via quit")
        self.assertEqual(lines[-3:], [
            "      Found 1 instance(s) of Quitter",
            "      🛑 Gracefully terminating Quitter (PID: %d)" % pid,
            "      ✅ Terminated Quitter via quit"])
        self.assertEqual(self.notifications(2)[1],
                         ("Application Stopped", "Quitter was quit because Stream Deck is no longer connected.", 1))
        self.assertTrue(wait_for(lambda: not self.home.running()))

    def test_stubborn_application_is_forced_after_the_timeout(self):
        self.home.add_app("org.test.Stubborn", IGNORES_TERM)
        self.deck_rule("Stubborn", forceQuitAllowed=True, forceQuitTimeout=1)
        deck = add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        self.start().read_until("      ✅ Successfully launched Stubborn")
        self.notifications(1)
        remove_usb_device(self.testbed, deck)
        self.obrinta.read_until("      ✅ Terminated Stubborn via quit")
        lines = self.obrinta.read_until("      ✅ Terminated Stubborn via force quit")
        self.assertIn("      ⏰ Timeout expired, forcing termination now", lines)
        self.assertEqual(self.notifications(2)[1][0], "Application Stopped")
        time.sleep(0.5)
        self.assertEqual(len(self.mock.GetMethodCalls("Notify")), 2)
        self.assertEqual(self.home.running(), [])

    def test_forking_application_is_one_instance(self):
        self.home.add_app("org.test.Forker", FORKS_CHILD)
        self.deck_rule("Forker")
        deck = add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        self.start().read_until("      ✅ Successfully launched Forker")
        remove_usb_device(self.testbed, deck)
        self.assertIn("      Found 1 instance(s) of Forker",
                      self.obrinta.read_until("      ✅ Terminated Forker via quit"))

    def test_broken_entry_and_notification_click(self):
        # GIO does not resolve an id whose program is missing; the path is tried and fails.
        entry = self.home.add_desktop_entry("org.test.Broken", "Broken", "/nonexistent/binary --flag \"%f\"")
        self.deck_rule("Broken", app_path=entry)
        add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        lines = self.start().read_until(lambda l: l.startswith("      ❌ Failed to launch Broken from path: "))
        self.assertIn("      ⚠️ Could not find app by bundle ID, trying path: " + entry, lines)
        self.assertEqual(self.notifications(1), [("Failed to Launch", "Could not start Broken", 2)])

        # A click on the notification opens the settings window: the windows are loaded.
        maps = "/proc/%d/maps" % self.obrinta.process.pid
        self.assertNotIn("obrinta-windows", open(maps).read())
        self.mock.EmitSignal("org.freedesktop.Notifications", "ActionInvoked", "us", [dbus.UInt32(1), "default"])
        self.assertTrue(wait_for(lambda: "obrinta-windows" in open(maps).read(), timeout=10))

    def test_notifications_switched_off_post_nothing(self):
        self.home.write_settings({"showNotifications": False})
        self.deck_rule("None", app_path="/none")
        add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        self.start().read_until("      ❌ App path does not exist: /none")
        time.sleep(0.3)
        self.assertEqual(self.mock.GetMethodCalls("Notify"), [])

    def test_notification_server_vanishing_and_coming_back(self):
        self.deck_rule("None", app_path="/none")
        self.start().evaluation()
        self.daemon.terminate()
        self.daemon.wait()
        deck = add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        self.obrinta.read_until(lambda l: l.startswith("Failed to post notification: "))
        remove_usb_device(self.testbed, deck)
        self.obrinta.evaluation()

        type(self).start_daemon()
        add_usb_device(self.testbed, "1", 0x0FD9, 0x0060)
        self.assertEqual(self.notifications(1)[0][0], "Failed to Launch")


if __name__ == "__main__":
    unittest.main()
