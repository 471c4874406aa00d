"""NetworkManager with one WiFi device whose ActiveAccessPoint is properly typed.

Loads python-dbusmock's networkmanager template, then adds the device "wlan0" (DeviceType 2),
one access point per SSID given in the parameter "AccessPoints" (raw bytes, `aay`) and the
mock methods Join and Leave, which set ActiveAccessPoint as an object path.

Parameters: "Interface" (s, default "wlan0"), "AccessPoints" (aay), "Active" (i, index of the
access point joined at start, -1 for none).
"""

import dbus

import dbusmock
from dbusmock import MOCK_IFACE
from dbusmock.templates.networkmanager import *  # noqa: F401,F403 (its mock methods too)
from dbusmock.templates import networkmanager as stock

DEVICE = '/org/freedesktop/NetworkManager/Devices/wlan0'
AP_PREFIX = '/org/freedesktop/NetworkManager/AccessPoint/'


def _raw(ssid):
    return bytes(int(b) for b in ssid)


def _add_access_point(mock, ssid):
    device = dbusmock.get_object(DEVICE)
    index = len(device.access_points)
    path = AP_PREFIX + str(index)
    mock.AddObject(path, stock.ACCESS_POINT_IFACE, {
        'Ssid': dbus.ByteArray(ssid),
        'HwAddress': dbus.String('00:11:22:33:44:%02X' % index),
        'Flags': dbus.UInt32(0),
        'WpaFlags': dbus.UInt32(0),
        'RsnFlags': dbus.UInt32(0),
        'Frequency': dbus.UInt32(2412),
        'MaxBitrate': dbus.UInt32(54000),
        'Mode': dbus.UInt32(2),
        'Strength': dbus.Byte(80),
        'LastSeen': dbus.Int32(1),
    }, [])
    device.access_points.append(path)
    device.Set(stock.WIRELESS_DEVICE_IFACE, 'AccessPoints',
               dbus.Array([dbus.ObjectPath(p) for p in device.access_points], signature='o'))
    return path


def _access_point_for(mock, ssid):
    device = dbusmock.get_object(DEVICE)
    for path in device.access_points:
        if bytes(dbusmock.get_object(path).Get(stock.ACCESS_POINT_IFACE, 'Ssid')) == ssid:
            return path
    return _add_access_point(mock, ssid)


def _set_active(mock, path, announce):
    device = dbusmock.get_object(DEVICE)
    value = dbus.ObjectPath(path)
    old_state = device.Get(stock.DEVICE_IFACE, 'State')
    new_state = dbus.UInt32(stock.DeviceState.ACTIVATED if path != '/' else stock.DeviceState.DISCONNECTED)
    if not announce:
        device.props[stock.WIRELESS_DEVICE_IFACE]['ActiveAccessPoint'] = value
        device.props[stock.DEVICE_IFACE]['State'] = new_state
        return
    # Set emits org.freedesktop.DBus.Properties.PropertiesChanged, as NetworkManager does.
    device.Set(stock.WIRELESS_DEVICE_IFACE, 'ActiveAccessPoint', value)
    device.Set(stock.DEVICE_IFACE, 'State', new_state)
    device.EmitSignal(stock.DEVICE_IFACE, 'StateChanged', 'uuu', [new_state, old_state, dbus.UInt32(0)])


def load(mock, parameters):
    stock.load(mock, parameters)
    stock.AddWiFiDevice(mock, 'wlan0', str(parameters.get('Interface', 'wlan0')),
                        stock.DeviceState.DISCONNECTED)
    dbusmock.get_object(DEVICE).AddProperties(stock.WIRELESS_DEVICE_IFACE, {
        'ActiveAccessPoint': dbus.ObjectPath('/')})
    paths = [_add_access_point(mock, _raw(ssid)) for ssid in parameters.get('AccessPoints', [])]
    active = int(parameters.get('Active', -1))
    if active >= 0:
        _set_active(mock, paths[active], announce=False)


@dbus.service.method(MOCK_IFACE, in_signature='ayb', out_signature='s')
def Join(self, ssid, announce):
    '''Joins the access point with this SSID (made if missing); with announce, emits
    PropertiesChanged of ActiveAccessPoint and the device's StateChanged.'''
    path = _access_point_for(self, _raw(ssid))
    _set_active(self, path, bool(announce))
    return path


@dbus.service.method(MOCK_IFACE, in_signature='b', out_signature='')
def Leave(self, announce):
    '''Leaves the network: ActiveAccessPoint becomes "/".'''
    _set_active(self, '/', bool(announce))
