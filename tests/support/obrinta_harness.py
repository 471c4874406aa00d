"""Starts build/obrinta the way a user would, in throw-away HOME and XDG folders, and reads its
standard output line by line. Every wait is bounded."""

import json
import os
import queue
import shutil
import signal
import subprocess
import tempfile
import threading
import time

BIN_DIR = os.environ.get("OBRINTA_BIN_DIR", os.path.join(os.path.dirname(__file__), "..", "..", "build"))
PRELOAD = "libumockdev-preload.so.0"


class Home:
    """A temporary HOME with XDG folders and the places Obrinta reads and writes."""

    def __init__(self):
        self.root = tempfile.mkdtemp(prefix="obrinta-test-")
        self.data = os.path.join(self.root, "data")
        self.config = os.path.join(self.root, "config")
        self.runtime = os.path.join(self.root, "runtime")
        for folder in (self.data, self.config, self.runtime):
            os.makedirs(folder, mode=0o700)
        self.storage = os.path.join(self.data, "Obrinta")

    def env(self):
        env = dict(os.environ)
        for key in ("DISPLAY", "WAYLAND_DISPLAY", "XCTestConfigurationFilePath", "OBRINTA_DEBUG"):
            env.pop(key, None)
        env.update(HOME=self.root, XDG_DATA_HOME=self.data, XDG_CONFIG_HOME=self.config,
                   XDG_RUNTIME_DIR=self.runtime, XDG_DATA_DIRS=os.path.join(self.root, "system-data"))
        return env

    def write_rules(self, rules, name="bindings.json"):
        os.makedirs(self.storage, exist_ok=True)
        with open(os.path.join(self.storage, name), "w") as f:
            json.dump(rules, f)

    def read_rules(self, name="bindings.json"):
        with open(os.path.join(self.storage, name)) as f:
            return json.load(f)

    def write_settings(self, settings):
        folder = os.path.join(self.config, "Obrinta")
        os.makedirs(folder, exist_ok=True)
        with open(os.path.join(folder, "settings.json"), "w") as f:
            json.dump(settings, f)

    def add_desktop_entry(self, desktop_id, name, exec_line, extra=""):
        folder = os.path.join(self.data, "applications")
        os.makedirs(folder, exist_ok=True)
        path = os.path.join(folder, desktop_id + ".desktop")
        with open(path, "w") as f:
            f.write("[Desktop Entry]\nType=Application\nName=%s\nExec=%s\n%s" % (name, exec_line, extra))
        return path

    def add_app(self, desktop_id, script):
        """A shell script in the home and a desktop entry that runs it; returns the script's path."""
        path = os.path.join(self.root, desktop_id + ".sh")
        with open(path, "w") as f:
            f.write(script)
        os.chmod(path, 0o755)
        self.add_desktop_entry(desktop_id, desktop_id, path)
        return path

    def running(self):
        """The PIDs of the home's shell scripts that run."""
        out = subprocess.run(["pgrep", "-f", "^/bin/sh " + self.root], capture_output=True, text=True)
        return [int(p) for p in out.stdout.split()]

    def cleanup(self):
        shutil.rmtree(self.root, ignore_errors=True)


class Scenario:
    """Mixin for test cases: a throw-away home and a umockdev testbed per test, and at most one
    Obrinta, which has to end with status 0; the home's scripts are killed afterwards."""

    def setUp(self):
        super().setUp()
        self.home = Home()
        self.testbed = new_testbed()
        self.obrinta = None

    def tearDown(self):
        if self.obrinta:
            self.assertEqual(self.obrinta.stop(), 0)
        subprocess.run(["pkill", "-KILL", "-f", "^/bin/sh " + self.home.root], check=False)
        super().tearDown()
        self.home.cleanup()

    def start(self, **kwargs):
        kwargs.setdefault("testbed", self.testbed)
        self.obrinta = Obrinta(self.home, **kwargs)
        return self.obrinta


def wait_for(predicate, timeout=5.0):
    """Polls `predicate` until it holds or `timeout` seconds have passed; returns its last value."""
    deadline = time.monotonic() + timeout
    while not (value := predicate()) and time.monotonic() < deadline:
        time.sleep(0.05)
    return value


class Obrinta:
    """One running build/obrinta with its standard output in a queue of lines."""

    def __init__(self, home, args=(), env=None, testbed=None, debug=True, program="obrinta"):
        full_env = home.env()
        if debug:
            full_env["OBRINTA_DEBUG"] = "1"
        if testbed is not None:
            full_env["UMOCKDEV_DIR"] = testbed.get_root_dir()
            full_env["LD_PRELOAD"] = PRELOAD + ((" " + full_env["LD_PRELOAD"]) if full_env.get("LD_PRELOAD") else "")
        if env:
            full_env.update(env)
        self.lines = []
        self._queue = queue.Queue()
        self.process = subprocess.Popen([os.path.join(BIN_DIR, program), *args], env=full_env,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                        start_new_session=True)
        threading.Thread(target=self._pump, daemon=True).start()
        self.stderr_lines = []
        threading.Thread(target=self._pump_stderr, daemon=True).start()

    def _pump(self):
        for raw in self.process.stdout:
            self._queue.put(raw.decode("utf-8", "replace").rstrip("\n"))
        self._queue.put(None)

    def _pump_stderr(self):
        for raw in self.process.stderr:
            self.stderr_lines.append(raw.decode("utf-8", "replace").rstrip("\n"))

    def _arriving(self, seconds):
        """The lines as they arrive within `seconds`; None when the output has ended."""
        deadline = time.monotonic() + seconds
        while (remaining := deadline - time.monotonic()) > 0:
            try:
                line = self._queue.get(timeout=remaining)
            except queue.Empty:
                return
            if line is not None:
                self.lines.append(line)
            yield line
            if line is None:
                return

    def read_until(self, predicate, timeout=10.0):
        """Collects lines until one satisfies `predicate` (a string means equality); returns the
        lines read in this call, the matching one last. Raises on time-out or end of output."""
        if isinstance(predicate, str):
            predicate = predicate.__eq__
        collected = []
        for line in self._arriving(timeout):
            if line is None:
                raise AssertionError("output ended; got:\n" + "\n".join(collected) +
                                     "\nstderr:\n" + "\n".join(self.stderr_lines[-20:]))
            collected.append(line)
            if predicate(line):
                return collected
        raise AssertionError("timed out waiting; got:\n" + "\n".join(collected))

    def read_for(self, seconds):
        """All lines that arrive within `seconds`."""
        return [line for line in self._arriving(seconds) if line is not None]

    def evaluation(self, timeout=10.0):
        """The lines of the next USB evaluation, from its first line to its last."""
        self.read_until("🔍 [AppController] Evaluating all bindings...", timeout)
        body = self.read_until(lambda l: l in ("✅ [AppController] Evaluation complete",
                                                "   ⏸️ Monitoring disabled, skipping evaluation"), timeout)
        return ["🔍 [AppController] Evaluating all bindings..."] + body

    def stop(self, timeout=10.0):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
            try:
                self.process.wait(timeout=timeout)
            except subprocess.TimeoutExpired:
                os.killpg(self.process.pid, signal.SIGKILL)
                self.process.wait()
        for stream in (self.process.stdout, self.process.stderr):
            try:
                stream.close()
            except (OSError, ValueError):
                pass
        return self.process.returncode


def usb_rule(rule_id, vendor, product, name, app_id="", app_name="", app_path="", **extra):
    rule = {"id": rule_id, "deviceVendorID": vendor, "deviceProductID": product, "deviceName": name,
            "appBundleIdentifier": app_id, "appName": app_name, "appPath": app_path,
            "isEnabled": True, "killOnDisconnect": True, "launchOnConnect": True}
    rule.update(extra)
    return rule


def new_testbed():
    """A umockdev testbed; the calling process must run under umockdev-wrapper for uevents."""
    import gi
    gi.require_version("UMockdev", "1.0")
    from gi.repository import UMockdev
    return UMockdev.Testbed.new()


def add_usb_device(testbed, port, vendor, product, manufacturer=None, product_name=None, serial=None, bus=1):
    """Adds a usb_device at `bus`-`port` (e.g. "1.4") and returns its sysfs path; umockdev sends
    the "add" uevent itself."""
    attributes = ["idVendor", "%04x" % vendor, "idProduct", "%04x" % product,
                  "busnum", str(bus), "devpath", port]
    if manufacturer is not None:
        attributes += ["manufacturer", manufacturer]
    if product_name is not None:
        attributes += ["product", product_name]
    if serial is not None:
        attributes += ["serial", serial]
    name = "%d-%s" % (bus, port)
    return testbed.add_device("usb", "usb%d/%s" % (bus, name), None, attributes,
                               ["DEVTYPE", "usb_device", "PRODUCT", "%x/%x/0" % (vendor, product)])


def remove_usb_device(testbed, syspath):
    """Sends the "remove" uevent, then takes the device out of the mocked sysfs."""
    testbed.uevent(syspath, "remove")
    testbed.remove_device(syspath)
