"""WiFi without NetworkManager: a small iwd on a private system bus, and NetworkManager taking
over when it appears."""

import unittest

from wifi_mocks import WiFiTestCase, stop_service, wifi_evaluation, wifi_rule

RULE = "D0000000-0000-4000-8000-000000000001"
STARTED = "📶 [WiFiMonitor] WiFi monitoring started"


class IwdScenarios(WiFiTestCase):
    def test_station_joins_roams_and_leaves(self):
        self.rules(wifi_rule(RULE, "Home", app_name="Nothing"))
        _, iwd = self.start_iwd(["Home", "Office"])
        obrinta = self.start()
        lines = obrinta.read_until(STARTED)
        self.assertIn("📶 [WiFiMonitor] WiFi interface found: wlan0", lines)
        self.assertIn("   📶 Current SSID: 'none'", wifi_evaluation(obrinta))

        iwd.Connect("Home")
        lines = [l for l in obrinta.read_until("📶 [WiFiMonitor] Current network: 'Home' (BSSID: unknown)") if l]
        self.assertEqual(lines, [
            "📶 [WiFiMonitor] CoreWLAN ssidDidChange event received",
            "📶 [WiFiMonitor] SSID changed: 'none' → 'Home'",
            "📶 [WiFiMonitor] Current network: 'Home' (BSSID: unknown)",
        ])
        evaluation = wifi_evaluation(obrinta)
        self.assertIn("   📶 Current SSID: 'Home'", evaluation)
        self.assertIn("      Network connected: true", evaluation)

        # Roaming between access points of the same network is still being joined to it.
        iwd.SetState("roaming")
        lines = obrinta.read_for(1.6)
        self.assertIn("📶 [WiFiMonitor] CoreWLAN linkDidChange event received", lines)
        self.assertNotIn("📶 [WiFiMonitor] SSID changed", "\n".join(lines))

        iwd.Disconnect()
        lines = obrinta.read_until("📶 [WiFiMonitor] No WiFi network connected")
        self.assertIn("📶 [WiFiMonitor] SSID changed: 'Home' → 'none'", lines)
        self.assertIn("      Network connected: false", wifi_evaluation(obrinta))

    def test_networkmanager_takes_over_from_iwd_and_hands_back(self):
        _, iwd = self.start_iwd(["Home"])
        obrinta = self.start()
        obrinta.read_until(STARTED)
        iwd.Connect("Home")
        obrinta.read_until("📶 [WiFiMonitor] SSID changed: 'none' → 'Home'")

        process, _ = self.start_networkmanager([b"Office"], active=0, interface="wlp3s0")
        obrinta.read_until("📶 [WiFiMonitor] WiFi interface found: wlp3s0")
        obrinta.read_until(lambda l: l.startswith("📶 [WiFiMonitor] SSID changed: ") and l.endswith("→ 'Office'"))
        self.assertIn("   📶 Current SSID: 'Office'", wifi_evaluation(obrinta))

        stop_service(process)
        obrinta.read_until("📶 [WiFiMonitor] WiFi interface found: wlan0")
        obrinta.read_until("📶 [WiFiMonitor] SSID changed: 'Office' → 'Home'")


if __name__ == "__main__":
    unittest.main()
