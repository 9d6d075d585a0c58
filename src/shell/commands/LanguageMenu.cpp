#include "shell/commands/LanguageMenu.h"

#include "document/frmDocument.h"
#include "lang/LanguageTable.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/MenuText.h"
#include "shell/documents/MdiChildren.h"
#include "shell/frame/FrameParts.h"

#include <QAction>

namespace {

constexpr int LanguageData = 1;

}  // namespace

LanguageMenu::LanguageMenu(FrameParts& parts) : m_parts(parts) {}

void LanguageMenu::LoadLanguageMenu(const QStringList& names) {
    for (QAction* entry : m_entries)
        m_parts.commands->removeItem(entry);
    m_entries.clear();
    for (const QString& name : names.mid(0, LanguageTable::MostLanguages)) {
        const QByteArray key = "mnuLanguage(" + QByteArray::number(m_entries.size()) + ')';
        QAction* entry = m_parts.commands->addItem("mnuLanguages", key, [this, name] { choose(name); });
        MenuText::setCaption(*entry, name);
        entry->setData(LanguageData);
        m_entries.append(entry);
    }
}

void LanguageMenu::choose(const QString& name) {
    frmDocument* document = m_parts.children->active();
    if (document == nullptr)
        return;
    document->SetLang(name);
    m_parts.commands->markOnly(name);
}

void LanguageMenu::CheckLangMenu(const frmDocument* document) {
    m_parts.commands->markOnly(document->GetLang());
}
