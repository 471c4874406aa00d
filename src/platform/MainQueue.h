#pragma once

#include <QCoreApplication>
#include <QMetaObject>
#include <QTimer>

#include <functional>

// The main queue: work items run in FIFO order on the GUI thread's event loop.
namespace MainQueue {

inline void async(std::function<void()> work)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(work), Qt::QueuedConnection);
}

inline void after(int milliseconds, std::function<void()> work)
{
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, QCoreApplication::instance(),
                       std::move(work));
}

} // namespace MainQueue
