#include "UdevDeviceSource.h"

#include "Log.h"

#include <QFileInfo>
#include <QSocketNotifier>

#include <cerrno>
#include <libudev.h>

namespace {

const char* kSubsystem = "usb";
const char* kDevtype = "usb_device";
constexpr int kMaxTextLength = 256;
// Large enough that a burst of plug events rarely overflows; an overflow still ends in a rescan.
constexpr int kReceiveBufferBytes = 4 * 1024 * 1024;

std::optional<qint64> hexAttribute(udev_device* device, const char* name)
{
    const char* value = udev_device_get_sysattr_value(device, name);
    if (!value)
        return std::nullopt;
    bool ok = false;
    const qint64 number = QByteArray(value).trimmed().toLongLong(&ok, 16);
    return ok ? std::optional<qint64>(number) : std::nullopt;
}

std::optional<QString> textAttribute(udev_device* device, const char* name)
{
    const char* value = udev_device_get_sysattr_value(device, name);
    if (!value)
        return std::nullopt;
    return UdevDeviceSource::deviceText(value);
}

} // namespace

UdevDeviceSource::UdevDeviceSource() : m_udev(udev_new()) {}

UdevDeviceSource::~UdevDeviceSource()
{
    stopWatching();
    if (m_udev)
        udev_unref(m_udev);
}

QString UdevDeviceSource::deviceText(const char* bytes)
{
    QString text = QString::fromUtf8(bytes).trimmed();
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control)
            c = QChar::ReplacementCharacter;
    }
    if (text.size() > kMaxTextLength)
        text = text.left(kMaxTextLength - 1) + QChar(0x2026);
    return text;
}

std::optional<quint32> UdevDeviceSource::locationID(const QString& sysname)
{
    const qsizetype dash = sysname.indexOf(QLatin1Char('-'));
    if (dash <= 0)
        return std::nullopt;
    bool ok = false;
    const uint bus = sysname.left(dash).toUInt(&ok);
    if (!ok)
        return std::nullopt;
    quint32 location = (bus & 0xFF) << 24;
    int shift = 20;
    const QStringList ports = sysname.mid(dash + 1).split(QLatin1Char('.'));
    for (const QString& port : ports) {
        const uint number = port.toUInt(&ok);
        if (!ok)
            return std::nullopt;
        if (shift >= 0)
            location |= (number & 0xF) << shift;
        shift -= 4;
    }
    return location;
}

USBDeviceSource::Properties UdevDeviceSource::readProperties(udev_device* device)
{
    Properties properties;
    properties.idVendor = hexAttribute(device, "idVendor");
    properties.idProduct = hexAttribute(device, "idProduct");
    properties.vendorString = textAttribute(device, "manufacturer");
    properties.productString = textAttribute(device, "product");
    properties.serialNumberString = textAttribute(device, "serial");
    if (const char* sysname = udev_device_get_sysname(device))
        properties.locationID = locationID(QString::fromUtf8(sysname));
    return properties;
}

int UdevDeviceSource::enumerate(QList<Properties>& devices)
{
    if (!m_udev)
        return -ENOSYS;
    udev_enumerate* enumeration = udev_enumerate_new(m_udev);
    if (!enumeration)
        return -ENOMEM;
    int result = udev_enumerate_add_match_subsystem(enumeration, kSubsystem);
    if (result >= 0)
        result = udev_enumerate_scan_devices(enumeration);
    if (result < 0) {
        udev_enumerate_unref(enumeration);
        return result;
    }
    udev_list_entry* entry = nullptr;
    udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(enumeration))
    {
        udev_device* device = udev_device_new_from_syspath(m_udev, udev_list_entry_get_name(entry));
        if (!device)
            continue; // Gone between listing and reading.
        const char* devtype = udev_device_get_devtype(device);
        if (devtype && qstrcmp(devtype, kDevtype) == 0)
            devices.append(readProperties(device));
        udev_device_unref(device);
    }
    udev_enumerate_unref(enumeration);
    return 0;
}

bool UdevDeviceSource::startWatching(std::function<void(Event)> handler)
{
    stopWatching();
    // Without a udev daemon nothing is sent on the "udev" group; the kernel's own group still is.
    const char* group = QFileInfo::exists(QStringLiteral("/run/udev/control")) ? "udev" : "kernel";
    if (m_udev)
        m_monitor = udev_monitor_new_from_netlink(m_udev, group);
    if (!m_monitor) {
        Log::info(QStringLiteral("Failed to create notification port"));
        return false;
    }
    int result = udev_monitor_filter_add_match_subsystem_devtype(m_monitor, kSubsystem, kDevtype);
    if (result < 0)
        Log::info(QStringLiteral("Failed to add matching notification: %1").arg(result));
    udev_monitor_set_receive_buffer_size(m_monitor, kReceiveBufferBytes);
    result = udev_monitor_enable_receiving(m_monitor);
    if (result < 0) {
        Log::info(QStringLiteral("Failed to add termination notification: %1").arg(result));
        udev_monitor_unref(m_monitor);
        m_monitor = nullptr;
        return false;
    }
    m_handler = std::move(handler);
    m_notifier =
        std::make_unique<QSocketNotifier>(udev_monitor_get_fd(m_monitor), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &UdevDeviceSource::receive);
    return true;
}

void UdevDeviceSource::stopWatching()
{
    m_notifier.reset();
    if (m_monitor) {
        udev_monitor_unref(m_monitor);
        m_monitor = nullptr;
    }
    m_handler = nullptr;
}

void UdevDeviceSource::receive()
{
    // Drain what is queued; a wake-up whose message the filter dropped yields no device.
    while (m_monitor) {
        errno = 0;
        udev_device* device = udev_monitor_receive_device(m_monitor);
        if (!device) {
            if (errno == ENOBUFS && m_handler)
                m_handler(Event::Overflow);
            return;
        }
        const QByteArray action = udev_device_get_action(device);
        udev_device_unref(device);
        if (!m_handler)
            continue;
        if (action == "add")
            m_handler(Event::Added);
        else if (action == "remove")
            m_handler(Event::Removed);
    }
}
