#include "keys/StrokeEdit.h"

#include "editor/control/EditorKeys.h"
#include "keys/KeyNames.h"

#include <QInputMethodEvent>
#include <QKeyEvent>

namespace {

/// Keys that the dialog itself needs.
bool isForTheDialog(const QKeyEvent& key) {
    const bool plain = (key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
    switch (key.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Escape:
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return plain;
        default:
            return false;
    }
}

bool empties(const QKeyEvent& key) {
    return key.modifiers() == Qt::NoModifier && (key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete);
}

}  // namespace

StrokeEdit::StrokeEdit(QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    setContextMenuPolicy(Qt::NoContextMenu);
    setPlaceholderText(tr("Press one key or two"));
}

void StrokeEdit::setHotKey(const HotKey& hotKey) {
    m_hotKey = hotKey;
    setText(KeyNames::text(hotKey));
    Q_EMIT hotKeyChanged(hotKey);
}

/// Accepts each key here, before it can trigger a shortcut or the mnemonic of a button.
bool StrokeEdit::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && !isForTheDialog(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void StrokeEdit::keyPressEvent(QKeyEvent* event) {
    if (isForTheDialog(*event) || EditorKeys::isModifier(*event))
        return event->ignore();
    event->accept();
    if (empties(*event))
        return setHotKey({});
    const auto stroke = KeyNames::strokeOf(*event);
    if (!stroke) {
        setHotKey({});
        Q_EMIT refused();
    } else if (m_hotKey.first.isEmpty() || !m_hotKey.second.isEmpty()) {
        setHotKey({*stroke, {}});
    } else {
        setHotKey({m_hotKey.first, *stroke});
    }
}

void StrokeEdit::inputMethodEvent(QInputMethodEvent* event) {
    event->accept();
}
