#pragma once

#include <QList>
#include <QStringList>

class ActiveDocument;
class CommandEntries;
class QAction;
class frmDocument;

/// The languages in their menu, one entry each, distinguished from other entries by an item data of 1. Owned by the
/// frame. Marking one clears the marks of all other entries until the commands are updated from a document.
class LanguageMenu {
 public:
    LanguageMenu(CommandEntries& commands, const ActiveDocument& active);

    /// Entries for these languages in place of those that were there; at most 51.
    void LoadLanguageMenu(const QStringList& names);
    /// Marks the document's language.
    void CheckLangMenu(const frmDocument* document);

 private:
    void choose(const QString& name);

    CommandEntries& m_commands;
    const ActiveDocument& m_active;
    QList<QAction*> m_entries;
};
