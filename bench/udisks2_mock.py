"""The least UDisks2 that udiskie needs to sit idle: the ObjectManager with the Manager object."""

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

BUS = "org.freedesktop.UDisks2"
ROOT = "/org/freedesktop/UDisks2"


class Root(dbus.service.Object):
    @dbus.service.method("org.freedesktop.DBus.ObjectManager", out_signature="a{oa{sa{sv}}}")
    def GetManagedObjects(self):
        manager = {"Version": dbus.String("2.9.4"),
                   "SupportedFilesystems": dbus.Array([], signature="s")}
        return {dbus.ObjectPath(ROOT + "/Manager"): {"org.freedesktop.UDisks2.Manager": manager}}


class Manager(dbus.service.Object):
    @dbus.service.method("org.freedesktop.DBus.Properties", in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return dbus.String("2.9.4") if name == "Version" else dbus.Array([], signature="s")

    @dbus.service.method("org.freedesktop.DBus.Properties", in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):
        return {"Version": dbus.String("2.9.4"), "SupportedFilesystems": dbus.Array([], signature="s")}


if __name__ == "__main__":
    DBusGMainLoop(set_as_default=True)
    bus = dbus.SystemBus()
    name = dbus.service.BusName(BUS, bus)
    Root(bus, ROOT)
    Manager(bus, ROOT + "/Manager")
    GLib.MainLoop().run()
