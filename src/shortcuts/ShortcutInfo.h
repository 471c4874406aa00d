#pragma once

#include <QJsonObject>
#include <QList>
#include <QMetaType>
#include <QString>

#include <optional>

// One shortcut that the shortcuts tool knows; its name is its identity.
struct ShortcutInfo
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)

public:
    QString id;
    QString name;

    bool operator==(const ShortcutInfo&) const = default;

    QJsonObject toJson() const
    {
        return {{QStringLiteral("id"), id}, {QStringLiteral("name"), name}};
    }

    static std::optional<ShortcutInfo> fromJson(const QJsonObject& object)
    {
        const QJsonValue id = object.value(QStringLiteral("id"));
        const QJsonValue name = object.value(QStringLiteral("name"));
        if (!id.isString() || !name.isString())
            return std::nullopt;
        return ShortcutInfo{id.toString(), name.toString()};
    }
};

Q_DECLARE_METATYPE(ShortcutInfo)
Q_DECLARE_METATYPE(QList<ShortcutInfo>)
