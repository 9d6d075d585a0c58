#include "editor/control/ControlClipboard.h"

#include "editor/control/ControlMacros.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/EditScope.h"
#include "editor/control/EditView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

using Sci = QsciScintillaBase;

namespace {

/// A selection of more bytes than this is not offered to the X11 primary selection: each step of the caret would copy
/// it.
constexpr qsizetype PrimaryLimit = 1024 * 1024;

}  // namespace

QMimeData* ControlClipboard::selectedText(const QByteArray& text, bool dragged) const {
    auto mime = std::make_unique<QMimeData>();
    if (m_copying || dragged || text.size() <= PrimaryLimit)
        mime->setText(textOfRanges());
    return mime.release();
}

/// The text of all ranges in the order of the text, each on a line of its own.
QString ControlClipboard::textOfRanges() const {
    std::vector<std::pair<qint64, qint64>> ranges;
    for (qint64 range = 0; range < m_view.send(Sci::SCI_GETSELECTIONS); ++range) {
        ranges.emplace_back(m_view.send(Sci::SCI_GETSELECTIONNSTART, range),
                            m_view.send(Sci::SCI_GETSELECTIONNEND, range));
    }
    std::ranges::sort(ranges);
    QByteArrayList texts;
    for (const auto& [from, to] : ranges) {
        if (from < to)
            texts << m_view.bytes(from, to);
    }
    return QString::fromUtf8(texts.join(m_view.withOwnLineEnds(u"\n"_qs)));
}

void ControlClipboard::Copy() {
    const EditScope scope(m_view);
    if (m_view.send(Sci::SCI_GETSELECTIONEMPTY) != 0)
        return;
    m_macros.noteCommand(Sci::SCI_COPY, {}, 1);
    if (m_view.send(Sci::SCI_SELECTIONISRECTANGLE) != 0) {
        m_copying = true;
        m_view.send(Sci::SCI_COPY);
        m_copying = false;
        return;
    }
    put(textOfRanges());
}

void ControlClipboard::put(const QString& text) {
    auto mime = std::make_unique<QMimeData>();
    mime->setText(text);
    QGuiApplication::clipboard()->setMimeData(mime.release());
}

void ControlClipboard::Cut() {
    const EditScope scope(m_view, EditScope::Grouped);
    if (m_view.Locked() || m_view.send(Sci::SCI_GETSELECTIONEMPTY) != 0)
        return;
    Copy();
    m_selection.loosenRectangle();
    m_view.send(Sci::SCI_CLEAR);
    m_macros.noteCommand(Sci::SCI_CUT, {}, 1);
}

void ControlClipboard::Paste() {
    const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
    if (m_view.Locked() || mime == nullptr || !mime->hasText())
        return;
    const EditScope scope(m_view, EditScope::Grouped);
    const bool rectangular = m_view.isRectangular(*mime);
    if (rectangular)
        m_selection.loosenAtTop();
    m_selection.loosenRectangle();
    if (rectangular || !m_selection.isStream())
        m_view.send(Sci::SCI_PASTE);
    else
        m_view.replaceSelection(m_view.withOwnLineEnds(mime->text()));
    m_view.state().scrollDue = true;
    m_macros.noteCommand(Sci::SCI_PASTE, {}, 1);
}
