// One /proc read with 1,000 processes and the attribution of 1,000 rules against it, side by
// side with `pgrep -f` run once per rule.
#include "BenchSupport.h"

#include "platform/ProcProcessTable.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    Bench::SleepingChildren children(1000);
    ProcProcessTable table([](const QString& id) {
        return id.endsWith(QLatin1Char('7')) ? QStringLiteral("/usr/bin/sleep") : QString();
    });
    QStringList ids;
    for (int i = 0; i < 1000; ++i)
        ids.append(QStringLiteral("org.bench.App%1").arg(i));

    const double firstMs = Bench::medianMs(1, [&] { table.refresh(); });
    Bench::result("proc_read_1000_new_processes_first", firstMs, "ms", "-");
    // On a desktop most processes have run for a while: their units have settled.
    QThread::sleep(11);
    const double readMs = Bench::medianMs(9, [&] { table.refresh(); });
    const double attributeMs = Bench::medianMs(9, [&] {
        for (const QString& id : ids)
            table.instances(id);
    });
    Bench::result("proc_read_1000_processes", readMs, "ms", "-");
    Bench::result("attribute_1000_rules", attributeMs, "ms", "-");
    Bench::result("proc_read_plus_attribution", readMs + attributeMs, "ms", "<15");

    // pgrep is slow enough that 100 rules stand for 1,000.
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 100; ++i) {
        QProcess pgrep;
        pgrep.start(QStringLiteral("pgrep"), {QStringLiteral("-f"), ids.at(i)});
        pgrep.waitForFinished();
    }
    const double pgrepMs = double(timer.nsecsElapsed()) / 1e6 * 10.0;
    Bench::result("pgrep_f_per_rule_1000_rules", pgrepMs, "ms", "-");
    Bench::result("pgrep_over_proc_table_ratio", pgrepMs / (readMs + attributeMs), "x", "-");
    return 0;
}
