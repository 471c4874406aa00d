#pragma once

#include <QString>

class NotificationPosting
{
public:
    virtual ~NotificationPosting() = default;
    virtual void postNotification(const QString& title, const QString& body, bool isError) = 0;
};
