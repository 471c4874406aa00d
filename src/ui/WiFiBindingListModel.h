#pragma once

#include "RecordListModel.h"

// The WiFi rules for the "WiFi Rules" tab, in the stored order, with whether each rule's network
// is the one joined now (exact comparison). Follows the application state.
class WiFiBindingListModel : public RecordListModel
{
    Q_OBJECT
public:
    explicit WiFiBindingListModel(QObject* parent = nullptr);

    Q_INVOKABLE void setEnabled(int row, bool isEnabled);
    Q_INVOKABLE void removeRows(const QVariantList& rows);

private:
    void reload();
};
