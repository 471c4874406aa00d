"""Soak: thousands of USB arrivals and removals in bursts and WiFi changes through a
NetworkManager mock, with 200 rules, while build/obrinta runs under umockdev. Afterwards: no crash, every burst followed by its rescan and evaluation, open
file descriptors and RSS back within 5 % of where they started, no child process left behind.

    umockdev-wrapper /usr/bin/python3 tests/integration/soak.py [seconds]    (default 60)
"""

import os
import random
import subprocess
import sys
import threading
import time

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "support"))
from obrinta_harness import Home, PRELOAD, BIN_DIR, add_usb_device, new_testbed, remove_usb_device, usb_rule  # noqa: E402
from wifi_mocks import NM_TEMPLATE, wifi_rule  # noqa: E402

import dbus  # noqa: E402
import dbusmock  # noqa: E402

BURST = 20
PACE = 0.01
EVALUATION = "🔍 [AppController] Evaluating all bindings..."
WIFI_EVALUATION = "📶 [AppController] Evaluating all WiFi bindings..."
NETWORKS = [b"Home", b"Office", None]


def rules():
    result = []
    for i in range(200):
        rule = usb_rule("C0000000-0000-4000-8000-%012d" % i, 0x2000 + i % 50, i % 50, "Soak %d" % i,
                        "", "")
        rule["isEnabled"] = i % 4 != 3
        result.append(rule)
    return result


def wifi_rules():
    return [wifi_rule("E0000000-0000-4000-8000-%012d" % i, ["Home", "Office", "Cafe"][i % 3])
            for i in range(20)]


class Counter:
    """Counts evaluations and remembers what the last ones saw, without keeping the log."""

    def __init__(self, stream):
        self.evaluations = self.wifi_evaluations = 0
        self.last_devices = self.last_ssid = None
        self.lock = threading.Lock()
        threading.Thread(target=self._read, args=(stream,), daemon=True).start()

    def _read(self, stream):
        for raw in stream:
            line = raw.decode("utf-8", "replace").rstrip("\n")
            with self.lock:
                if line.startswith(EVALUATION):
                    self.evaluations += 1
                elif line.startswith("   📱 Connected devices: "):
                    self.last_devices = int(line.split(": ")[1])
                elif line.startswith(WIFI_EVALUATION):
                    self.wifi_evaluations += 1
                elif line.startswith("   📶 Current SSID: '"):
                    self.last_ssid = line[len("   📶 Current SSID: '"):-1]

    def wait(self, condition, timeout):
        """Whether `condition(self)` holds within `timeout` seconds."""
        deadline = time.monotonic() + timeout
        while time.monotonic() < deadline:
            with self.lock:
                if condition(self):
                    return True
            time.sleep(0.02)
        return False


def proc_figures(pid):
    fds = len(os.listdir("/proc/%d/fd" % pid))
    with open("/proc/%d/status" % pid) as f:
        rss = next(int(l.split()[1]) for l in f if l.startswith("VmRSS:"))
    children = subprocess.run(["pgrep", "-P", str(pid)], capture_output=True, text=True).stdout.split()
    return fds, rss, children


def main():
    seconds = float(sys.argv[1]) if len(sys.argv) > 1 else 60.0
    home = Home()
    home.write_rules(rules())
    home.write_rules(wifi_rules(), "wifi-bindings.json")
    testbed = new_testbed()
    dbusmock.DBusTestCase.start_system_bus()
    nm_process, nm_object = dbusmock.DBusTestCase.spawn_server_template(
        NM_TEMPLATE, {"Interface": "wlan0", "AccessPoints": dbus.Array([b"Home", b"Office"], signature="ay"),
                      "Active": dbus.Int32(-1)}, stdout=subprocess.DEVNULL)
    nm = dbus.Interface(nm_object, dbusmock.MOCK_IFACE)
    env = home.env()
    env.update(UMOCKDEV_DIR=testbed.get_root_dir(), LD_PRELOAD=PRELOAD)
    process = subprocess.Popen([os.path.join(BIN_DIR, "obrinta")], env=env, stdout=subprocess.PIPE,
                               stderr=subprocess.DEVNULL)
    counter = Counter(process.stdout)
    assert counter.wait(lambda c: c.evaluations >= 1 and c.last_devices == 0, 15), "no first evaluation"
    time.sleep(1)
    start = proc_figures(process.pid)

    rng = random.Random(7)
    events = 0
    wifi_changes = 0
    network = None
    bursts = 0
    deadline = time.monotonic() + seconds
    port = 0
    while time.monotonic() < deadline:
        expected = counter.evaluations
        paths = []
        for _ in range(BURST):
            port = port % 200 + 1
            i = rng.randrange(50)
            paths.append(add_usb_device(testbed, "%d" % port, 0x2000 + i, i, "Soak", "Device %d" % i,
                                        bus=1 + port // 100))
            # umockdev's uevent socket queues only a few datagrams: pace the burst a little.
            time.sleep(PACE)
        for path in paths:
            remove_usb_device(testbed, path)
            time.sleep(PACE)
        events += 2 * BURST
        bursts += 1
        if process.poll() is not None:
            raise SystemExit("obrinta ended during burst %d with status %s" % (bursts, process.returncode))
        # Every event has its rescan and evaluation; the last one sees no device at all.
        if not counter.wait(lambda c: c.evaluations >= expected + 2 * BURST and c.last_devices == 0, 30):
            raise SystemExit("burst %d: %d evaluations, last saw %s devices" %
                             (bursts, counter.evaluations - expected, counter.last_devices))

        # About four network changes per burst: 1,000 in ten minutes.
        for _ in range(4):
            network = rng.choice([n for n in NETWORKS if n != network])
            expected_wifi = counter.wifi_evaluations + (2 if network else 1)
            if network:
                nm.Join(dbus.ByteArray(network), True)
            else:
                nm.Leave(True)
            wifi_changes += 1
            ssid = network.decode() if network else "none"
            if not counter.wait(lambda c: c.wifi_evaluations >= expected_wifi and c.last_ssid == ssid, 15):
                raise SystemExit("WiFi change %d to %s: last evaluation saw %s" %
                                 (wifi_changes, ssid, counter.last_ssid))

    time.sleep(2)
    end = proc_figures(process.pid)
    process.terminate()
    status = process.wait(timeout=15)
    nm_process.terminate()
    nm_process.wait(timeout=10)
    dbusmock.DBusTestCase.stop_dbus(dbusmock.DBusTestCase.system_bus_pid)
    home.cleanup()

    print("RESULT soak_usb_events %d events -" % events)
    print("RESULT soak_bursts %d bursts -" % bursts)
    print("RESULT soak_wifi_changes %d changes -" % wifi_changes)
    print("RESULT soak_fds_start_end %d/%d fds within5%%" % (start[0], end[0]))
    print("RESULT soak_rss_start_end_kb %d/%d kB within5%%" % (start[1], end[1]))
    failures = []
    if status != 0:
        failures.append("exit status %d" % status)
    if end[0] > start[0] * 1.05:
        failures.append("file descriptors grew from %d to %d" % (start[0], end[0]))
    # The sanitizers' quarantine holds freed memory on purpose; there leaks fail the exit status.
    if end[1] > start[1] * 1.05 and not os.environ.get("OBRINTA_SOAK_SANITIZED"):
        failures.append("RSS grew from %d kB to %d kB" % (start[1], end[1]))
    if end[2]:
        failures.append("child processes left: %s" % end[2])
    if failures:
        raise SystemExit("; ".join(failures))
    print("soak passed: %d USB events in %d bursts, %d WiFi changes" % (events, bursts, wifi_changes))


if __name__ == "__main__":
    main()
