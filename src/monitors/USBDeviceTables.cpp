#include "USBDeviceTables.h"

namespace USBDeviceTables {

QString vendorProductKey(qint64 vendorID, qint64 productID)
{
    return QStringLiteral("%1:%2")
        .arg(QString::number(vendorID, 16), 4, QLatin1Char('0'))
        .arg(QString::number(productID, 16), 4, QLatin1Char('0'));
}

const QHash<qint64, QString>& knownVendorNames()
{
    static const QHash<qint64, QString> names{
        {0x0FD9, QStringLiteral("Elgato")},
        {0x046D, QStringLiteral("Logitech")},
        {0x1050, QStringLiteral("Yubico")},
        {0x05AC, QStringLiteral("Apple")},
        {0x8087, QStringLiteral("Intel")},
        {0x2109, QStringLiteral("VIA Labs")},
        {0x1A40, QStringLiteral("Terminus Technology")},
        {0x0B05, QStringLiteral("ASUS")},
        {0x1532, QStringLiteral("Razer")},
        {0x054C, QStringLiteral("Sony")},
        {0x045E, QStringLiteral("Microsoft")},
        {0x2516, QStringLiteral("Cooler Master")},
        {0x320F, QStringLiteral("Valve (Steam Deck)")},
        {0x28DE, QStringLiteral("Valve")},
    };
    return names;
}

const QHash<QString, QString>& knownProductNames()
{
    static const QHash<QString, QString> names{
        {QStringLiteral("0fd9:0060"), QStringLiteral("Stream Deck")},
        {QStringLiteral("0fd9:0063"), QStringLiteral("Stream Deck Mini")},
        {QStringLiteral("0fd9:006c"), QStringLiteral("Stream Deck XL")},
        {QStringLiteral("0fd9:006d"), QStringLiteral("Stream Deck MK.2")},
        {QStringLiteral("0fd9:0080"), QStringLiteral("Stream Deck +")},
        {QStringLiteral("0fd9:0084"), QStringLiteral("Stream Deck Pedal")},
        {QStringLiteral("0fd9:008f"), QStringLiteral("Stream Deck Neo")},
        {QStringLiteral("0fd9:009a"), QStringLiteral("Stream Deck Mini V2")},
        {QStringLiteral("046d:c52b"), QStringLiteral("Unifying Receiver")},
        {QStringLiteral("046d:0ab5"), QStringLiteral("G Pro Headset")},
        {QStringLiteral("1050:0407"), QStringLiteral("YubiKey")},
    };
    return names;
}

const QSet<qint64>& excludedVendorIDs()
{
    static const QSet<qint64> ids{0x8087, 0x1D6B};
    return ids;
}

const QSet<QString>& excludedHubIDs()
{
    static const QSet<QString> keys{QStringLiteral("2109:0817"), QStringLiteral("2109:2817"),
                                    QStringLiteral("05e3:0610")};
    return keys;
}

} // namespace USBDeviceTables
