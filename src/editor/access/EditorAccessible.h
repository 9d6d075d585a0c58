#pragma once

#include <QAccessibleWidget>

class TextControl;

/// The editing control for screen readers: its text, caret and selection. The library's own object counts characters
/// from the start of the text at every key and paint; this one uses the control's map. Offsets are positions in UTF-16
/// units. Owned by Qt's cache of accessible objects.
class EditorAccessible : public QAccessibleWidget,
                         public QAccessibleTextInterface,
                         public QAccessibleEditableTextInterface {
 public:
    explicit EditorAccessible(TextControl* control);

    /// Registers this class for a new control, and notifies screen readers of its edits and selections from now on.
    /// Does no work while none listens. The first call installs the factory before the library's, which exists by then.
    static void follow(TextControl& control);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;

    void selection(int index, int* start, int* end) const override;
    int selectionCount() const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int start, int end) const override;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int offset, int* start, int* end) const override;

    void deleteText(int start, int end) override;
    void insertText(int offset, const QString& text) override;
    void replaceText(int start, int end, const QString& text) override;

 private:
    static void textAboutToChange(TextControl& control, qint64 at, qint64 length, bool inserts);
    static void selectionChanged(TextControl& control);

    struct Bytes {
        qint64 from = 0;
        qint64 to = 0;
    };
    TextControl& control() const;
    qint64 send(unsigned message, qint64 first = 0, qint64 second = 0) const;
    Bytes unitAround(qint64 byte, QAccessible::TextBoundaryType type) const;
    QString give(Bytes unit, int* start, int* end) const;
};
