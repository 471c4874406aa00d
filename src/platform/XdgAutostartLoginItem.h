#pragma once

#include "LoginItemRegistering.h"

// The XDG autostart entry $XDG_CONFIG_HOME/autostart/obrinta.desktop: written to register,
// removed to unregister.
class XdgAutostartLoginItem : public LoginItemRegistering
{
public:
    // `executable`: the program the entry starts; `filePath`: where the entry lives.
    XdgAutostartLoginItem(QString executable, QString filePath);
    // The running program, in the user's autostart folder.
    static XdgAutostartLoginItem& shared();

    std::optional<QString> update(bool launchAtLogin) override;

    const QString& filePath() const { return m_filePath; }
    // The entry's text; the Exec key quoted as desktop entries require.
    QByteArray entryText() const;

private:
    std::optional<QString> write();
    std::optional<QString> remove();

    QString m_executable;
    QString m_filePath;
};
