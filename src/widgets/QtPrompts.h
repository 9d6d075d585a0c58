#pragma once

#include "widgets/Prompts.h"

#include <QObject>

class QMessageBox;

/// The prompts as boxes and dialogs on the screen. Each is created when it is needed. A file dialog without a folder to
/// start in begins in the folder of the file that was chosen last, a dialog for a folder beside the folder that was
/// chosen last. A box that comes up while the user works in another program leaves the keyboard there.
class QtPrompts : public Prompts {
 public:
    QtPrompts();

    void message(QWidget* parent, const QString& text, const QString& title) override;
    void stop(QWidget* parent, const QString& text, const QString& title) override;
    bool messageWithCheck(QWidget* parent, const QString& text, const QString& check) override;
    bool askYesNo(QWidget* parent, const QString& text, const QString& title = {}, const QString& informativeText = {},
                  Answer preset = Answer::Yes) override;
    OpenAnswer askFilesToOpen(QWidget* parent, const FileQuestion& question) override;
    QString askFileToSave(QWidget* parent, const FileQuestion& question) override;
    QString askFolder(QWidget* parent, const QString& title) override;
    std::optional<QString> askText(QWidget* parent, const QString& title, const QString& prompt,
                                   const QString& initial) override;

 private:
    void show(QMessageBox& box) const;

    QObject m_receiver;
    bool m_wasActive = false;  ///< the program has had the keyboard
    QString m_lastFolder;
    QString m_besideLastChoice;  ///< the folder that contains the last chosen one
};
