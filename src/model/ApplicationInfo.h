#pragma once

#include <QHashFunctions>
#include <QString>

// One installed application as the rule editors offer it.
struct ApplicationInfo
{
    // The desktop-file id without ".desktop", or the absolute path of a hand-picked executable.
    QString id;
    QString name;
    // The .desktop file, or the executable.
    QString path;
    // The entry's Icon: an icon-theme name or an absolute file path; empty when it has none.
    QString icon;

    bool operator==(const ApplicationInfo&) const = default;

    // The editors' filter: everything for an empty text, else containment in the name, then in
    // the id, ignoring case.
    bool matchesSearch(const QString& text) const
    {
        return text.isEmpty() || name.contains(text, Qt::CaseInsensitive) ||
               id.contains(text, Qt::CaseInsensitive);
    }
};

inline size_t qHash(const ApplicationInfo& info, size_t seed = 0)
{
    return qHashMulti(seed, info.id, info.name, info.path, !info.icon.isEmpty(), info.icon);
}
