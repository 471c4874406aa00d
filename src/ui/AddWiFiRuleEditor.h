#pragma once

#include "CurrentWiFiNetwork.h"
#include "NewRuleEditor.h"

// The "Add WiFi Rule" sheet: a network name, offered from the current network or typed, then an
// application or shortcuts.
class AddWiFiRuleEditor : public NewRuleEditor
{
    Q_OBJECT
    Q_PROPERTY(CurrentWiFiNetwork* currentNetwork READ currentNetwork CONSTANT)
    Q_PROPERTY(QString ssidInput READ ssidInput WRITE setSsidInput NOTIFY ssidInputChanged)
public:
    explicit AddWiFiRuleEditor(QObject* parent = nullptr);

    CurrentWiFiNetwork* currentNetwork() { return &m_currentNetwork; }
    const QString& ssidInput() const { return m_ssidInput; }
    void setSsidInput(const QString& text);

    bool canSave() const override;
    bool save() override;

    // `text` without the blanks and tabs before and after it; line breaks stay.
    static QString trimmedName(const QString& text);

Q_SIGNALS:
    void ssidInputChanged();

private:
    CurrentWiFiNetwork m_currentNetwork;
    QString m_ssidInput;
};
