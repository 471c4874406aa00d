// Saves rule lists of alternating lengths as fast as it can until it is killed; the lengths
// written are 10 and 11 rules, so a reader knows every valid file holds one or the other.
#include "model/PersistenceManager.h"
#include "platform/UserDefaults.h"

#include <QCoreApplication>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    UserDefaults defaults(QCoreApplication::arguments().value(1) +
                          QStringLiteral("/settings.json"));
    PersistenceManager persistence(defaults);
    QList<DeviceAppBinding> rules;
    for (int i = 0; i < 11; ++i) {
        DeviceAppBinding rule;
        rule.id = QUuid::createUuid();
        rule.deviceName = QString(200, QChar(u'é'));
        rules.append(rule);
    }
    for (int round = 0;; ++round) {
        persistence.saveBindings(rules.mid(0, 10 + round % 2));
        WiFiAppBinding wifi;
        wifi.id = QUuid::createUuid();
        persistence.saveWiFiBindings(QList<WiFiAppBinding>(10 + round % 2, wifi));
    }
}
