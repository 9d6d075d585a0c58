// The text view's searches and bookmarks: flags, wrap rule, lists of matches.

#include "document/EditorGlobals.h"
#include "document/rtCM.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/ControlReplace.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/KeptView.h"
#include "editor/control/MacroRecorder.h"
#include "editor/control/TextControl.h"
#include "editor/control/Unrecorded.h"
#include "editor/windows/SearchReport.h"
#include "platform/Yield.h"
#include "platform/YieldPace.h"
#include "settings/Options.h"
#include "text/search/MatchList.h"
#include "widgets/InputStop.h"

#include <QKeyEvent>
#include <QPointer>

#include <exception>

namespace {

/// Pixels of the control in which a click means the bookmark, and how far to the right of them the text is asked for.
constexpr int MarginFrom = 6;
constexpr int MarginTo = 25;
constexpr int TextBeside = 25;

/// In a recording a search is one step, however often the control is asked for it: where it ends is where the control
/// gets from its start by itself. One that gives the selection back is none.
class RecordedSearch {
 public:
    RecordedSearch(TextControl& control, int command)
        : m_control(&control),
          m_command(command),
          m_steps(stepCount()),
          m_anchor(control.selected().AnchorPosition()),
          m_caret(control.selected().CaretPosition()) {}
    ~RecordedSearch() {
        MacroRecorder* recorder = m_control ? m_control->macros().recording() : nullptr;
        if (recorder == nullptr)
            return;
        recorder->cutTo(m_steps);
        if (m_anchor != m_control->selected().AnchorPosition() || m_caret != m_control->selected().CaretPosition())
            m_control->macros().noteSearch(m_command);
    }
    RecordedSearch(const RecordedSearch&) = delete;
    RecordedSearch& operator=(const RecordedSearch&) = delete;

 private:
    qsizetype stepCount() const {
        const MacroRecorder* recorder = m_control->macros().recording();
        return recorder == nullptr ? 0 : recorder->steps().size();
    }

    QPointer<TextControl> m_control;
    int m_command;
    qsizetype m_steps;
    qint64 m_anchor;
    qint64 m_caret;
};

/// Keeps a control from being painted, so that a search that goes on from the other end shows nothing on its way.
class PaintStop {
 public:
    explicit PaintStop(TextControl& control) : m_control(&control) { control.setUpdatesEnabled(false); }
    ~PaintStop() {
        if (!m_control)
            return;
        m_control->setUpdatesEnabled(true);
        m_control->Redraw();
    }
    PaintStop(const PaintStop&) = delete;
    PaintStop& operator=(const PaintStop&) = delete;

 private:
    QPointer<TextControl> m_control;
};

}  // namespace

void rtCM::connectSearch() {
    connect(m_control, &TextControl::FindWrapped, this, [this] { m_findFailed = true; });
    connect(m_control, &TextControl::CommandFailed, this, [this] {
        m_findFailed = true;
        if (IgnoreCmdFailure)
            Redraw();
    });
    connect(m_control, &TextControl::AfterFind, this, &rtCM::AfterFind);
    m_control->search().setSearchWatch([this](bool takesLong) { return searchGoesOn(takesLong); });
    m_control->installEventFilter(this);
    connect(m_control, &TextControl::MouseDown, this, [this](Qt::MouseButton button, int x, int y) {
        Q_EMIT MouseDown(button, x, y);
        clickLeftMargin(button, x, y);
    });
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
    m_control->search().setSearchText(pFindText);
}

void rtCM::takeProgramFlags() {
    setSearchCaseSensitive(m_options.CaseSensitiveOn);
    setSearchRegExp(m_options.RegExpOn);
    setSearchWholeWord(m_options.WholeWord);
}

// The control's own windows

void rtCM::Find() {
    takeProgramFlags();
    m_control->ExecuteCmd(Command::Find);
}

void rtCM::ReplaceText() {
    takeProgramFlags();
    m_control->ExecuteCmd(Command::Replace);
}

void rtCM::IncrementalSearch() {
    takeProgramFlags();
    m_control->ExecuteCmd(Command::IncrementalSearch);
}

void rtCM::ReverseIncrementalSearch() {
    takeProgramFlags();
    m_control->ExecuteCmd(Command::ReverseIncrementalSearch);
}

/// Keys that no menu has taken and that nobody has given to a command. F3 opens the replace dialog with any modifier,
/// so that Alt+F3 opens both.
bool rtCM::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_control || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (IgnoreCmdFailure && key.key() == Qt::Key_Escape) {
        StopSearch();
        return true;
    }
    if (m_globals.control.isBound(key))
        return false;
    const bool ctrl = key.modifiers() == Qt::ControlModifier;
    const bool f3 = key.key() == Qt::Key_F3;
    const bool finds = (ctrl && key.key() == Qt::Key_F) || (f3 && key.modifiers() == Qt::AltModifier);
    const bool replaces = (ctrl && key.key() == Qt::Key_H) || f3;
    if (finds)
        Find();
    if (replaces)
        ReplaceText();
    return finds || replaces || QWidget::eventFilter(watched, event);
}

/// Called while a search takes long. In the loops over all matches the program goes on as it does between two matches;
/// while one match is looked for, nobody is prepared for what a person could do meanwhile: only Esc is heard, and
/// before it takes long what is typed waits, as a person types on while the first letters are looked for.
bool rtCM::searchGoesOn(bool takesLong) {
    const QPointer<rtCM> alive(this);
    if (IgnoreCmdFailure) {
        yieldOnce();
        return alive && !m_searchStopped;
    }
    const InputStop input;
    takesLong ? yieldOnce() : yieldWithoutInput();
    if (!alive)
        return false;
    m_searchStopped = input.escaped();
    return !m_searchStopped;
}

// One match

/// Whether the command found its match without going around an end of the text.
bool rtCM::foundBy(int command) {
    const QPointer<rtCM> alive(this);
    m_findFailed = false;
    if (!IgnoreCmdFailure)
        m_searchStopped = false;
    m_control->ExecuteCmd(command);
    if (!alive)
        return false;
    m_control->notice(SearchReport::errorSentence(*m_control));
    return !m_findFailed;
}

bool rtCM::FindNext(const QString& pFindText) {
    return findAround(pFindText, Command::FindNext, Command::GoToStartOfText);
}

bool rtCM::FindPrev(const QString& pFindText) {
    return findAround(pFindText, Command::FindPrevious, Command::GoToEndOfText);
}

bool rtCM::findAround(const QString& text, int find, int goToEnd) {
    takeProgramFlags();
    if (!text.isEmpty())
        SetFindText(text);
    const PaintStop stop(*m_control);
    const RecordedSearch recorded(*m_control, find);
    return foundAround(find, goToEnd);
}

bool rtCM::FindText(const QString& pText, bool RegExpOn, bool CaseSensitiveOn, bool WholeWord) {
    setSearchRegExp(RegExpOn);
    setSearchCaseSensitive(CaseSensitiveOn);
    setSearchWholeWord(WholeWord);
    SetFindText(pText);
    return foundAround(Command::FindNext, Command::GoToStartOfText);
}

/// From the caret on and, when the search may go on, from the other end; the view stays where it is without a match.
bool rtCM::foundAround(int find, int goToEnd) {
    const QPointer<rtCM> alive(this);
    const KeptView before(*m_control);
    if (foundBy(find))
        return true;
    if (!alive)
        return false;
    if (!m_options.ContinueSearch || m_searchStopped) {
        giveBack(before);
        return false;
    }
    const KeptView between(*m_control);
    m_control->ExecuteCmd(goToEnd);
    if (foundBy(find))
        return true;
    if (!alive)
        return false;
    giveBack(between);
    return false;
}

/// The control has gone around the end of the text by itself, or was sent to the other end.
void rtCM::giveBack(const KeptView& before) {
    {
        const Unrecorded part(*m_control);
        m_control->selected().giveBack(before);
    }
    HighLightLine();
    Q_EMIT SelChange();
    yieldOnce();
}

// All matches

void rtCM::StopSearch() {
    m_searchStopped = true;
}

/// Runs a loop over matches: command failures redraw meanwhile, and what goes wrong ends it with what it has gathered.
void rtCM::overAllMatches(const std::function<void(const std::function<bool()>& goesOn)>& loop) {
    const QPointer<rtCM> alive(this);
    IgnoreCmdFailure = true;
    m_findFailed = false;
    m_searchStopped = false;
    YieldPace pace;
    try {
        loop([&] {
            if (pace.due())
                yieldOnce();
            return alive && !m_searchStopped;
        });
    } catch (const std::exception&) {
    }
    if (!alive)
        return;
    IgnoreCmdFailure = false;
    m_control->notice(SearchReport::errorSentence(*m_control));
}

void rtCM::FindAllMatch(const QString& pFindText, QString& pListResults, bool pRegExp, bool pCaseSensitive,
                        bool pWholeWord) {
    pListResults = u""_qs;
    if (pFindText.isEmpty() || m_control->heldText().length() == 0)
        return;
    setSearchRegExp(pRegExp);
    setSearchCaseSensitive(pCaseSensitive);
    setSearchWholeWord(pWholeWord);
    SetFindText(pFindText);
    MatchList list;
    overAllMatches([&](const std::function<bool()>& goesOn) {
        m_control->search().findAll([&](const MatchPlace& match) {
            list.add(match.line, match.position, match.length);
            return goesOn();
        });
    });
    pListResults = list.text();
}

void rtCM::ReplaceAllMatch(const QString& pFindText, const QString& pReplace, QString& pListResults, bool pRegExp,
                           bool pCaseSensitive, bool pPreserveCase, bool pWholeWord) {
    pListResults = u""_qs;
    if (pFindText.isEmpty() || m_control->heldText().length() == 0)
        return;
    setSearchRegExp(pRegExp);
    m_control->search().setPreserveCase(pPreserveCase);
    setSearchCaseSensitive(pCaseSensitive);
    setSearchWholeWord(pWholeWord);
    SetFindText(pFindText);
    m_control->search().setReplacementText(pReplace);
    MatchList list;
    overAllMatches([&](const std::function<bool()>& goesOn) {
        m_control->replacing().replaceAll(
            {goesOn, [&](const MatchPlace& match) { list.add(match.line, match.position, pReplace.size()); }});
    });
    pListResults = list.text();
}

// Bookmarks

void rtCM::ToggleBookmark() {
    m_control->ExecuteCmd(Command::ToggleBookmark);
}

void rtCM::PrevBookmark() {
    m_control->ExecuteCmd(Command::PreviousBookmark);
}

void rtCM::NextBookmark() {
    m_control->ExecuteCmd(Command::NextBookmark);
}

void rtCM::ClearAllBookmark() {
    m_control->ExecuteCmd(Command::ClearAllBookmarks);
}

void rtCM::BookmarkFirst() {
    m_control->ExecuteCmd(Command::FirstBookmark);
}

void rtCM::BookmarkLast() {
    m_control->ExecuteCmd(Command::LastBookmark);
}

void rtCM::EnableBookmarkAt(qint64 pLine, bool pBookmarked) {
    m_control->bookmarks().setBookmarkAt(pLine - 1, pBookmarked);
}

void rtCM::clickLeftMargin(Qt::MouseButton button, int x, int y) {
    if (!ClickLeftMarginBookmark || button != Qt::LeftButton || x < MarginFrom || x >= MarginTo)
        return;
    const qint64 line = m_control->selected().lineAtPoint(x + TextBeside, y);
    const bool bookmarked = !m_control->bookmarks().BookmarkAt(line);
    m_control->bookmarks().setBookmarkAt(line, bookmarked);
    Q_EMIT ClickLeftMargin(line, bookmarked);
    Redraw();
}
