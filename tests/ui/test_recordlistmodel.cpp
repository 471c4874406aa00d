#include "ui/AddWiFiRuleEditor.h"
#include "ui/RecordListModel.h"

#include <QSignalSpy>
#include <QTest>

// The list models apply new rows as the smallest change, so that a list keeps its place.
class RecordListModelTest : public QObject
{
    Q_OBJECT

private:
    static QList<QVariantMap> rows(const QStringList& keys, const QString& label = QString())
    {
        QList<QVariantMap> made;
        for (const QString& key : keys)
            made.append({{"key", key}, {"label", label + key}});
        return made;
    }

    struct Spies
    {
        explicit Spies(RecordListModel& model)
            : reset(&model, &QAbstractItemModel::modelReset),
              removed(&model, &QAbstractItemModel::rowsRemoved),
              inserted(&model, &QAbstractItemModel::rowsInserted),
              count(&model, &RecordListModel::countChanged)
        {
        }
        QSignalSpy reset, removed, inserted, count;
    };

private Q_SLOTS:
    void removalsAppendsAndChangesKeepTheirRows()
    {
        RecordListModel model({"key", "label"});
        model.setRows(rows({"a", "b", "c", "d"}));
        Spies spies(model);

        model.setRows(rows({"a", "c"}));
        QCOMPARE(spies.reset.size(), 0);
        QCOMPARE(spies.removed.size(), 2);
        // Highest first, so every position still names the row it named before.
        QCOMPARE(spies.removed.at(0).at(1).toInt(), 3);
        QCOMPARE(spies.removed.at(1).at(1).toInt(), 1);
        QCOMPARE(model.value(1, "key").toString(), "c");

        model.setRows(rows({"a", "c", "e"}));
        QCOMPARE(spies.inserted.size(), 1);
        QCOMPARE(spies.inserted.at(0).at(1).toInt(), 2);

        model.setRows(rows({"a", "c", "e"}, "new "));
        QCOMPARE(spies.reset.size(), 0);
        QCOMPARE(model.value(2, "label").toString(), "new e");
        QCOMPARE(spies.count.size(), 2);
    }

    void reorderingOrFilteringResets()
    {
        RecordListModel model({"key", "label"});
        model.setRows(rows({"a", "a", "b"}));
        Spies spies(model);
        model.setRows(rows({"b", "a"}));
        QCOMPARE(spies.reset.size(), 1);
        model.setRows(rows({"b"}), false);
        QCOMPARE(spies.reset.size(), 2);
        QCOMPARE(spies.removed.size(), 0);
        QCOMPARE(model.count(), 1);
        QVERIFY(!model.value(5, "key").isValid());
    }

    void positionsDropWhatIsOutOfRange()
    {
        QCOMPARE(RecordListModel::positions({0, 2, 2, 3, -1, "x"}, 3), QSet<int>({0, 2}));
    }

    void typedNetworkNamesLoseBlanksAndTabsOnly()
    {
        QCOMPARE(AddWiFiRuleEditor::trimmedName(" \t Guest Net \t"), "Guest Net");
        QCOMPARE(AddWiFiRuleEditor::trimmedName("\u00a0Café "), "Café");
        QCOMPARE(AddWiFiRuleEditor::trimmedName("Net\n"), "Net\n");
        QCOMPARE(AddWiFiRuleEditor::trimmedName(" \t "), QString());
    }
};

QTEST_GUILESS_MAIN(RecordListModelTest)
#include "test_recordlistmodel.moc"
