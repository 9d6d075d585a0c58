// The text view's searches under their public names.

#include "document/TextViewSearch.h"
#include "document/rtCM.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/TextControl.h"
#include "platform/Yield.h"
#include "text/search/SearchPattern.h"

#include <QPointer>

using Direction = TextViewSearch::Direction;

void rtCM::connectSearch() {
    connect(m_control, &TextControl::AfterFind, this, &rtCM::AfterFind);
    connect(m_control, &TextControl::MouseDown, this, &rtCM::MouseDown);
    connect(m_control, &TextControl::bookmarkMarginClicked, this, &rtCM::clickLeftMargin);
    m_control->installEventFilter(this);
}

// Flags of the control

bool rtCM::SearchCaseSensitive() const {
    return m_control->SearchCaseSensitive();
}

void rtCM::setSearchCaseSensitive(bool on) {
    m_control->setSearchCaseSensitive(on);
}

bool rtCM::SearchRegExp() const {
    return m_control->SearchRegExp();
}

void rtCM::setSearchRegExp(bool on) {
    m_control->setSearchRegExp(on);
}

bool rtCM::SearchWholeWord() const {
    return m_control->SearchWholeWord();
}

void rtCM::setSearchWholeWord(bool on) {
    m_control->setSearchWholeWord(on);
}

void rtCM::SetFindText(const QString& pFindText) {
    m_search->setText(pFindText);
}

// The control's own windows

void rtCM::openSearchWindow(int command) {
    m_search->useProgramFlags();
    m_control->ExecuteCmd(command);
}

void rtCM::Find() {
    openSearchWindow(Command::Find);
}

void rtCM::ReplaceText() {
    openSearchWindow(Command::Replace);
}

void rtCM::IncrementalSearch() {
    openSearchWindow(Command::IncrementalSearch);
}

void rtCM::ReverseIncrementalSearch() {
    openSearchWindow(Command::ReverseIncrementalSearch);
}

// One match

bool rtCM::FindNext(const QString& pFindText) {
    m_search->useProgramFlags();
    if (!pFindText.isEmpty())
        SetFindText(pFindText);
    return reportFind([this] { return m_search->findUnpainted(Direction::Forwards); });
}

bool rtCM::FindPrev(const QString& pFindText) {
    m_search->useProgramFlags();
    if (!pFindText.isEmpty())
        SetFindText(pFindText);
    return reportFind([this] { return m_search->findUnpainted(Direction::Backwards); });
}

bool rtCM::FindText(const QString& pText, bool RegExpOn, bool CaseSensitiveOn, bool WholeWord) {
    m_search->useFlags({CaseSensitiveOn, RegExpOn, WholeWord});
    SetFindText(pText);
    return reportFind([this] { return m_search->find(Direction::Forwards); });
}

/// What follows a search that finds nothing.
bool rtCM::reportFind(const std::function<bool()>& find) {
    const QPointer<rtCM> alive(this);
    const bool found = find();
    if (found || !alive)
        return found;
    HighLightLine();
    Q_EMIT SelChange();
    yieldOnce();
    return false;
}

bool rtCM::wasSearchStopped() const {
    return m_search->wasStopped();
}

// All matches

void rtCM::StopSearch() {
    m_search->stop();
}

bool rtCM::prepareList(const QString& text, const SearchFlags& flags) {
    if (text.isEmpty() || m_control->heldText().length() == 0)
        return false;
    m_search->useFlags(flags);
    SetFindText(text);
    return true;
}

void rtCM::FindAllMatch(const QString& pFindText, QString& pListResults, bool pRegExp, bool pCaseSensitive,
                        bool pWholeWord) {
    pListResults = u""_qs;
    if (prepareList(pFindText, {pCaseSensitive, pRegExp, pWholeWord}))
        pListResults = m_search->findAll();
}

void rtCM::ReplaceAllMatch(const QString& pFindText, const QString& pReplace, QString& pListResults, bool pRegExp,
                           bool pCaseSensitive, bool pPreserveCase, bool pWholeWord) {
    pListResults = u""_qs;
    if (prepareList(pFindText, {pCaseSensitive, pRegExp, pWholeWord}))
        pListResults = m_search->replaceAll(pReplace, pPreserveCase);
}
