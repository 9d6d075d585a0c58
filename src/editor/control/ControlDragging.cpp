// Texts and files that are dragged over the control and dropped on it.

#include "editor/control/EditScope.h"
#include "editor/control/TextControl.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPointer>
#include <QUrl>

#include <algorithm>

namespace {

/// Files are opened; addresses of other kinds are text.
bool bringsFiles(const QDropEvent& event) {
    const QList<QUrl> urls = event.mimeData()->urls();
    return std::ranges::any_of(urls, &QUrl::isLocalFile);
}

}  // namespace

void TextControl::setDragDrop(bool on) {
    m_options.dragDrop = on;
    if (on)
        return;
    QDrag::cancel();
    endDragMark();
}

/// The library shows where a text would land until it is told that the drag has gone.
void TextControl::endDragMark() {
    QDragLeaveEvent leave;
    QsciScintillaBase::dragLeaveEvent(&leave);
}

void TextControl::dragEnterEvent(QDragEnterEvent* event) {
    if (bringsFiles(*event))
        event->acceptProposedAction();
    else if (DragDrop())
        QsciScintillaBase::dragEnterEvent(event);
}

void TextControl::dragMoveEvent(QDragMoveEvent* event) {
    if (bringsFiles(*event))
        event->acceptProposedAction();
    else if (DragDrop())
        QsciScintillaBase::dragMoveEvent(event);
    else
        event->ignore();
}

void TextControl::dropEvent(QDropEvent* event) {
    if (bringsFiles(*event))
        return dropFiles(event);
    if (DragDrop() && !Locked()) {
        const EditScope scope(*this, EditScope::Grouped);
        bool rectangular = false;
        fromMimeData(event->mimeData(), rectangular);
        if (rectangular || (m_dragging && !isStream()))
            QsciScintillaBase::dropEvent(event);
        else
            dropText(event);
    } else {
        event->ignore();
    }
    endDragMark();
}

/// Copied first: opening a file runs the event loop, and the drop is over by then.
void TextControl::dropFiles(QDropEvent* event) {
    const QPointer<TextControl> alive(this);
    const QList<QUrl> urls = event->mimeData()->urls();
    event->setDropAction(Qt::CopyAction);
    event->accept();
    for (const QUrl& url : urls) {
        if (alive && url.isLocalFile())
            Q_EMIT DropFile(url.toLocalFile());
    }
}

/// In place of the library's own, which ends a text at its first NUL. Where it moves within this control it is told to
/// the source as a copy, since the moved text is taken away here.
void TextControl::dropText(QDropEvent* event) {
    const QString text = event->mimeData()->text();
    const QPoint at = event->position().toPoint();
    qint64 target = send(SCI_POSITIONFROMPOINT, at.x(), at.y());
    const qint64 from = send(SCI_GETSELECTIONSTART);
    const qint64 to = send(SCI_GETSELECTIONEND);
    const auto* source = qobject_cast<const TextControl*>(event->source());
    const bool keepsSource = m_dragging || (source != nullptr && source->Locked());
    const bool moves = m_dragging && event->proposedAction() == Qt::MoveAction;
    event->setDropAction(keepsSource ? Qt::CopyAction : event->proposedAction());
    event->accept();
    if (moves && target >= from && target <= to)
        return;
    if (moves) {
        send(SCI_DELETERANGE, from, to - from);
        target -= target > to ? to - from : 0;
    }
    setSelectionBytes(target, target);
    replaceSelection(withOwnLineEnds(text));
    setSelectionBytes(target, send(SCI_GETCURRENTPOS));
}
