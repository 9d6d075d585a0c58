// What is done at a desk before the program is killed.

#include "Contents.h"
#include "SceneFiles.h"
#include "program/Desk.h"
#include "program/FileWatch.h"
#include "program/FolderWatch.h"
#include "recovery/journals/JournalFile.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <optional>

namespace {

using namespace std::chrono_literals;

constexpr unsigned MillisecondUs = 1'000;
/// How long after a key that demands a save the program is killed, when nothing else says so.
constexpr unsigned LongestSaveUs = 200 * MillisecondUs;
/// How long after a save has begun at most, and for each kilobyte of the file.
constexpr unsigned LongestHitUs = 300;
constexpr unsigned HitUsPerKilobyte = 2;
constexpr unsigned LongestReplaceUs = 40 * MillisecondUs;
/// A save writes into its file soon; waiting longer only finds out that it does not.
constexpr int WriteBeginMs = 3'000;
/// Less than a fast machine writes, so that the write has hardly ended before the kill.
constexpr qsizetype BytesWrittenInAUs = 16'000;
/// A journal is written a second after a key. What is written earlier was due to something else.
constexpr auto JournalDelay = 950ms;
constexpr unsigned MostGapsMs[] = {6, 30, 90};
/// A sleep that is so much too long is late.
constexpr auto Late = 200ms;
/// A key that is so young is typing.
constexpr auto Young = 60ms;
constexpr int ManyKeys = 150;
constexpr int ReplaceEntry = 7;
/// How long after its beginning a start is hit at the latest, and how long after its first work on journals or records.
constexpr unsigned LongestStartUs = 600 * MillisecondUs;
constexpr unsigned LongestRecoveryUs = 40 * MillisecondUs;
constexpr unsigned MostStarts = 3;
/// Working copies of killed programs are gone so soon after a start.
constexpr int SweepMs = 10'000;

/// How long after a save of the text has begun it is hit at the latest.
unsigned hitUs(const Manuscript& text) {
    return LongestHitUs + unsigned(text.length() / 1'000) * HitUsPerKilobyte;
}

}  // namespace

// Hands

Manuscript& Desk::show(std::size_t opened) {
    Manuscript& text = *m_opened[opened];
    const bool isShown =
        m_operator.activate([&](const QByteArray& name) { return name == text.path(); }, int(m_opened.size()) + 2);
    if (!isShown)
        throw Broken{text.path().mid(files().size() + 1) + " is not open"};
    m_operator.press(text.keyOfPlace());
    m_operator.settle();
    note("show " + text.path().mid(files().size() + 1));
    return text;
}

void Desk::type(Manuscript& text, int keys, unsigned mostGapMs) {
    for (int i = 0; i < keys; ++i) {
        m_operator.press(text.nextKey(m_random));
        text.pressed();
        pause(mostGapMs * MillisecondUs);
    }
    note(QByteArray::number(keys) + " keys");
}

void Desk::finishByte(Manuscript& text) {
    while (!text.isWhole()) {
        m_operator.press(text.nextKey(m_random));
        text.pressed();
    }
}

void Desk::pause(unsigned mostUs) {
    sleep(std::chrono::microseconds(random(mostUs + 1)));
}

/// A machine that stands still, or is asked for far too much, keeps the program from its work as it does us.
void Desk::sleep(std::chrono::microseconds time) {
    const Manuscript::Clock::time_point begin = Manuscript::Clock::now();
    ::usleep(useconds_t(time.count()));
    const auto late = Manuscript::Clock::now() - begin - time;
    if (late < Late)
        return;
    m_late += late;
    note("late");
    m_report.count("times when the machine was late");
}

/// What may be lost of the text after the last kill.
Manuscript::Kill Desk::lastKill() const {
    const Manuscript::Clock::duration afterPause = m_options.afterPause;
    return {m_killed, m_options.whileTyping + m_late, m_journalPause.value_or(afterPause) + m_late};
}

/// Until what was typed is in the journal: a write of it is seen that comes when it should, or enough time has passed.
void Desk::pauseForJournal() {
    const Manuscript::Clock::time_point typed = Manuscript::Clock::now();
    const auto passed = [typed] { return Manuscript::Clock::now() - typed; };
    m_operator.settle();
    sleep(std::chrono::floor<std::chrono::microseconds>(
        std::max<Manuscript::Clock::duration>(JournalDelay - passed(), 0ms)));
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(m_options.afterPause + 100ms - passed());
    if (::access(journals().constData(), F_OK) != 0)
        return sleep(rest);
    const FolderWatch watch(journals());
    if (!watch.waitFor(JournalFile::Suffix, int(rest.count())) || m_journalPause)
        return;
    m_journalPause = passed();
    note("a journal is written");
}

/// Until the moment of the kill; false: that is when all is done, for which the caller waits. `mostUs`: how long after
/// the first change in the folder at most. Short pauses are more frequent than long ones, since nobody knows how fast
/// the disk is.
bool Desk::awaitMoment(Moment moment, const FolderWatch& watch, const FileWatch& file, unsigned mostUs) {
    if (moment == Moment::AtRandom) {
        pause(LongestSaveUs);
    } else if (moment == Moment::InTheMiddle) {
        watch.wait(m_options.patience);
        pause(random(1 + mostUs));
    } else if (moment == Moment::InTheFile) {
        const unsigned mostDelayUs = unsigned(file.length() / BytesWrittenInAUs);
        if (!file.wait(WriteBeginMs, random(2) == 0 ? random(1 + mostDelayUs) : 0))
            note("nothing is written");
    }
    return moment != Moment::WhenDone;
}

Desk::Moment Desk::chooseMoment() {
    static constexpr Moment Moments[] = {Moment::AtRandom, Moment::InTheMiddle, Moment::InTheFile, Moment::WhenDone};
    static constexpr const char* Names[] = {"at random", "in the middle", "in the file", "when done"};
    const Moment moment = Moments[random(unsigned(std::size(Moments)))];
    note(QByteArray("a kill ") + Names[static_cast<std::size_t>(moment)]);
    return moment;
}

void Desk::kill(const char* what) {
    m_killed = Manuscript::Clock::now();
    note("kill");
    if (!m_operator.kill()) {
        if (!m_isClosing)
            throw Broken{"the program ended by itself"};
        return endClosing();
    }
    m_report.count("kills of the program");
    m_report.count(what);
    countHits();
}

/// Whether a kill has hit a replacement is known for certain after the next start.
void Desk::countHits() {
    const bool isSaving = isSaveUnderWay();
    m_hasHitReplacement = m_wasReplacing && isSaving;
    if (!m_wasReplacing && isSaving)
        m_report.count("kills that hit a save");
    if (isTyping())
        m_report.count("kills that hit typing");
    else if (!isSaving && !m_wasReplacing)
        m_report.count("kills that hit neither typing nor a save");
}

bool Desk::isTyping() const {
    const auto isYoung = [this](const Manuscript& text) {
        return text.wasTyped() && m_killed - text.lastKey() < Young;
    };
    return std::ranges::any_of(m_opened, [&](const Manuscript* each) { return isYoung(*each); }) ||
           (m_untitled != nullptr && isYoung(*m_untitled));
}

// Typing

void Desk::typeAndStop() {
    Manuscript& text = show(random(unsigned(m_opened.size())));
    const unsigned gap = MostGapsMs[random(unsigned(std::size(MostGapsMs)))];
    type(text, 1 + int(random(ManyKeys)), gap);
    if (random(4) == 0) {
        pauseForJournal();
        type(text, 1 + int(random(ManyKeys)), gap);
    }
    kill("kills after typing");
}

void Desk::typeAndPause() {
    Manuscript& text = show(0);
    type(text, 1 + int(random(ManyKeys / 4)), MostGapsMs[1]);
    pauseForJournal();
    pause(1'000 * MillisecondUs);
    kill("kills after a pause");
}

void Desk::typeUntitled() {
    m_operator.press("ctrl+n");
    if (!m_operator.waitUntil([this] { return !m_operator.activeDocument().contains('/'); }))
        throw Broken{"no new document"};
    m_operator.settle();
    m_untitled = std::make_unique<Manuscript>();
    type(*m_untitled, 1 + int(random(ManyKeys / 4)), MostGapsMs[1]);
    if (random(2) == 0)
        pauseForJournal();
    kill("kills with a text without a file");
}

// Saving

void Desk::save() {
    saveText(show(random(2) == 0 ? 0 : random(unsigned(m_opened.size()))));
    kill("kills after a demand to save");
}

/// The other one is changed and stays so.
void Desk::saveOfTwo() {
    if (m_opened.size() > 1)
        type(show(1), 1 + int(random(ManyKeys / 8)), MostGapsMs[0]);
    saveText(show(0));
    kill("kills after a demand to save one of two");
}

/// A file is left half-written, as far as that can be brought about.
void Desk::tearSave() {
    const auto torn = std::ranges::find_if(m_opened, [](const Manuscript* each) { return each->isTornEasily(); });
    saveTextUntil(show(torn == m_opened.end() ? 0 : std::size_t(torn - m_opened.begin())), Moment::InTheFile);
    kill("kills after a demand to save");
}

/// Returns at the moment of the kill.
void Desk::saveTextUntil(Manuscript& text, Moment moment) {
    type(text, 1 + int(random(ManyKeys / 8)), MostGapsMs[0]);
    finishByte(text);
    if (moment != Moment::InTheMiddle)
        m_operator.settle();
    const FolderWatch watch(saves());
    const FileWatch file(text.path());
    m_operator.press("ctrl+s");
    text.saveBegan();
    if (awaitMoment(moment, watch, file, hitUs(text)))
        return;
    if (!m_operator.waitUntil([&] { return text.isInFile() && !isSaveUnderWay(); }))
        throw Broken{"the save does not come to an end"};
    text.saveEnded();
    if (random(2) == 0)
        type(text, 1 + int(random(ManyKeys / 8)), MostGapsMs[0]);
}

void Desk::saveAs() {
    Manuscript& text = show(0);
    type(text, 1 + int(random(ManyKeys / 8)), MostGapsMs[0]);
    finishByte(text);
    m_operator.settle();
    m_copy = files() + "/" + copyName(random(CopyNames));
    m_copyBefore = bytesOf(m_copy);
    m_copyAfter = text.bytesNow();
    m_operator.press("alt+f");
    m_operator.press("a");
    m_operator.waitForWindow("Save As");
    m_operator.press("ctrl+a");
    m_operator.type(m_copy);
    const FolderWatch watch(files());
    const FileWatch file(m_copy);
    const Moment moment = chooseMoment();
    m_operator.press("Return");
    m_copied = &text;
    m_wasCopyDone = false;
    if (m_copyBefore) {
        m_operator.waitForWindow(Operator::boxTitle());
        m_operator.press("alt+y");
    }
    m_wasCopyDone = !awaitMoment(moment, watch, file, hitUs(text));
    if (m_wasCopyDone)
        m_operator.waitForWindow(Operator::frameTitle(m_copy));
    kill("kills after Save As");
}

void Desk::replaceInFiles() {
    replaceUntil(chooseMoment());
}

void Desk::tearReplacement() {
    replaceUntil(Moment::InTheFile);
}

/// Kills at this moment.
void Desk::replaceUntil(Moment moment) {
    // The menu of a hex document has other entries.
    const auto isText = [](const QByteArray& name) { return !name.endsWith(".bin"); };
    if (!m_operator.activate(isText, int(m_opened.size()) + 2)) {
        m_operator.press("ctrl+n");
        m_operator.waitUntil([&] { return isText(m_operator.activeDocument()); });
        m_operator.settle();
    }
    for (const char* key : {"alt+f", "Right", "Right"})
        m_operator.press(key);
    for (int i = 0; i < ReplaceEntry; ++i)
        m_operator.press("Down");
    m_operator.press("Return");
    m_operator.waitForWindow("Replace in Files");
    m_operator.press("ctrl+a");
    m_operator.type(m_replaced->oldWord());
    for (const auto& [key, text] : {std::pair<const char*, QByteArray>{"alt+r", m_replaced->newWord()},
                                    {"alt+d", m_replaced->folder()},
                                    {"alt+e", "*"}}) {
        m_operator.press(key);
        m_operator.press("ctrl+a");
        m_operator.type(text);
    }
    m_operator.settle();
    const FolderWatch watch(saves());
    const FileWatch largest(m_replaced->largest());
    m_wasReplacing = true;
    m_operator.press("Return");
    m_wasReplaceDone = !awaitMoment(moment, watch, largest, LongestReplaceUs);
    if (m_wasReplaceDone) {
        watch.wait(m_options.patience);
        m_operator.settleWell();
        m_operator.waitUntil([this] { return !isSaveUnderWay(); });
        m_operator.settleWell();
    }
    kill("kills after a demand to replace");
}

// Starting

/// A text that is not saved, or a save that is not complete, must outlive several starts that do not come to an end.
void Desk::startAgain() {
    Manuscript& text = show(random(unsigned(m_opened.size())));
    if (random(3) == 0) {
        saveText(text);
    } else {
        type(text, 1 + int(random(ManyKeys / 4)), MostGapsMs[0]);
        if (random(4) != 0)
            pauseForJournal();
    }
    kill("kills before a start");
    for (unsigned starts = 1 + random(MostStarts); starts > 0; --starts)
        killStarting();
}

void Desk::killStarting() {
    const FolderWatch records(saves());
    std::optional<FolderWatch> texts;
    if (::access(journals().constData(), F_OK) == 0)
        texts.emplace(journals());
    const auto isAtWork = [&] { return records.wait(0) || (texts && texts->wait(0)); };
    m_operator.beginStart(m_folder + "/home", m_named);
    note("start");
    if (random(2) == 0) {
        pause(LongestStartUs);
    } else {
        m_operator.waitUntil(isAtWork, int(LongestStartUs / MillisecondUs));
        pause(random(1 + LongestRecoveryUs));
    }
    note("kill");
    if (!m_operator.kill())
        throw Broken{"the program ended by itself"};
    m_report.count("kills of the program");
    m_report.count("kills while starting");
    if (isAtWork())
        m_report.count("kills that hit a recovery");
}

// Closing

/// Types, and leaves the question whether to save.
Manuscript& Desk::close() {
    Manuscript& text = show(0);
    type(text, 2 + int(random(ManyKeys / 8)), MostGapsMs[0]);
    finishByte(text);
    m_operator.press("alt+F4");
    m_operator.waitForWindow(Operator::boxTitle());
    return text;
}

void Desk::closeWithYes() {
    Manuscript& text = close();
    const FolderWatch watch(saves());
    const FileWatch file(text.path());
    const Moment moment = chooseMoment();
    m_operator.press("alt+y");
    text.saveBegan();
    if (awaitMoment(moment, watch, file, hitUs(text)))
        return killClosing();
    endClosing();
    text.saveEnded();
}

void Desk::closeWithNo() {
    Manuscript& text = close();
    const Moment moment = chooseMoment();
    m_operator.press("alt+n");
    if (moment == Moment::WhenDone)
        endClosing();
    else
        pause(moment == Moment::InTheMiddle ? LongestSaveUs / 4 : LongestSaveUs);
    text.givenUp(moment == Moment::WhenDone);
    if (moment != Moment::WhenDone)
        killClosing();
}

/// The program may have ended already, or end at this moment.
void Desk::killClosing() {
    m_isClosing = true;
    kill("kills while closing");
    m_isClosing = false;
}

void Desk::endClosing() {
    m_operator.waitForEnd();
    m_killed = Manuscript::Clock::now();
    m_report.count("ends by a question");
}

/// Some time after its start the program clears away the working copies of killed ones.
void Desk::endInOrder() {
    const auto isCleared = [this] {
        const std::vector<QByteArray> names = namesIn(workingCopies());
        return std::ranges::none_of(
            m_abandoned, [&](const QByteArray& name) { return std::ranges::find(names, name) != names.end(); });
    };
    m_operator.waitUntil(isCleared, SweepMs);
    m_operator.press("alt+F4");
    m_operator.waitForEnd();
    m_killed = Manuscript::Clock::now();
    judgeLeftovers();
    m_report.count("ends in order");
}
