#include "NotificationCenter.h"

NotificationCenter& NotificationCenter::defaultCenter()
{
    static NotificationCenter center;
    return center;
}

void NotificationCenter::post(const QString& name, const QVariantMap& userInfo)
{
    Q_EMIT posted(name, userInfo);
}
