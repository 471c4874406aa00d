#include "NewRuleEditor.h"

NewRuleEditor::NewRuleEditor(QObject* parent) : QObject(parent)
{
    connect(&m_applications, &ApplicationPicker::selectedAppChanged, this,
            &NewRuleEditor::canSaveChanged);
    connect(&m_shortcuts, &ShortcutConfigurationEditor::shortcutsChanged, this,
            &NewRuleEditor::canSaveChanged);
}

bool NewRuleEditor::hasAppOrShortcuts() const
{
    return m_applications.hasSelectedApp() || !m_shortcuts.configuration().isEmpty();
}

void NewRuleEditor::fillApplication(QString& id, QString& name, QString& path) const
{
    if (const std::optional<ApplicationInfo>& app = m_applications.selectedApp()) {
        id = app->id;
        name = app->name;
        path = app->path;
    } else {
        id.clear();
        name.clear();
        path.clear();
    }
}
