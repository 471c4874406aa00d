#pragma once

#include <QObject>
#include <QStringList>

// Brings the services up in their fixed order at launch and stops the monitors at the end.
class AppDelegate : public QObject
{
    Q_OBJECT
public:
    explicit AppDelegate(QStringList arguments, QObject* parent = nullptr);

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    bool isUITesting() const;

private:
    QStringList m_arguments;
};
