#pragma once

#include "recovery/journals/JournalOutcome.h"

#include <QDateTime>
#include <QString>
#include <QWidget>

class QBoxLayout;
class QLabel;
class QPushButton;

/// The bar over the text of a document whose unsaved changes were brought back: says so, and lets the person keep or
/// discard them. Owned by the document. It does not take the focus when it is shown.
class RecoveredBar : public QWidget {
    Q_OBJECT

 public:
    explicit RecoveredBar(QWidget* parent = nullptr);

    /// What the bar says of changes that were last edited at this time.
    static QString sentence(const QDateTime& edited, const QDateTime& now, JournalFileNow file);
    /// The same of changes that another document than that of their file shows.
    static QString versionSentence(const QDateTime& edited, const QDateTime& now, const QString& name);
    void setSentence(const QString& text);
    /// Of the file, for who points at the bar or has it read.
    void setPath(const QString& path);

 Q_SIGNALS:
    void keepRequested();
    void discardRequested();
    void differencesRequested();
    /// Escape was pressed in the bar.
    void left();

 protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

 private:
    QPushButton* addButton(const char* name, const QString& text, const QString& accessibleName);
    void foldIfNarrow();

    QBoxLayout* m_rows;
    QBoxLayout* m_buttons;
    QLabel* m_text;
};
