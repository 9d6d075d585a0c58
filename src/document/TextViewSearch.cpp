#include "document/TextViewSearch.h"

#include "editor/commands/SearchCommands.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/ControlReplace.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/KeptView.h"
#include "editor/control/MacroRecorder.h"
#include "editor/control/TextControl.h"
#include "editor/control/Unrecorded.h"
#include "editor/windows/SearchSentences.h"
#include "platform/Yield.h"
#include "platform/YieldPace.h"
#include "settings/Options.h"
#include "text/search/MatchList.h"
#include "widgets/InputStop.h"

#include <QPointer>

#include <exception>

namespace {

qsizetype recordedSteps(const TextControl& control) {
    const MacroRecorder* recorder = control.macros().recording();
    return recorder == nullptr ? 0 : recorder->steps().size();
}

/// Keeps a control from being painted, so that only the end of a search is visible.
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

TextViewSearch::TextViewSearch(TextControl& control, const Options& options, bool& ignoresFailures)
    : m_control(control), m_options(options), m_ignoresFailures(ignoresFailures) {
    QObject::connect(&control, &TextControl::CommandFailed, &control, [this] {
        if (m_ignoresFailures)
            m_control.Redraw();
    });
    control.search().setSearchWatch([this](bool takesLong) { return goesOn(takesLong); });
}

void TextViewSearch::useFlags(const SearchFlags& flags) {
    m_control.search().setFlags(flags);
}

void TextViewSearch::useProgramFlags() {
    useFlags({m_options.CaseSensitiveOn, m_options.RegExpOn, m_options.WholeWord});
}

void TextViewSearch::setText(const QString& text) {
    m_control.search().setSearchText(text);
}

/// Called while a search takes long. In the loops over all matches the program continues as it does between two
/// matches; while one match is searched for, callers are not prepared for anything the user could do: only Esc has an
/// effect, and before it takes long, keys wait, since people continue to type while the first letters are searched for.
bool TextViewSearch::goesOn(bool takesLong) {
    const QPointer<TextControl> alive(&m_control);
    if (m_ignoresFailures) {
        yieldOnce();
        return alive && !m_stopped;
    }
    const InputStop input;
    takesLong ? yieldOnce() : yieldWithoutInput();
    if (!alive)
        return false;
    m_stopped = input.escaped();
    return !m_stopped;
}

// One match

bool TextViewSearch::find(Direction direction) {
    using Wrap = ControlSearch::Wrap;
    const QPointer<TextControl> alive(&m_control);
    const KeptView before(m_control);
    const qsizetype stepsBefore = recordedSteps(m_control);
    if (!m_ignoresFailures)
        m_stopped = false;
    const auto towards =
        direction == Direction::Forwards ? SearchCommands::Direction::Forwards : SearchCommands::Direction::Backwards;
    const SearchOutcome outcome =
        SearchCommands::find(m_control, towards, m_options.ContinueSearch ? Wrap::Around : Wrap::Stop);
    if (!alive)
        return false;
    m_control.notice(SearchSentences::errorSentence(m_control.search()));
    if (outcome != SearchOutcome::Failed)
        return true;
    giveBack(before, stepsBefore);
    return false;
}

/// A search that is repeated may have found something before it failed, and a recording may have noted it.
void TextViewSearch::giveBack(const KeptView& before, qsizetype stepsBefore) {
    const Unrecorded part(m_control);
    m_control.selected().giveBack(before);
    if (MacroRecorder* recorder = m_control.macros().recording())
        recorder->cutTo(stepsBefore);
}

bool TextViewSearch::findUnpainted(Direction direction) {
    const PaintStop stop(m_control);
    return find(direction);
}

// All matches

/// Runs a loop over matches. An error ends it with the matches found so far.
void TextViewSearch::overAllMatches(const std::function<void(const std::function<bool()>& goesOn)>& loop) {
    const QPointer<TextControl> alive(&m_control);
    m_ignoresFailures = true;
    m_stopped = false;
    YieldPace pace;
    try {
        loop([&] {
            if (pace.due())
                yieldOnce();
            return alive && !m_stopped;
        });
    } catch (const std::exception&) {
    }
    if (!alive)
        return;
    m_ignoresFailures = false;
    m_control.notice(SearchSentences::errorSentence(m_control.search()));
}

QString TextViewSearch::findAll() {
    MatchList list;
    overAllMatches([&](const std::function<bool()>& goesOn) {
        m_control.search().findAll([&](const MatchPlace& match) {
            list.add(match.line, match.position, match.length);
            return goesOn();
        });
    });
    return list.text();
}

QString TextViewSearch::replaceAll(const QString& replacement, bool preserveCase) {
    m_control.search().setPreserveCase(preserveCase);
    m_control.search().setReplacementText(replacement);
    MatchList list;
    overAllMatches([&](const std::function<bool()>& goesOn) {
        m_control.replacing().replaceAll(
            {goesOn, [&](const MatchPlace& match) { list.add(match.line, match.position, replacement.size()); }});
    });
    return list.text();
}
