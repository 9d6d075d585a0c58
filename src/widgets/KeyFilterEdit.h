#pragma once

#include <QLineEdit>

/// A line for numbers: lets only the characters pass that its number may have, hex digits as capitals, and cancels the
/// rest of what is typed. Or a line for any text. Enter does not end the dialog by itself. What is pasted is not looked
/// at.
class KeyFilterEdit : public QLineEdit {
    Q_OBJECT

 public:
    /// `allowed`: digits and capitals; anyKeys() lets all pass as they are.
    explicit KeyFilterEdit(const QString& allowed, QWidget* parent = nullptr);

    static QString anyKeys() { return {}; }
    static QString decimalKeys() { return u"0123456789"_qs; }
    static QString hexKeys() { return u"0123456789ABCDEF"_qs; }

 Q_SIGNALS:
    void enterPressed();
    void focusGained();

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

 private:
    QString m_allowed;
};
