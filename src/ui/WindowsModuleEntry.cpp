#include "WindowHost.h"

#include <type_traits>

// The windows module's entry point, looked up by name when the first window is shown.
extern "C" Q_DECL_EXPORT WindowHosting*
obrinta_create_window_hosting(const QHash<QString, QObject*>& contextObjects, QObject* parent)
{
    return new WindowHost(contextObjects, parent);
}

static_assert(std::is_same_v<decltype(&obrinta_create_window_hosting), CreateWindowHosting>);
