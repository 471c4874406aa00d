#pragma once

#include "RecordListModel.h"
#include "model/ApplicationInfo.h"

#include <QObject>
#include <QUrl>

#include <optional>

// The application choice of the rule sheets: the installed applications, read off the main
// thread when the picker is made, filtered by the search text, plus any picked by hand.
class ApplicationPicker : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isLoadingApps READ isLoadingApps NOTIFY isLoadingAppsChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    // Rows "key" (the id), "appId", "name", "icon", "path" of the filtered applications.
    Q_PROPERTY(RecordListModel* filteredApps READ filteredApps CONSTANT)
    Q_PROPERTY(bool hasSelectedApp READ hasSelectedApp NOTIFY selectedAppChanged)
    Q_PROPERTY(QString selectedAppId READ selectedAppId NOTIFY selectedAppChanged)
    // Where the file dialog starts.
    Q_PROPERTY(QUrl browseFolder READ browseFolder CONSTANT)
public:
    explicit ApplicationPicker(QObject* parent = nullptr);

    bool isLoadingApps() const { return m_isLoadingApps; }
    const QString& searchText() const { return m_searchText; }
    void setSearchText(const QString& text);
    RecordListModel* filteredApps() { return &m_filteredModel; }
    const QList<ApplicationInfo>& availableApps() const { return m_availableApps; }
    const std::optional<ApplicationInfo>& selectedApp() const { return m_selectedApp; }
    bool hasSelectedApp() const { return m_selectedApp.has_value(); }
    QString selectedAppId() const { return m_selectedApp ? m_selectedApp->id : QString(); }
    static QUrl browseFolder();

    // Scans the installed applications on a worker thread; the list is replaced when it is done.
    void loadApplications();
    // Selects the row of the filtered list.
    Q_INVOKABLE void selectRow(int row);
    // A .desktop file or executable chosen in the file dialog: selected, and put first in the
    // list unless an application with its id is there. False when it is not an application.
    Q_INVOKABLE bool choose(const QUrl& location);

Q_SIGNALS:
    void isLoadingAppsChanged();
    void searchTextChanged();
    void selectedAppChanged();
    // The scan's result has been applied.
    void applicationsLoaded();

private:
    void finishLoading(const QList<ApplicationInfo>& applications);
    void refilter();

    bool m_isLoadingApps = true;
    QString m_searchText;
    QList<ApplicationInfo> m_availableApps;
    QList<ApplicationInfo> m_filteredApps;
    RecordListModel m_filteredModel;
    std::optional<ApplicationInfo> m_selectedApp;
};
