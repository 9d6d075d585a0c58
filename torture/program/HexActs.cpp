// What is done at a desk with a file that is shown as bytes, and how its undo log is judged.

#include "program/Desk.h"
#include "program/FileWatch.h"
#include "program/FolderWatch.h"

#include <algorithm>

namespace {

constexpr unsigned MostGapMs = 20;
/// Keys of a byte: two digits, and an arrow to the next one.
constexpr int KeysOfAByte = 3;
constexpr unsigned MostBytes = 12;
constexpr unsigned MostSteps = 5;
constexpr unsigned LongestSwitchUs = 200'000;
/// How long after the save before it has begun.
constexpr unsigned LongestHitUs = 20'000;
/// From the end of the View menu.
constexpr int ModeEntry = 5;

}  // namespace

/// Null: the file was given up before the kill, and so it did not come back.
Manuscript* Desk::showBytes() {
    const auto bytes = std::ranges::find_if(m_opened, [](const Manuscript* each) { return each->isOfBytes(); });
    return bytes == m_opened.end() ? nullptr : &show(std::size_t(bytes - m_opened.begin()));
}

void Desk::typeBytes(Manuscript& bytes) {
    type(bytes, KeysOfAByte * (1 + int(random(MostBytes))), MostGapMs);
    finishByte(bytes);
}

/// As many steps as there are, at most.
void Desk::undo(Manuscript& bytes, int steps) {
    int done = 0;
    for (; done < steps && bytes.canUndo(); ++done) {
        m_operator.press("ctrl+z");
        bytes.undone();
        pause(MostGapMs * 1'000);
    }
    note(QByteArray::number(done) + " steps undone");
}

void Desk::undoBytes() {
    Manuscript* shown = showBytes();
    if (shown == nullptr)
        return typeAndStop();
    Manuscript& bytes = *shown;
    for (unsigned turn = 1 + random(3); turn > 0; --turn) {
        typeBytes(bytes);
        undo(bytes, 1 + int(random(MostSteps)));
    }
    if (random(2) == 0)
        pauseForJournal();
    kill("kills after undoing bytes");
}

/// The field for the byte has the focus a moment after the key of the choice. Return in a field does nothing.
void Desk::fillBytes() {
    Manuscript* shown = showBytes();
    if (shown == nullptr)
        return typeAndStop();
    Manuscript& bytes = *shown;
    typeBytes(bytes);
    const auto first = qsizetype(random(unsigned(bytes.changingLength())));
    const qsizetype last = first + qsizetype(random(unsigned(bytes.changingLength() - first)));
    const auto byte = static_cast<char>(random(256));
    for (const char* key : {"alt+e", "Up", "Up", "Return"})
        m_operator.press(key);
    m_operator.waitForWindow("Select Block");
    m_operator.type(QByteArray::number(first));
    m_operator.press("Tab");
    m_operator.type(QByteArray::number(last));
    m_operator.press("alt+r");
    m_operator.settleWell();
    m_operator.type(QByteArray(1, byte).toHex());
    m_operator.settle();
    m_operator.press("Tab");
    m_operator.press("Return");
    bytes.filled(first, last, byte);
    note("filled " + QByteArray::number(first) + " to " + QByteArray::number(last) + " with " +
         QByteArray(1, byte).toHex());
    if (!m_operator.waitUntil([this] { return m_operator.count("Select Block") == 0; }))
        throw Broken{"the block is not filled"};
    m_operator.waitForWindow(Operator::frameTitle(bytes.path()));
    if (random(2) == 0) {
        m_operator.press(bytes.keyOfPlace());
        bytes.toPlace();
        typeBytes(bytes);
    }
    if (random(2) == 0)
        pauseForJournal();
    kill("kills after filling bytes");
}

void Desk::switchToText() {
    Manuscript* shown = showBytes();
    if (shown == nullptr)
        return typeAndStop();
    Manuscript& bytes = *shown;
    typeBytes(bytes);
    m_operator.settle();
    for (const char* key : {"alt+w", "Left"})
        m_operator.press(key);
    for (int i = 0; i < ModeEntry; ++i)
        m_operator.press("Up");
    m_operator.press("Return");
    m_operator.waitForWindow(Operator::boxTitle());
    if (random(3) == 0) {
        m_operator.press("Down");
        m_operator.press("Return");
        bytes.givenUp(false);
        pause(LongestSwitchUs);
    } else {
        saveAndSwitch(bytes);
    }
    kill("kills while switching to text");
}

/// Returns at the moment of the kill.
void Desk::saveAndSwitch(Manuscript& bytes) {
    const FolderWatch watch(saves());
    const FileWatch file(bytes.path());
    const Moment moment = chooseMoment();
    m_operator.press("Return");
    bytes.saveBegan();
    if (awaitMoment(moment, watch, file, LongestHitUs))
        return;
    if (!m_operator.waitUntil([&] { return bytes.isInFile() && !isSaveUnderWay(); }))
        throw Broken{"the save before the switch does not come to an end"};
    bytes.saveEnded();
}

/// Bytes were brought back and saved. A byte that is typed behind the last step makes the next save write them.
void Desk::judgeUndo(Manuscript& bytes) {
    if (!bytes.hasUndoBack())
        return;
    undo(bytes, 1 + int(random(MostSteps)));
    typeBytes(bytes);
    m_operator.settle();
    saveAndWait(bytes.path());
    if (!bytes.isInFile())
        throw Broken{"what was typed before the kill is not undone as it should"};
    bytes.takeAsSaved();
    m_report.count("undo logs brought back");
}
