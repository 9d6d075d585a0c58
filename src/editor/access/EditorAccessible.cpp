#include "editor/access/EditorAccessible.h"

#include "editor/control/TextControl.h"

#include <algorithm>

using Sci = QsciScintillaBase;

namespace {

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
    if (className != QLatin1String(TextControl::staticMetaObject.className()))
        return nullptr;
    return new EditorAccessible(qobject_cast<TextControl*>(object));
}

}  // namespace

EditorAccessible::EditorAccessible(TextControl* control) : QAccessibleWidget(control, QAccessible::EditableText) {}

void EditorAccessible::follow(TextControl& control) {
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed)
    QObject::connect(
        &control, &TextControl::aboutToChange, &control,
        [&control](qint64 at, qint64 length, bool inserts) { textAboutToChange(control, at, length, inserts); });
    QObject::connect(&control, &TextControl::SelChange, &control, [&control] { selectionChanged(control); });
}

void EditorAccessible::textAboutToChange(TextControl& control, qint64 at, qint64 length, bool inserts) {
    if (!QAccessible::isActive())
        return;
    const auto position = static_cast<int>(control.map().positionOf(at));
    if (!inserts) {
        QAccessibleTextRemoveEvent event(&control, position, QString::fromUtf8(control.bytes(at, at + length)));
        QAccessible::updateAccessibility(&event);
        return;
    }
    // An inserted text is read once it is in the control.
    QMetaObject::invokeMethod(
        &control,
        [&control, at, length, position] {
            if (at + length > control.heldText().length())
                return;
            QAccessibleTextInsertEvent event(&control, position, QString::fromUtf8(control.bytes(at, at + length)));
            QAccessible::updateAccessibility(&event);
        },
        Qt::QueuedConnection);
}

void EditorAccessible::selectionChanged(TextControl& control) {
    if (!QAccessible::isActive())
        return;
    QAccessibleTextSelectionEvent event(&control, static_cast<int>(control.SelStart()),
                                        static_cast<int>(control.SelEnd()));
    event.setCursorPosition(static_cast<int>(control.map().positionOf(control.SendScintilla(Sci::SCI_GETCURRENTPOS))));
    QAccessible::updateAccessibility(&event);
}

TextControl& EditorAccessible::control() const {
    return *static_cast<TextControl*>(widget());
}

qint64 EditorAccessible::send(unsigned message, qint64 first, qint64 second) const {
    return control().SendScintilla(message, static_cast<unsigned long>(first), static_cast<long>(second));
}

void* EditorAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface)
        return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State EditorAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.multiLine = true;
    state.selectableText = true;
    state.readOnly = control().Locked();
    state.editable = !control().Locked();
    return state;
}

/// The value of the object is its text; for a large one, clients use the text interface, which reads parts of it.
QString EditorAccessible::text(QAccessible::Text kind) const {
    constexpr qint64 ValueLimit = 64 * 1024;
    if (kind != QAccessible::Value)
        return QAccessibleWidget::text(kind);
    return control().heldText().length() <= ValueLimit ? control().Text() : QString();
}

void EditorAccessible::selection(int index, int* start, int* end) const {
    *start = index == 0 ? static_cast<int>(control().SelStart()) : 0;
    *end = index == 0 ? static_cast<int>(control().SelEnd()) : 0;
}

int EditorAccessible::selectionCount() const {
    return control().SelStart() == control().SelEnd() ? 0 : 1;
}

void EditorAccessible::addSelection(int start, int end) {
    setSelection(0, start, end);
}

void EditorAccessible::removeSelection(int index) {
    if (index == 0)
        setCursorPosition(cursorPosition());
}

void EditorAccessible::setSelection(int index, int start, int end) {
    if (index == 0)
        control().setSelection(start, end);
}

int EditorAccessible::cursorPosition() const {
    return static_cast<int>(control().map().positionOf(send(Sci::SCI_GETCURRENTPOS)));
}

void EditorAccessible::setCursorPosition(int position) {
    control().setSelection(position, position);
}

QString EditorAccessible::text(int start, int end) const {
    const TextMap& map = control().map();
    return QString::fromUtf8(control().bytes(map.byteOf(start), map.byteOf(std::max(start, end))));
}

int EditorAccessible::characterCount() const {
    return static_cast<int>(control().map().positionOf(control().heldText().length()));
}

/// The unit of text that contains a byte. A line is a line of the layout, so that a huge one is not returned whole.
EditorAccessible::Bytes EditorAccessible::unitAround(qint64 byte, QAccessible::TextBoundaryType type) const {
    const qint64 length = control().heldText().length();
    if (type == QAccessible::NoBoundary)
        return {0, length};
    if (type == QAccessible::CharBoundary)
        return {byte, send(Sci::SCI_POSITIONAFTER, byte)};
    if (type == QAccessible::WordBoundary) {
        return {send(Sci::SCI_WORDSTARTPOSITION, byte, 1),
                std::max(send(Sci::SCI_WORDENDPOSITION, byte, 1), send(Sci::SCI_POSITIONAFTER, byte))};
    }
    const qint64 line = control().heldText().lineOf(byte);
    const bool last = line + 1 >= control().heldText().lineCount();
    return {control().heldText().lineStart(line), last ? length : control().heldText().lineStart(line + 1)};
}

QString EditorAccessible::give(Bytes unit, int* start, int* end) const {
    *start = static_cast<int>(control().map().positionOf(unit.from));
    *end = static_cast<int>(control().map().positionOf(unit.to));
    return QString::fromUtf8(control().bytes(unit.from, unit.to));
}

QString EditorAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const {
    return give(unitAround(control().map().byteOf(offset), type), start, end);
}

QString EditorAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const {
    const Bytes here = unitAround(control().map().byteOf(offset), type);
    if (here.from == 0)
        return give({0, 0}, start, end);
    return give(unitAround(send(Sci::SCI_POSITIONBEFORE, here.from), type), start, end);
}

QString EditorAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const {
    const Bytes here = unitAround(control().map().byteOf(offset), type);
    const qint64 length = control().heldText().length();
    return give(here.to >= length ? Bytes{length, length} : unitAround(here.to, type), start, end);
}

QRect EditorAccessible::characterRect(int offset) const {
    const qint64 byte = control().map().byteOf(offset);
    const QPoint top(static_cast<int>(send(Sci::SCI_POINTXFROMPOSITION, 0, byte)),
                     static_cast<int>(send(Sci::SCI_POINTYFROMPOSITION, 0, byte)));
    const qint64 after = send(Sci::SCI_POSITIONAFTER, byte);
    const int width = std::max(1, static_cast<int>(send(Sci::SCI_POINTXFROMPOSITION, 0, after)) - top.x());
    const int height = static_cast<int>(send(Sci::SCI_TEXTHEIGHT, send(Sci::SCI_LINEFROMPOSITION, byte)));
    return {control().viewport()->mapToGlobal(top), QSize(width, height)};
}

int EditorAccessible::offsetAtPoint(const QPoint& point) const {
    const QPoint at = control().viewport()->mapFromGlobal(point);
    const qint64 byte = send(Sci::SCI_POSITIONFROMPOINTCLOSE, at.x(), at.y());
    return byte < 0 ? -1 : static_cast<int>(control().map().positionOf(byte));
}

void EditorAccessible::scrollToSubstring(int start, int end) {
    const TextMap& map = control().map();
    send(Sci::SCI_SCROLLRANGE, map.byteOf(end), map.byteOf(start));
}

QString EditorAccessible::attributes(int offset, int* start, int* end) const {
    Q_UNUSED(offset)
    *start = 0;
    *end = characterCount();
    return {};
}

void EditorAccessible::deleteText(int start, int end) {
    replaceText(start, end, QString());
}

void EditorAccessible::insertText(int offset, const QString& text) {
    replaceText(offset, offset, text);
}

void EditorAccessible::replaceText(int start, int end, const QString& text) {
    control().setSelection(start, end);
    control().setSelText(text);
}
