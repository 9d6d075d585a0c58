#include "shell/commands/SearchedTexts.h"

#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "editor/control/ControlFile.h"
#include "editor/control/TextControl.h"

SearchedView::SearchedView(rtCM* view) : m_view(view) {}

SearchedView::~SearchedView() = default;

bool SearchedView::isAlive() const {
    return m_view;
}

QString SearchedView::findAll(const SearchRequest& request) {
    QString result;
    if (m_view) {
        const SearchFlags& flags = request.flags;
        m_view->FindAllMatch(request.text, result, flags.regExp, flags.caseSensitive, flags.wholeWord);
    }
    return result;
}

QString SearchedView::replaceAll(const SearchRequest& request) {
    QString result;
    if (m_view) {
        const SearchFlags& flags = request.flags;
        m_view->ReplaceAllMatch(request.text, request.replacement, result, flags.regExp, flags.caseSensitive,
                                request.preserveCase, flags.wholeWord);
    }
    return result;
}

void SearchedView::stop() {
    if (m_view)
        m_view->StopSearch();
}

QString SearchedView::line(qint64 number) const {
    return m_view ? m_view->GetLine(number) : QString();
}

qint64 SearchedView::positionOfLine(qint64 number) const {
    if (!m_view)
        return 0;
    const TextMap& map = m_view->control().map();
    return map.positionOf(map.lineBegin(number));
}

bool SearchedView::openFile(const QString& path) {
    return m_view && m_view->OpenFile(path, true);
}

/// Not by the view's own save, which would show a box.
bool SearchedView::saveFile(const QString& path) {
    return m_view && !m_view->control().file().SaveFile(path, SaveFlags::AsLoaded);
}

SearchedDocument::SearchedDocument(frmDocument* document) : SearchedView(document->GetEditor()), m_document(document) {}

SearchedDocument::~SearchedDocument() = default;

bool SearchedDocument::isAlive() const {
    return m_document && SearchedView::isAlive();
}

QString SearchedDocument::filename() const {
    return m_document ? m_document->filename : QString();
}
