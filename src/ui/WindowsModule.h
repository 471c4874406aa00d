#pragma once

#include <QHash>
#include <QString>

class QObject;
class WindowHosting;

// Loads "obrinta-windows.so" (beside the program, else in its library folder) and makes the
// windows from it. Until then no Qt Quick library is in the process.
namespace WindowsModule {

// The windows over `contextObjects`, or nullptr after one log line when the module cannot be
// loaded; the tray and the rules work without it.
WindowHosting* create(const QHash<QString, QObject*>& contextObjects, QObject* parent);

} // namespace WindowsModule
