#pragma once

#include <QDialog>

class QListWidget;
class RegistryStore;

/// Lets the user choose the language of menus and messages among those that the program has. Modal; the caller owns it.
class LanguageChooser : public QDialog {
    Q_OBJECT

 public:
    /// `current` is selected at first, or else the first language.
    explicit LanguageChooser(const QString& current, QWidget* parent = nullptr);

    QString chosen() const;

    /// Runs the event loop until the user has chosen, and stores the choice for the user; unless it was cancelled.
    static void choose(RegistryStore& store, QWidget* parent);

 private:
    QListWidget* m_list;
};
