#pragma once

#include "widgets/Prompts.h"

/// The prompts as boxes and dialogs on the screen. Each is created when it is needed. A file dialog without a folder to
/// start in begins in the folder of the file that was chosen last.
class QtPrompts : public Prompts {
 public:
    void message(QWidget* parent, const QString& text, const QString& title) override;
    bool askYesNo(QWidget* parent, const QString& text, const QString& title) override;
    OpenAnswer askFilesToOpen(QWidget* parent, const FileQuestion& question) override;
    QString askFileToSave(QWidget* parent, const FileQuestion& question) override;

 private:
    QString m_lastFolder;
};

/// "description|pattern;pattern|..." as the name filters of a file dialog: the description, and in a last pair of
/// brackets the patterns, which the dialog hides. "*.*" matches every file.
QStringList nameFilters(const QString& filters);
