#pragma once

#include "RecordListModel.h"

// The USB rules for the "USB Rules" tab, in the stored order, with whether each rule's device is
// connected now. Follows the application state.
class BindingListModel : public RecordListModel
{
    Q_OBJECT
public:
    explicit BindingListModel(QObject* parent = nullptr);

    // The row's switch: stores a copy of the rule with `isEnabled` changed.
    Q_INVOKABLE void setEnabled(int row, bool isEnabled);
    // The delete gesture: removes the rules at these positions in one change.
    Q_INVOKABLE void removeRows(const QVariantList& rows);

private:
    void reload();
};
