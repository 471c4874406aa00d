#include "RecordListModel.h"

namespace {

const QString keyName = QStringLiteral("key");

QStringList keysOf(const QList<QVariantMap>& rows)
{
    QStringList keys;
    keys.reserve(rows.size());
    for (const QVariantMap& row : rows)
        keys.append(row.value(keyName).toString());
    return keys;
}

} // namespace

RecordListModel::RecordListModel(QList<QByteArray> roles, QObject* parent)
    : QAbstractListModel(parent)
{
    int role = Qt::UserRole + 1;
    for (const QByteArray& name : roles)
        m_roleNames.insert(role++, name);
}

void RecordListModel::setRows(const QList<QVariantMap>& rows, bool incremental)
{
    const qsizetype before = m_rows.size();
    const QStringList oldKeys = keysOf(m_rows);
    const QStringList newKeys = keysOf(rows);
    if (incremental && oldKeys == newKeys) {
        m_rows = rows;
        if (!m_rows.isEmpty())
            Q_EMIT dataChanged(index(0), index(int(m_rows.size()) - 1));
    } else if (incremental && newKeys.size() > oldKeys.size() &&
               newKeys.first(oldKeys.size()) == oldKeys) {
        beginInsertRows(QModelIndex(), int(oldKeys.size()), int(newKeys.size()) - 1);
        m_rows = rows;
        endInsertRows();
        if (!oldKeys.isEmpty())
            Q_EMIT dataChanged(index(0), index(int(oldKeys.size()) - 1));
    } else if (!incremental || !removeMissing(rows)) {
        beginResetModel();
        m_rows = rows;
        endResetModel();
    }
    if (m_rows.size() != before)
        Q_EMIT countChanged();
}

// Applies `rows` as removals when they are the current rows with some left out.
bool RecordListModel::removeMissing(const QList<QVariantMap>& rows)
{
    const QStringList oldKeys = keysOf(m_rows);
    const QStringList newKeys = keysOf(rows);
    if (newKeys.size() >= oldKeys.size())
        return false;
    QList<int> removed;
    qsizetype next = 0;
    for (qsizetype i = 0; i < oldKeys.size(); ++i) {
        if (next < newKeys.size() && oldKeys.at(i) == newKeys.at(next))
            ++next;
        else
            removed.append(int(i));
    }
    if (next != newKeys.size())
        return false;
    for (auto it = removed.crbegin(); it != removed.crend(); ++it) {
        beginRemoveRows(QModelIndex(), *it, *it);
        m_rows.removeAt(*it);
        endRemoveRows();
    }
    m_rows = rows;
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0), index(int(m_rows.size()) - 1));
    return true;
}

QVariant RecordListModel::value(int row, const QString& role) const
{
    return row >= 0 && row < m_rows.size() ? m_rows.at(row).value(role) : QVariant();
}

int RecordListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant RecordListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    return m_rows.at(index.row()).value(QString::fromLatin1(m_roleNames.value(role)));
}

QHash<int, QByteArray> RecordListModel::roleNames() const
{
    return m_roleNames;
}

QSet<int> RecordListModel::positions(const QVariantList& rows, qsizetype count)
{
    QSet<int> offsets;
    for (const QVariant& row : rows) {
        bool ok = false;
        const int position = row.toInt(&ok);
        if (ok && position >= 0 && position < count)
            offsets.insert(position);
    }
    return offsets;
}
