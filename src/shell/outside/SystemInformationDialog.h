#pragma once

#include <QDialog>

class QPlainTextEdit;

/// Shows the text of the system information, which can be selected and copied. Modal; the caller owns it and creates a
/// new one each time.
class SystemInformationDialog : public QDialog {
    Q_OBJECT

 public:
    explicit SystemInformationDialog(const QString& text, QWidget* parent = nullptr);

 private:
    void copyAll();
    QSize sizeOfText() const;

    QPlainTextEdit* m_text;
};
