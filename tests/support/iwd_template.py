"""A small iwd: one station "wlan0" at /net/connman/iwd/0/4 and one Network object per name in the
parameter "Networks" (as). Mock methods Connect(name), SetState(state) and Disconnect() change
the station's State and ConnectedNetwork and emit PropertiesChanged as iwd does."""

import dbus

import dbusmock
from dbusmock import MOCK_IFACE

BUS_NAME = 'net.connman.iwd'
MAIN_OBJ = '/'
SYSTEM_BUS = True
IS_OBJECT_MANAGER = True

STATION = '/net/connman/iwd/0/4'
STATION_IFACE = 'net.connman.iwd.Station'
NETWORK_IFACE = 'net.connman.iwd.Network'
PROPERTIES_IFACE = 'org.freedesktop.DBus.Properties'


def _network_path(name):
    return STATION + '/' + name.encode().hex() + '_psk'


def load(mock, parameters):
    mock.AddObject(STATION, 'net.connman.iwd.Device', {
        'Name': dbus.String(parameters.get('Interface', 'wlan0')),
        'Address': dbus.String('02:00:00:00:00:01'),
        'Powered': dbus.Boolean(True),
        'Mode': dbus.String('station'),
    }, [])
    dbusmock.get_object(STATION).AddProperties(STATION_IFACE, {
        'State': dbus.String('disconnected'),
        'Scanning': dbus.Boolean(False),
    })
    mock.object_manager_emit_added(STATION)
    for name in parameters.get('Networks', []):
        path = _network_path(str(name))
        mock.AddObject(path, NETWORK_IFACE, {
            'Name': dbus.String(name),
            'Connected': dbus.Boolean(False),
            'Device': dbus.ObjectPath(STATION),
            'Type': dbus.String('psk'),
        }, [])
        mock.object_manager_emit_added(path)


def _station_changed(changed, invalidated=()):
    station = dbusmock.get_object(STATION)
    station.props[STATION_IFACE].update(changed)
    for name in invalidated:
        station.props[STATION_IFACE].pop(name, None)
    station.EmitSignal(PROPERTIES_IFACE, 'PropertiesChanged', 'sa{sv}as',
                       [STATION_IFACE, dbus.Dictionary(changed, signature='sv'),
                        dbus.Array(invalidated, signature='s')])


@dbus.service.method(MOCK_IFACE, in_signature='s', out_signature='')
def Connect(_self, name):
    _station_changed({'State': dbus.String('connected'),
                      'ConnectedNetwork': dbus.ObjectPath(_network_path(name))})


@dbus.service.method(MOCK_IFACE, in_signature='s', out_signature='')
def SetState(_self, state):
    _station_changed({'State': dbus.String(state)})


@dbus.service.method(MOCK_IFACE, in_signature='', out_signature='')
def Disconnect(_self):
    _station_changed({'State': dbus.String('disconnected')}, ['ConnectedNetwork'])
