"""USB rules end to end: build/obrinta under umockdev, rules in the real file, devices plugged and
unplugged while it runs, and the developer log read line by line."""

import unittest

from obrinta_harness import Scenario, add_usb_device, remove_usb_device, usb_rule

DECK = "A0000000-0000-4000-8000-000000000001"
OFF = "A0000000-0000-4000-8000-000000000002"
PEDAL = "A0000000-0000-4000-8000-000000000003"


class UsbRuleScenarios(Scenario, unittest.TestCase):
    def test_plug_and_unplug_decide_launch_and_terminate(self):
        self.home.write_rules([
            usb_rule(DECK, 0x0FD9, 0x006D, "Stream Deck", "org.example.Missing", "Missing",
                     "/nowhere/Missing"),
            usb_rule(OFF, 0x0FD9, 0x006D, "Disabled Deck", "org.example.Off", "Off", isEnabled=False),
            usb_rule(PEDAL, 0x1050, 0x0407, "Pedal", shortcuts={
                "shortcutsOnConnect": [], "shortcutsOnDisconnect": []}),
        ])
        add_usb_device(self.testbed, "3", 0x8087, 0x0026)             # Intel: excluded
        add_usb_device(self.testbed, "4", 0x2109, 0x2817, "VIA", "Hub")  # hub: excluded
        add_usb_device(self.testbed, "5", 0x1234, 0x5678)               # no strings at all
        obrinta = self.start(debug=False)
        self.assertEqual(obrinta.read_until(lambda l: "Running in" in l)[-1],
                         "🚀 [Obrinta] Running in RELEASE mode - debug logging disabled")

        first = obrinta.evaluation()
        self.assertEqual(first[:6], [
            "🔍 [AppController] Evaluating all bindings...",
            "   Monitoring enabled: true",
            "   📱 Connected devices: 1",
            "      - USB Device (0x1234:0x5678) (VID: 0x1234, PID: 0x5678)",
            "   📋 Active bindings: 2",
            "   🔗 Evaluating: Stream Deck → Missing",
        ])
        self.assertNotIn("Disabled Deck", "\n".join(first))
        self.assertIn("      No app configured (shortcuts only)", first)

        deck = add_usb_device(self.testbed, "1.4", 0x0FD9, 0x006D, "Elgato Systems", "Stream Deck")
        plugged = obrinta.evaluation()
        self.assertIn("      - Stream Deck MK.2 (VID: 0x0FD9, PID: 0x006D)", plugged)
        at = plugged.index("   🔗 Evaluating: Stream Deck → Missing")
        self.assertEqual(plugged[at + 1:at + 9], [
            "      Device VID:PID = 0x0FD9:0x006D",
            "      Device connected: true",
            "      Launch on connect: true",
            "      Kill on disconnect: true",
            "      App running: false",
            "      ✅ Device CONNECTED",
            "      🚀 Action: LAUNCH Missing",
            "      🚀 Launching Missing (Bundle ID: org.example.Missing)",
        ])

        remove_usb_device(self.testbed, deck)
        unplugged = obrinta.evaluation()
        self.assertIn("   📱 Connected devices: 1", unplugged)
        self.assertIn("      ❌ Device DISCONNECTED", unplugged)
        self.assertIn("      ⏭️ Action: SKIP (already stopped)", unplugged)

    def test_debug_lines_trace_the_rescan(self):
        self.home.write_rules([])
        obrinta = self.start(debug=True)
        obrinta.read_until("🚀 [Obrinta] Running in DEBUG mode - debug logging enabled")
        obrinta.evaluation()
        add_usb_device(self.testbed, "2", 0x1050, 0x0407)
        lines = obrinta.read_until("🔌 [USBMonitor] Triggering evaluation after ADD")
        self.assertEqual([l for l in lines if "[USBMonitor]" in l or l.startswith("   - ")], [
            "🔌 [USBMonitor] Device ADDED notification received",
            "🔌 [USBMonitor] Scanning devices after ADD event...",
            "🔍 [USBMonitor] Starting device scan...",
            "📊 [USBMonitor] Found 1 device(s)",
            "✅ [USBMonitor] Updating connectedDevices array with 1 device(s)",
            "   - YubiKey (VID: 0x1050, PID: 0x0407)",
            "🔌 [USBMonitor] Triggering evaluation after ADD",
        ])
        self.assertIn("   📋 Active bindings: 0", obrinta.evaluation())

    def test_monitoring_switched_off_stays_off(self):
        self.home.write_rules([usb_rule(DECK, 0x0FD9, 0x006D, "Stream Deck", "org.example.X", "X")])
        self.home.write_settings({"monitoringEnabled": False})
        self.assertEqual(self.start().evaluation(), [
            "🔍 [AppController] Evaluating all bindings...",
            "   Monitoring enabled: false",
            "   ⏸️ Monitoring disabled, skipping evaluation",
        ])

    def test_corrupt_rules_file_is_survived_and_kept(self):
        self.home.write_rules([])
        path = self.home.storage + "/bindings.json"
        with open(path, "w") as f:
            f.write('[{"id": "truncated')
        self.assertIn("   📋 Active bindings: 0", self.start().evaluation())
        with open(path) as f:
            self.assertEqual(f.read(), '[{"id": "truncated')


if __name__ == "__main__":
    unittest.main()
