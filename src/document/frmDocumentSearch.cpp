// A document's searches and bookmarks: the visible view's, and the boxes that the user is shown.

#include "document/CloseStop.h"
#include "document/DocumentView.h"
#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "editor/control/SearchHistory.h"
#include "widgets/Prompts.h"

#include <QPointer>

// In the visible view

void frmDocument::Find() {
    visibleView().Find();
}

void frmDocument::ReplaceText() {
    visibleView().ReplaceText();
}

void frmDocument::IncrementalSearch() {
    visibleView().IncrementalSearch();
}

void frmDocument::ReverseIncrementalSearch() {
    visibleView().ReverseIncrementalSearch();
}

void frmDocument::answerSearch(bool found, const QPointer<frmDocument>& alive) {
    if (alive && !found && !alive->visibleView().wasSearchStopped())
        alive->m_prompts.message(alive, u"The search string not found."_qs);
}

void frmDocument::FindNext(const QString& pFindText) {
    const QPointer<frmDocument> alive(this);
    answerSearch(visibleView().FindNext(pFindText), alive);
}

void frmDocument::FindPrev(const QString& pFindText) {
    const QPointer<frmDocument> alive(this);
    answerSearch(visibleView().FindPrev(pFindText), alive);
}

bool frmDocument::FindText(const QString& pText, bool RegExpOn, bool CaseSensitiveOn, bool WholeWord) {
    const QPointer<frmDocument> alive(this);
    const bool found = visibleView().FindText(pText, RegExpOn, CaseSensitiveOn, WholeWord);
    answerSearch(found, alive);
    return found;
}

/// The frame's find bar follows the control's dialogs: it gets the text searched for last, and the flags.
void frmDocument::reportDialogSearch() {
    const QString newest = SearchHistory::ofFinds().text().section(u'\n', 0, 0).trimmed();
    Q_EMIT AfterFind(newest, m_text->SearchCaseSensitive(), m_text->SearchRegExp(), m_text->SearchWholeWord());
}

// All matches, in the text view

void frmDocument::FindAllMatch(const QString& pFindText, QString& pListResults, bool pRegExp, bool pCaseSensitive,
                               bool pWholeWord) {
    const CloseStop stop(*this, m_loads);
    m_text->FindAllMatch(pFindText, pListResults, pRegExp, pCaseSensitive, pWholeWord);
}

void frmDocument::ReplaceAllMatch(const QString& pFindText, const QString& pReplace, QString& pListResults,
                                  bool pRegExp, bool pCaseSensitive, bool pPreserveCase, bool pWholeWord) {
    const CloseStop stop(*this, m_loads);
    m_text->ReplaceAllMatch(pFindText, pReplace, pListResults, pRegExp, pCaseSensitive, pPreserveCase, pWholeWord);
}

void frmDocument::StopSearch() {
    m_text->StopSearch();
}

// Bookmarks, in the visible view

void frmDocument::ToggleBookmark() {
    visibleView().ToggleBookmark();
}

void frmDocument::NextBookmark() {
    visibleView().NextBookmark();
}

void frmDocument::PrevBookmark() {
    visibleView().PrevBookmark();
}

void frmDocument::FirstBookmark() {
    visibleView().BookmarkFirst();
}

void frmDocument::LastBookmark() {
    visibleView().BookmarkLast();
}

void frmDocument::ClearAllBookmark() {
    const QPointer<frmDocument> alive(this);
    if (m_prompts.askYesNo(this, u"Clear all bookmarks?"_qs) && alive)
        visibleView().ClearAllBookmark();
}

// Places, in the text view

void frmDocument::EnableBookmarkAt(qint64 pLine, bool pBookmarked) {
    m_text->EnableBookmarkAt(pLine, pBookmarked);
}

void frmDocument::GotoTextLine(qint64 pLine) {
    m_text->GotoTextLine(pLine);
}

qint64 frmDocument::SelStart() const {
    return m_text->SelStart();
}

void frmDocument::setSelStart(qint64 position) {
    m_text->setSelStart(position);
}

qint64 frmDocument::SelLength() const {
    return m_text->SelLength();
}

void frmDocument::setSelLength(qint64 length) {
    m_text->setSelLength(length);
}
