#pragma once

#include <QLineEdit>

/// A line for numbers: accepts only the characters of its kind of number, hex digits as capitals, and ignores the other
/// ones. Or a line for any text. Enter does not close the dialog by itself. Pasted text is not checked.
class KeyFilterEdit : public QLineEdit {
    Q_OBJECT

 public:
    /// `allowed`: digits and capitals; anyKeys() accepts all characters unchanged.
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
