"""Runs under xvfb-run and dbus-run-session (see idle.sh): starts a tray host, a private system
bus with a UDisks2 mock, then Obrinta, udiskie and a bare Qt tray program, and samples them over
the same minute."""

import json
import os
import subprocess
import sys
import tempfile
import time

BUILD = sys.argv[1] if len(sys.argv) > 1 else "build"
SECONDS = float(os.environ.get("IDLE_SECONDS", "60"))
HZ = os.sysconf("SC_CLK_TCK")


def threads_of(pid):
    return os.listdir("/proc/%d/task" % pid)


def sample(pid):
    """RSS in kB, CPU seconds, and context switches summed over all threads."""
    with open("/proc/%d/status" % pid) as f:
        rss = next(int(l.split()[1]) for l in f if l.startswith("VmRSS:"))
    with open("/proc/%d/stat" % pid) as f:
        fields = f.read().rsplit(")", 1)[1].split()
    cpu = (int(fields[11]) + int(fields[12])) / HZ
    switches = 0
    main_switches = 0
    for tid in threads_of(pid):
        try:
            with open("/proc/%d/task/%s/status" % (pid, tid)) as f:
                for line in f:
                    if line.startswith(("voluntary_ctxt_switches", "nonvoluntary_ctxt_switches")):
                        switches += int(line.split()[1])
                        if tid == str(pid):
                            main_switches += int(line.split()[1])
        except FileNotFoundError:
            pass
    return rss, cpu, switches, main_switches


def result(name, value, unit, target="-"):
    print("RESULT %s %s %s %s" % (name, value, unit, target), file=sys.stderr, flush=True)


def main():
    home = tempfile.mkdtemp(prefix="obrinta-idle-")
    env = dict(os.environ, HOME=home, XDG_DATA_HOME=home + "/data", XDG_CONFIG_HOME=home + "/config",
               XDG_CACHE_HOME=home + "/cache")
    os.makedirs(home + "/data/Obrinta")
    rules = [{"id": "D0000000-0000-4000-8000-%012d" % i, "deviceVendorID": 0x3000 + i,
              "deviceProductID": i, "deviceName": "Idle %d" % i, "appBundleIdentifier": "org.idle.App%d" % i,
              "appName": "App %d" % i, "appPath": "", "isEnabled": True, "killOnDisconnect": True,
              "launchOnConnect": True} for i in range(50)]
    with open(home + "/data/Obrinta/bindings.json", "w") as f:
        json.dump(rules, f)

    started = []
    tray = subprocess.Popen(["trayer", "--edge", "top", "--align", "right", "--widthtype", "request"],
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    started.append(tray)
    system_bus = subprocess.Popen(["dbus-daemon", "--session", "--print-address", "--nofork"],
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    started.append(system_bus)
    env["DBUS_SYSTEM_BUS_ADDRESS"] = system_bus.stdout.readline().decode().strip()
    started.append(subprocess.Popen(["/usr/bin/python3", "bench/udisks2_mock.py"], env=env))
    time.sleep(1.5)

    obrinta = subprocess.Popen([os.path.join(BUILD, "obrinta")], env=env,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    udiskie = subprocess.Popen(["udiskie", "--tray", "--no-notify", "--no-automount"], env=env,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    reference = subprocess.Popen([os.path.join(BUILD, "idle_reference_tray")], env=env,
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    started += [obrinta, udiskie, reference]
    try:
        time.sleep(8)
        for p, name in ((obrinta, "obrinta"), (udiskie, "udiskie")):
            if p.poll() is not None:
                raise SystemExit("%s ended early with status %s" % (name, p.returncode))
        before = {p.pid: sample(p.pid) for p in (obrinta, udiskie)}
        time.sleep(SECONDS)
        after = {p.pid: sample(p.pid) for p in (obrinta, udiskie)}
        result("idle_reference_qt_tray_rss", sample(reference.pid)[0], "kB")

        figures = {}
        for p, name in ((obrinta, "obrinta"), (udiskie, "udiskie")):
            b, a = before[p.pid], after[p.pid]
            # Threads that ended between the samples take their switches with them: never below 0.
            figures[name] = (a[0], a[1] - b[1], max(0, a[2] - b[2]) / SECONDS, max(0, a[3] - b[3]) / SECONDS)
            result("idle_%s_rss" % name, a[0], "kB")
            result("idle_%s_cpu_per_minute" % name, "%.3f" % ((a[1] - b[1]) * 60 / SECONDS), "s")
            result("idle_%s_wakeups_all_threads" % name, "%.2f" % figures[name][2], "per_s")
            result("idle_%s_wakeups_main_thread" % name, "%.2f" % figures[name][3], "per_s",
                   "<=0.2" if name == "obrinta" else "-")
        # A tray-only Obrinta has not loaded its windows module, so no QML or Qt Quick library.
        with open("/proc/%d/maps" % obrinta.pid) as f:
            quick = {l.split()[-1] for l in f if "libQt6Q" in l or "obrinta-windows" in l}
        result("idle_obrinta_quick_libraries_mapped", len(quick), "files", "=0")
        result("idle_rss_ratio_obrinta_to_udiskie", "%.2f" % (figures["obrinta"][0] / figures["udiskie"][0]),
               "x", "<=0.67")
        result("idle_rss_ratio_reference_qt_tray_to_udiskie",
               "%.2f" % (sample(reference.pid)[0] / figures["udiskie"][0]), "x")

        # The settings window opened and closed again: its QML engine is released with it.
        opener = subprocess.run([os.path.join(BUILD, "obrinta")], env=env, timeout=20,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        time.sleep(3)
        opened = sample(obrinta.pid)[0]
        subprocess.run(["xdotool", "search", "--sync", "--name", "^Settings$", "key", "--clearmodifiers",
                        "ctrl+w"], env=env, timeout=10, check=False,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        # Windows are released 5 s after the last one hides: sample well after that.
        time.sleep(8)
        closed = sample(obrinta.pid)[0]
        result("idle_obrinta_rss_settings_open", opened, "kB")
        result("idle_obrinta_rss_after_settings_closed_delta", closed - figures["obrinta"][0], "kB",
               "<=10240")
        if opener.returncode != 0:
            result("second_start_exit_status", opener.returncode, "status", "=0")
    finally:
        for p in reversed(started):
            p.terminate()
        for p in started:
            try:
                p.wait(timeout=10)
            except subprocess.TimeoutExpired:
                p.kill()


if __name__ == "__main__":
    main()
