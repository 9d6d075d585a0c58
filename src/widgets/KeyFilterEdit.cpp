#include "widgets/KeyFilterEdit.h"

#include <QKeyEvent>

namespace {

constexpr char16_t FirstPrintable = 32;
constexpr char16_t DeleteCode = 127;

bool typesCharacter(const QKeyEvent& event) {
    const QString text = event.text();
    return !text.isEmpty() && text[0] >= QChar(FirstPrintable) && text[0] != QChar(DeleteCode);
}

}  // namespace

KeyFilterEdit::KeyFilterEdit(const QString& allowed, QWidget* parent) : QLineEdit(parent), m_allowed(allowed) {}

void KeyFilterEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->accept();
        Q_EMIT enterPressed();
        return;
    }
    if (m_allowed.isEmpty() || !typesCharacter(*event)) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    event->accept();
    const QString text = event->text().toUpper();
    if (m_allowed.contains(text))
        insert(text);
}

void KeyFilterEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    Q_EMIT focusGained();
}
