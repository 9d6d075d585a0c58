#include "shell/commands/LanguageMenu.h"

#include "document/frmDocument.h"
#include "lang/LanguageTable.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/MenuText.h"
#include "shell/documents/ActiveDocument.h"

#include <QAction>

namespace {

constexpr int LanguageData = 1;

}  // namespace

LanguageMenu::LanguageMenu(CommandEntries& commands, const ActiveDocument& active)
    : m_commands(commands), m_active(active) {}

void LanguageMenu::LoadLanguageMenu(const QStringList& names) {
    for (QAction* entry : m_entries)
        m_commands.removeItem(entry);
    m_entries.clear();
    for (const QString& name : names.mid(0, LanguageTable::MostLanguages)) {
        const QByteArray key = "mnuLanguage(" + QByteArray::number(m_entries.size()) + ')';
        QAction* entry = m_commands.addItem("mnuLanguages", key, [this, name] { choose(name); });
        MenuText::setCaption(*entry, name);
        entry->setData(LanguageData);
        m_entries.append(entry);
    }
}

void LanguageMenu::choose(const QString& name) {
    frmDocument* document = m_active.get();
    if (document == nullptr)
        return;
    document->SetLang(name);
    m_commands.markOnly(name);
}

void LanguageMenu::CheckLangMenu(const frmDocument* document) {
    m_commands.markOnly(document->GetLang());
}
