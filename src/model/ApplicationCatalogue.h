#pragma once

#include "ApplicationInfo.h"

#include <QList>
#include <QStringList>

#include <optional>

// The applications the user can pick for a rule: the desktop entries of the XDG application
// folders. Nothing is cached: every call reads the folders afresh, and any thread may call.
namespace ApplicationCatalogue {

// $XDG_DATA_HOME/applications, then each $XDG_DATA_DIRS folder's, highest priority first.
QStringList applicationFolders();

// Every entry that a desktop shows in its application menus, one per desktop-file id (the
// entry that the id resolves to, as launching does), sorted by name ignoring case; entries
// with equal names keep their folder order.
QList<ApplicationInfo> loadInstalledApplications();

// A .desktop file or an executable picked by hand; nothing when it is neither.
std::optional<ApplicationInfo> applicationInfo(const QString& path);

// The Icon of the entry that `id` resolves to; empty when there is none.
QString iconForIdentifier(const QString& id);

} // namespace ApplicationCatalogue
