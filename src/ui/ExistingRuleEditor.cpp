#include "ExistingRuleEditor.h"

#include "engine/AppController.h"
#include "engine/ApplicationManager.h"
#include "model/ApplicationCatalogue.h"
#include "platform/MainQueue.h"
#include "platform/RunningApplications.h"

#include <QPointer>
#include <QUuid>

namespace {

// A launch or quit takes a moment to show in the process table.
constexpr int runningStateDelay = 1000;

} // namespace

ExistingRuleEditor::ExistingRuleEditor(QObject* parent) : QObject(parent) {}

void ExistingRuleEditor::setRuleId(const QString& id)
{
    m_ruleId = id;
    m_hasRule = loadRule(QUuid::fromString(id));
    Q_EMIT ruleChanged();
    refreshRunningState();
}

QString ExistingRuleEditor::appIcon() const
{
    return ApplicationCatalogue::iconForIdentifier(m_appBundleIdentifier);
}

QString ExistingRuleEditor::timeoutText() const
{
    return QString::asprintf("%.1fs", m_forceQuitTimeout);
}

void ExistingRuleEditor::refreshRunningState()
{
    bool running = false;
    if (m_hasRule && !m_appBundleIdentifier.isEmpty()) {
        RunningApplications& applications = ApplicationManager::sharedRunningApplications();
        applications.refresh();
        running = !applications.instances(m_appBundleIdentifier).isEmpty();
    }
    if (std::exchange(m_isAppRunning, running) != running)
        Q_EMIT isAppRunningChanged();
}

void ExistingRuleEditor::refreshLater()
{
    QPointer<ExistingRuleEditor> editor(this);
    MainQueue::after(runningStateDelay, [editor] {
        if (editor)
            editor->refreshRunningState();
    });
}

void ExistingRuleEditor::launchApp()
{
    if (!m_hasRule)
        return;
    MainQueue::async([context = ruleContext()] {
        // The table is read once per evaluation; a try-out between evaluations needs it fresh.
        ApplicationManager::sharedRunningApplications().refresh();
        AppController::shared().launchApplication(context);
    });
    refreshLater();
}

void ExistingRuleEditor::quitApp()
{
    if (!m_hasRule)
        return;
    MainQueue::async([context = ruleContext()] {
        AppController::shared().terminateApplication(context, false);
    });
    refreshLater();
}
