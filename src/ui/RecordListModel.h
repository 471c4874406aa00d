#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QSet>
#include <QVariantMap>

// A list model of plain rows for the windows: each row a map from role name to value, with a
// "key" entry naming the record. New rows are applied as the smallest change that the keys
// show (rows removed, rows appended, values changed), so a list keeps its scroll position and
// its current row when one record changes; anything else resets the model.
class RecordListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    explicit RecordListModel(QList<QByteArray> roles, QObject* parent = nullptr);

    int count() const { return int(m_rows.size()); }
    const QList<QVariantMap>& rows() const { return m_rows; }
    // `incremental` false: always a reset (a filter that changes most rows at once).
    void setRows(const QList<QVariantMap>& rows, bool incremental = true);
    Q_INVOKABLE QVariant value(int row, const QString& role) const;

    // Row positions from QML as the set the state expects; positions not below `count` dropped.
    static QSet<int> positions(const QVariantList& rows, qsizetype count);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    bool removeMissing(const QList<QVariantMap>& rows);
    QHash<int, QByteArray> m_roleNames;
    QList<QVariantMap> m_rows;
};
