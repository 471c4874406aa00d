"""WiFi rules end to end against NetworkManager: python3-dbusmock's template with a typed WiFi
device on a private system bus, networks joined and left while build/obrinta runs."""

import unittest

import dbus

from obrinta_harness import wait_for
from wifi_mocks import NM_DEVICE, WiFiTestCase, stop_service, wifi_evaluation, wifi_rule

RULE = "C0000000-0000-4000-8000-000000000001"
QUITS_ON_TERM = "#!/bin/sh\ntrap 'exit 0' TERM\nwhile :; do sleep 0.1; done\n"
EVALUATING = "📶 [AppController] Evaluating all WiFi bindings..."
STARTED = "📶 [WiFiMonitor] WiFi monitoring started"


def connected_by_rule(evaluation):
    """{rule ssid: the "Network connected" value} of one evaluation."""
    result, current = {}, None
    for line in evaluation:
        if line.startswith("   🔗 Evaluating: '"):
            current = line[len("   🔗 Evaluating: '"):line.rindex("' → ")]
        elif line.startswith("      Network connected: "):
            result[current] = line.endswith("true")
    return result


class NetworkManagerScenarios(WiFiTestCase):
    def test_joining_launches_and_leaving_quits(self):
        self.home.add_app("org.test.HomeApp", QUITS_ON_TERM)
        self.rules(wifi_rule(RULE, "Home", "org.test.HomeApp", "HomeApp"))
        _, nm = self.start_networkmanager([b"Home", b"Office"])
        obrinta = self.start()
        self.assertIn("📶 [WiFiMonitor] WiFi interface found: wlan0", obrinta.read_until(STARTED))
        self.assertEqual(wifi_evaluation(obrinta), [
            EVALUATING,
            "   WiFi monitoring enabled: true",
            "   📶 Current SSID: 'none'",
            "   📋 Active WiFi bindings: 1",
            "   🔗 Evaluating: 'Home' → HomeApp",
            "      Network connected: false",
            "      Launch on connect: true",
            "      Kill on disconnect: true",
            "      App running: false",
            "      ❌ Network DISCONNECTED",
            "      ⏭️ Action: SKIP (already stopped)",
            "✅ [AppController] WiFi evaluation complete",
        ])

        nm.Join(dbus.ByteArray(b"Home"), True)
        lines = [l for l in obrinta.read_until("      ✅ Successfully launched HomeApp") if l]
        self.assertEqual(lines[:3], [
            "📶 [WiFiMonitor] CoreWLAN ssidDidChange event received",
            "📶 [WiFiMonitor] SSID changed: 'none' → 'Home'",
            "📶 [WiFiMonitor] Current network: 'Home' (BSSID: 00:11:22:33:44:00)",
        ])
        at = lines.index("   🔗 Evaluating: 'Home' → HomeApp")
        self.assertEqual(lines[at + 1], "      Network connected: true")
        self.assertEqual(lines[at + 5:at + 7], ["      ✅ Network CONNECTED", "      🚀 Action: LAUNCH HomeApp"])
        self.assertTrue(wait_for(lambda: len(self.home.running()) == 1))

        nm.Leave(True)
        lines = obrinta.read_until("      ✅ Terminated HomeApp via quit")
        self.assertIn("📶 [WiFiMonitor] SSID changed: 'Home' → 'none'", lines)
        self.assertIn("   📶 Current SSID: 'none'", lines)
        self.assertIn("      💀 Action: TERMINATE HomeApp", lines)
        self.assertTrue(wait_for(lambda: not self.home.running()))

    def test_rules_evaluate_once_per_network_change(self):
        self.rules(wifi_rule(RULE, "Home", app_name="Nothing"))
        _, nm = self.start_networkmanager([b"Home", b"Office"], active=0)
        obrinta = self.start()
        # Joined at start: two announcements, then the evaluation one second after launch.
        lines = obrinta.read_for(3.0)
        self.assertEqual(lines.count(EVALUATING), 3)
        self.assertEqual(lines.count("📶 [WiFiMonitor] Current network: 'Home' (BSSID: 00:11:22:33:44:00)"), 2)
        self.assertNotIn("📶 [WiFiMonitor] SSID changed", "\n".join(lines))

        # A change of network: two announcements; the link change's check a second later finds
        # nothing new.
        nm.Join(dbus.ByteArray(b"Office"), True)
        lines = obrinta.read_for(2.5)
        self.assertEqual(lines.count(EVALUATING), 2)
        self.assertEqual(lines.count("   📶 Current SSID: 'Office'"), 2)
        self.assertEqual(lines.count("📶 [WiFiMonitor] SSID changed: 'Home' → 'Office'"), 1)
        self.assertIn("📶 [WiFiMonitor] CoreWLAN linkDidChange event received", lines)

        nm.Leave(True)
        lines = obrinta.read_for(2.5)
        self.assertEqual(lines.count(EVALUATING), 1)
        self.assertEqual(lines.count("      ❌ Network DISCONNECTED"), 1)

    def test_poll_finds_unannounced_changes_and_outlives_a_vanished_access_point(self):
        _, nm = self.start_networkmanager([b"Home"])
        obrinta = self.start()
        obrinta.read_until(STARTED)
        path = nm.Join(dbus.ByteArray(b"Home"), False)
        lines = obrinta.read_until("📶 [WiFiMonitor] SSID changed: 'none' → 'Home'", timeout=7)
        self.assertNotIn("📶 [WiFiMonitor] CoreWLAN ssidDidChange event received", lines)

        # The access point goes away while the device still names it.
        nm.RemoveAccessPoint(NM_DEVICE, path)
        # The access point may vanish between a check's two reads of the SSID, and then the
        # change shows only as the network being gone.
        lines = obrinta.read_until("📶 [WiFiMonitor] No WiFi network connected", timeout=7)
        errors = [l for l in lines if l.startswith("⚠️ [WiFiMonitor] Could not read Ssid of " + path + ": ")]
        self.assertEqual(len(errors), 1)
        self.assertIn("   📶 Current SSID: 'none'", wifi_evaluation(obrinta))
        # Logged once, not at every poll while it lasts.
        self.assertNotIn("Could not read", "\n".join(obrinta.read_for(5.5)))

    def test_without_networkmanager(self):
        self.rules(wifi_rule(RULE, "Home", app_name="Nothing"))
        obrinta = self.start()
        lines = obrinta.read_until(STARTED)
        self.assertEqual([l for l in lines if "[WiFiMonitor]" in l], [
            "⚠️ [WiFiMonitor] No WiFi interface available",
            "📶 [WiFiMonitor] Starting WiFi monitoring...",
            "📍 [WiFiMonitor] Location authorization status: 3",
            "✅ [WiFiMonitor] Location access authorized (always)",
            "📶 [WiFiMonitor] No WiFi network connected",
            "📶 [WiFiMonitor] No WiFi network connected",
            "📶 [WiFiMonitor] CoreWLAN delegate monitoring enabled",
            STARTED,
        ])
        evaluation = wifi_evaluation(obrinta)
        self.assertIn("   📶 Current SSID: 'none'", evaluation)
        self.assertEqual(connected_by_rule(evaluation), {"Home": False})

    def test_networkmanager_that_starts_late_and_restarts(self):
        obrinta = self.start()
        obrinta.read_until(STARTED)
        self.assertIn("   📶 Current SSID: 'none'", wifi_evaluation(obrinta))

        process, _ = self.start_networkmanager([b"Home"], active=0)
        lines = obrinta.read_until("📶 [WiFiMonitor] SSID changed: 'none' → 'Home'")
        self.assertIn("📶 [WiFiMonitor] WiFi interface found: wlan0", lines)
        self.assertIn("   📶 Current SSID: 'Home'", wifi_evaluation(obrinta))

        stop_service(process)
        obrinta.read_until("⚠️ [WiFiMonitor] No WiFi interface available")
        obrinta.read_until("📶 [WiFiMonitor] SSID changed: 'Home' → 'none'", timeout=7)

        self.start_networkmanager([b"Office"], active=0)
        lines = obrinta.read_until("📶 [WiFiMonitor] SSID changed: 'none' → 'Office'")
        self.assertIn("📶 [WiFiMonitor] WiFi interface found: wlan0", lines)

    def test_unusual_names(self):
        emoji32 = "📶" * 8
        self.rules(*[wifi_rule(RULE[:-1] + str(i), ssid, app_name="Nothing") for i, ssid in
                     enumerate(["Home", "Home ", "Café 📶", emoji32, "Caf\\xE9", "home"])])
        _, nm = self.start_networkmanager()
        obrinta = self.start()
        obrinta.read_until(STARTED)
        wifi_evaluation(obrinta)

        previous = "none"
        for raw, text in [(b"Home ", "Home "), ("Café 📶".encode(), "Café 📶"),
                          (emoji32.encode(), emoji32), (b"Caf\xe9", "Caf\\xE9"), (b"Home", "Home")]:
            self.assertLessEqual(len(raw), 32)
            nm.Join(dbus.ByteArray(raw), True)
            obrinta.read_until("📶 [WiFiMonitor] SSID changed: '%s' → '%s'" % (previous, text))
            evaluation = wifi_evaluation(obrinta)
            self.assertIn("   📶 Current SSID: '%s'" % text, evaluation)
            connected = connected_by_rule(evaluation)
            self.assertEqual([ssid for ssid, on in connected.items() if on], [text])
            previous = text

        # An empty name is no network.
        nm.Join(dbus.ByteArray(b""), True)
        lines = obrinta.read_until("📶 [WiFiMonitor] No WiFi network connected")
        self.assertIn("📶 [WiFiMonitor] SSID changed: 'Home' → 'none'", lines)
        evaluation = wifi_evaluation(obrinta)
        self.assertIn("   📶 Current SSID: 'none'", evaluation)
        self.assertFalse(any(connected_by_rule(evaluation).values()))


if __name__ == "__main__":
    unittest.main()
