// The clipboard, and the X11 primary selection.

#include "editor/control/EditScope.h"
#include "editor/control/TextControl.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>
#include <memory>

namespace {

/// A selection of more bytes than this is not offered to the X11 primary selection: each step of the caret would copy
/// it.
constexpr qsizetype PrimaryLimit = 1024 * 1024;

}  // namespace

bool TextControl::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText();
}

QByteArray TextControl::fromMimeData(const QMimeData* source, bool& rectangular) const {
    QsciScintillaBase::fromMimeData(source, rectangular);
    return withOwnLineEnds(source->text());
}

/// Called for the clipboard, a drag and the primary selection alike.
QMimeData* TextControl::toMimeData(const QByteArray& text, bool rectangular) const {
    if (rectangular)
        return QsciScintillaBase::toMimeData(text, rectangular);
    auto mime = std::make_unique<QMimeData>();
    if (m_copying || m_dragging || text.size() <= PrimaryLimit)
        mime->setText(textOfRanges());
    return mime.release();
}

/// The text of all ranges in the order in which they stand there, each on a line of its own.
QString TextControl::textOfRanges() const {
    std::vector<std::pair<qint64, qint64>> ranges;
    for (qint64 range = 0; range < send(SCI_GETSELECTIONS); ++range)
        ranges.emplace_back(send(SCI_GETSELECTIONNSTART, range), send(SCI_GETSELECTIONNEND, range));
    std::ranges::sort(ranges);
    QByteArrayList texts;
    for (const auto& [from, to] : ranges) {
        if (from < to)
            texts << bytes(from, to);
    }
    return QString::fromUtf8(texts.join(withOwnLineEnds(u"\n"_qs)));
}

void TextControl::Copy() {
    const EditScope scope(*this);
    if (send(SCI_GETSELECTIONEMPTY) != 0)
        return;
    noteCommand(SCI_COPY, {}, 1);
    if (send(SCI_SELECTIONISRECTANGLE) != 0) {
        m_copying = true;
        send(SCI_COPY);
        m_copying = false;
        return;
    }
    auto mime = std::make_unique<QMimeData>();
    mime->setText(textOfRanges());
    QGuiApplication::clipboard()->setMimeData(mime.release());
}

void TextControl::Cut() {
    const EditScope scope(*this, EditScope::Grouped);
    if (Locked() || send(SCI_GETSELECTIONEMPTY) != 0)
        return;
    Copy();
    loosenRectangle();
    send(SCI_CLEAR);
    noteCommand(SCI_CUT, {}, 1);
}

void TextControl::Paste() {
    const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
    if (Locked() || mime == nullptr || !mime->hasText())
        return;
    const EditScope scope(*this, EditScope::Grouped);
    bool rectangular = false;
    const QByteArray utf8 = fromMimeData(mime, rectangular);
    if (rectangular)
        loosenAtTop();
    loosenRectangle();
    if (rectangular || !isStream())
        send(SCI_PASTE);
    else
        replaceSelection(utf8);
    m_scrollDue = true;
    noteCommand(SCI_PASTE, {}, 1);
}
