#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QList>
#include <QString>
#include <QUuid>

#include <cmath>
#include <optional>

// A stored rule list is one JSON array, read all or nothing.
namespace RuleJson {

inline QString uuidText(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

template <typename Rule> std::optional<QList<Rule>> decodeList(const QByteArray& bytes)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isArray())
        return std::nullopt;
    QList<Rule> rules;
    const QJsonArray array = document.array();
    rules.reserve(array.size());
    for (const QJsonValue& element : array) {
        if (!element.isObject())
            return std::nullopt;
        auto rule = Rule::fromJson(element.toObject());
        if (!rule)
            return std::nullopt;
        rules.append(std::move(*rule));
    }
    return rules;
}

// Fails only for a time-out that JSON cannot express (infinite or not a number).
template <typename Rule>
std::optional<QByteArray> encodeList(const QList<Rule>& rules, QJsonDocument::JsonFormat format)
{
    QJsonArray array;
    for (const Rule& rule : rules) {
        if (!std::isfinite(rule.forceQuitTimeout))
            return std::nullopt;
        array.append(rule.toJson());
    }
    return QJsonDocument(array).toJson(format);
}

} // namespace RuleJson
