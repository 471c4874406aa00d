#include "ApplicationPicker.h"

#include "model/ApplicationCatalogue.h"
#include "platform/MainQueue.h"

#include <QDir>
#include <QPointer>
#include <QThreadPool>

#include <algorithm>

ApplicationPicker::ApplicationPicker(QObject* parent)
    : QObject(parent), m_filteredModel({"key", "appId", "name", "icon", "path"})
{
    loadApplications();
}

void ApplicationPicker::loadApplications()
{
    if (!std::exchange(m_isLoadingApps, true))
        Q_EMIT isLoadingAppsChanged();
    QPointer<ApplicationPicker> picker(this);
    QThreadPool::globalInstance()->start([picker] {
        const QList<ApplicationInfo> applications =
            ApplicationCatalogue::loadInstalledApplications();
        MainQueue::async([picker, applications] {
            if (picker)
                picker->finishLoading(applications);
        });
    });
}

void ApplicationPicker::finishLoading(const QList<ApplicationInfo>& applications)
{
    m_availableApps = applications;
    refilter();
    m_isLoadingApps = false;
    Q_EMIT isLoadingAppsChanged();
    Q_EMIT applicationsLoaded();
}

void ApplicationPicker::setSearchText(const QString& text)
{
    if (text == m_searchText)
        return;
    m_searchText = text;
    refilter();
    Q_EMIT searchTextChanged();
}

void ApplicationPicker::refilter()
{
    m_filteredApps.clear();
    QList<QVariantMap> rows;
    for (const ApplicationInfo& app : std::as_const(m_availableApps)) {
        if (!app.matchesSearch(m_searchText))
            continue;
        m_filteredApps.append(app);
        rows.append({{QStringLiteral("key"), app.id},
                     {QStringLiteral("appId"), app.id},
                     {QStringLiteral("name"), app.name},
                     {QStringLiteral("icon"), app.icon},
                     {QStringLiteral("path"), app.path}});
    }
    m_filteredModel.setRows(rows, false);
}

void ApplicationPicker::selectRow(int row)
{
    if (row < 0 || row >= m_filteredApps.size())
        return;
    m_selectedApp = m_filteredApps.at(row);
    Q_EMIT selectedAppChanged();
}

bool ApplicationPicker::choose(const QUrl& location)
{
    if (!location.isLocalFile())
        return false;
    const std::optional<ApplicationInfo> app =
        ApplicationCatalogue::applicationInfo(location.toLocalFile());
    if (!app)
        return false;
    m_selectedApp = app;
    const bool listed =
        std::any_of(m_availableApps.cbegin(), m_availableApps.cend(),
                    [&app](const ApplicationInfo& other) { return other.id == app->id; });
    if (!listed) {
        m_availableApps.prepend(*app);
        refilter();
    }
    Q_EMIT selectedAppChanged();
    return true;
}

QUrl ApplicationPicker::browseFolder()
{
    const QStringList folders = ApplicationCatalogue::applicationFolders();
    // The system's folder first, where most applications are; the user's own otherwise.
    for (auto it = folders.crbegin(); it != folders.crend(); ++it) {
        if (QDir(*it).exists())
            return QUrl::fromLocalFile(*it);
    }
    return QUrl::fromLocalFile(QDir::homePath());
}
