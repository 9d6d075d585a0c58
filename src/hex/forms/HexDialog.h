#pragma once

#include <QDialog>

class QLabel;

/// The common parts of the small modal forms of the hex view: an OK button that checks the input first, a cancel button
/// that Esc presses too, and "OK" or "CANCEL" as the result. Created for one question and destroyed after it.
class HexDialog : public QDialog {
    Q_OBJECT
    Q_PROPERTY(QString Tag READ Tag)

 public:
    /// The form's class name is its object name.
    HexDialog(const QString& name, const QString& caption, QWidget* parent);

    QString Tag() const { return m_tag; }
    bool isConfirmed() const { return m_tag == u"OK"_qs; }

    void accept() override;
    void reject() override;

 protected:
    /// False: something is missing, and the form stays.
    virtual bool checkInput() = 0;

    /// `Command1` and `Command2`; to be added last.
    QWidget* makeButtons();
    /// A label of that name before a box. The first one of a form also holds the result, as its property "Tag".
    QLabel* makeLabel(const QString& name, const QString& caption, QWidget* box);

 private:
    void setTag(const QString& tag);

    QString m_tag;
    QLabel* m_firstLabel = nullptr;
};
