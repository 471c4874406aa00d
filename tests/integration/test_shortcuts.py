"""Shortcuts end to end: a USB rule whose device comes and goes runs its on-connect and
on-disconnect shortcuts, scripts in a temporary shortcuts folder, through build/obrinta-shortcuts."""

import os
import unittest

from obrinta_harness import Scenario, add_usb_device, remove_usb_device, usb_rule

DECK = "B0000000-0000-4000-8000-000000000001"


class ShortcutScenarios(Scenario, unittest.TestCase):
    def setUp(self):
        super().setUp()
        self.folder = os.path.join(self.home.config, "Obrinta", "shortcuts")
        os.makedirs(self.folder)
        self.record = os.path.join(self.home.root, "record")
        self.add_script("Lights On", 'printf "%s\\n" "$0" >> "$RECORD"')
        self.add_script("ok", 'printf "%s\\n" "$0" >> "$RECORD"')
        self.add_script("fail", 'echo "no printer" >&2\nexit 4')

    def add_script(self, name, body):
        path = os.path.join(self.folder, name)
        with open(path, "w") as f:
            f.write("#!/bin/sh\n" + body + "\n")
        os.chmod(path, 0o755)

    def recorded(self):
        with open(self.record) as f:
            return [os.path.basename(line) for line in f.read().splitlines()]

    def run_lines(self, count):
        """The runner's lines up to the end of a run of `count` shortcuts."""
        lines = self.obrinta.read_until("   ✅ Finished running %d shortcut(s)" % count)
        start = max(i for i, l in enumerate(lines) if l.startswith("   🎯 Running "))
        return lines[start:]

    def test_connect_and_disconnect_lists_run_in_order(self):
        self.home.write_rules([usb_rule(DECK, 0x0FD9, 0x006D, "Stream Deck", shortcuts={
            "shortcutsOnConnect": ["ok", "fail", "Lights On"],
            "shortcutsOnDisconnect": ["Lights On"]})])
        self.start(env={"RECORD": self.record})
        absent = [
            "   🎯 Running 1 shortcut(s) because Stream Deck disconnected",
            "      [1/1] Executing 'Lights On'...",
            "⚡️ [ShortcutsManager] Executing shortcut: 'Lights On'",
            "   ✅ Shortcut 'Lights On' executed successfully",
            "   ✅ Finished running 1 shortcut(s)",
        ]
        # The device is absent at the first evaluation.
        self.assertEqual(self.run_lines(1), absent)
        self.assertEqual(self.recorded(), ["Lights On"])

        deck = add_usb_device(self.testbed, "1.4", 0x0FD9, 0x006D, "Elgato Systems", "Stream Deck")
        self.assertIn("      ✅ Device CONNECTED", self.obrinta.evaluation())
        self.assertEqual(self.run_lines(3), [
            "   🎯 Running 3 shortcut(s) because Stream Deck connected",
            "      [1/3] Executing 'ok'...",
            "⚡️ [ShortcutsManager] Executing shortcut: 'ok'",
            "   ✅ Shortcut 'ok' executed successfully",
            "      [2/3] Executing 'fail'...",
            "⚡️ [ShortcutsManager] Executing shortcut: 'fail'",
            "   ❌ Shortcut 'fail' failed with status 4: no printer",
            "",
            "      [3/3] Executing 'Lights On'...",
            "⚡️ [ShortcutsManager] Executing shortcut: 'Lights On'",
            "   ✅ Shortcut 'Lights On' executed successfully",
            "   ✅ Finished running 3 shortcut(s)",
        ])
        self.assertEqual(self.recorded(), ["Lights On", "ok", "Lights On"])

        remove_usb_device(self.testbed, deck)
        self.assertIn("      ❌ Device DISCONNECTED", self.obrinta.evaluation())
        self.assertEqual(self.run_lines(1), absent)
        self.assertEqual(self.recorded(), ["Lights On", "ok", "Lights On", "Lights On"])


if __name__ == "__main__":
    unittest.main()
