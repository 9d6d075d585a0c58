// What a desk judges after each start.

#include "Contents.h"
#include "SceneFiles.h"
#include "program/Desk.h"
#include "recovery/saves/SaveRecovery.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <set>

namespace {

constexpr unsigned MostOpened = 3;
constexpr qsizetype LargeLength = 900'000;
/// A save is under way soon after the key; waiting longer only finds out that there is none.
constexpr int SaveBeginMs = 3'000;
constexpr int MostTabs = 8;
/// A journal may be cut off before such a file is copied, and does not know then whether its text is in the file.
constexpr qsizetype SlowToCopy = 8'000'000;

bool isSameTime(const struct stat& one, const struct stat& other) {
    return one.st_mtim.tv_sec == other.st_mtim.tv_sec && one.st_mtim.tv_nsec == other.st_mtim.tv_nsec;
}

/// Whether a file begins with anything but zeros.
bool isUsed(const QByteArray& path) {
    char head[4096];
    const int handle = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (handle < 0)
        return false;
    const ssize_t count = ::read(handle, head, sizeof head);
    ::close(handle);
    return std::any_of(head, head + std::max<ssize_t>(count, 0), [](char each) { return each != 0; });
}

}  // namespace

/// Starts the program, which ended a moment ago, with some files. Those that were typed in need not be named: what was
/// not saved of them comes back by itself.
void Desk::open(const Act& act) {
    m_hadJournals = !namesIn(journals()).empty();
    m_abandoned = namesIn(workingCopies());
    ::unlink((files() + "/untitled.txt").constData());
    std::vector<Manuscript*> opened;
    std::vector<QByteArray> named;
    for (Manuscript* each : m_opened) {
        if (!each->wasTyped())
            continue;
        opened.push_back(each);
        if (random(2) == 0 || !m_options.judgesTexts)
            named.push_back(each->path());
    }
    if (Manuscript* each = chooseOf(act.opens); each != nullptr && std::ranges::find(opened, each) == opened.end()) {
        opened.insert(opened.begin(), each);
        named.push_back(each->path());
    }
    const unsigned wanted = 1 + random(MostOpened - 1);
    while (named.empty() || opened.size() < wanted) {
        // Smaller ones more often.
        const auto at = std::min(random(unsigned(m_manuscripts.size())), random(unsigned(m_manuscripts.size())));
        Manuscript* each = m_manuscripts[random(4) == 0 ? random(unsigned(m_manuscripts.size())) : at].get();
        if (std::ranges::find(opened, each) == opened.end())
            opened.push_back(each);
        if (std::ranges::find(named, each->path()) == named.end())
            named.push_back(each->path());
    }
    m_opened = opened;
    m_named = named;
    for (const QByteArray& path : named)
        note("open " + path.mid(files().size() + 1));
    m_operator.start(m_folder + "/home", named);
    note("started");
}

Manuscript* Desk::chooseOf(Opens opens) {
    std::vector<Manuscript*> fitting;
    for (const auto& each : m_manuscripts) {
        const bool isFitting = opens == Opens::Large  ? each->length() > LargeLength
                               : opens == Opens::Torn ? each->isTornEasily()
                                                      : each->isOfBytes();
        if (isFitting)
            fitting.push_back(each.get());
    }
    // The longest takes long to load.
    if (fitting.empty())
        return nullptr;
    const bool isNeeded = opens == Opens::Bytes || opens == Opens::Torn ||
                          (opens == Opens::Large && (!m_effort.isLong() || random(2) == 0));
    return isNeeded ? fitting[random(unsigned(fitting.size()))] : nullptr;
}

/// Before the start.
void Desk::countTorn() {
    const auto torn = std::ranges::count_if(m_manuscripts, [](const auto& each) { return each->isTorn(); });
    if (torn > 0)
        m_report.count(TornSaves);
    const int ofReplacement = m_wasReplacing ? m_replaced->torn() : 0;
    if (ofReplacement > 0)
        m_report.count(TornReplacements);
    if (torn > 0 || ofReplacement > 0)
        note("half-written");
    const std::optional<QByteArray> copy = m_copied != nullptr && m_copyBefore ? bytesOf(m_copy) : m_copyBefore;
    if (copy != m_copyBefore && copy != m_copyAfter)
        m_report.count("kills that left a copy half-saved");
}

/// After the start, which completes interrupted saves before it shows anything.
void Desk::judgeFiles() {
    std::set<QByteArray> expected{"untitled.txt"};
    for (unsigned number = 0; number < CopyNames; ++number)
        expected.insert(copyName(number));
    for (const auto& each : m_manuscripts) {
        const QByteArray name = each->path().mid(files().size() + 1);
        if (const std::optional<QByteArray> problem = each->problemOfFile())
            throw Broken{name + " " + *problem};
        expected.insert({name, name + ".link"});
    }
    for (const QByteArray& name : namesIn(files())) {
        if (!expected.contains(name))
            throw Broken{name + " was left beside the files"};
    }
    if (isSaveUnderWay())
        throw Broken{"a record of a save is left"};
    judgeCopy();
}

/// A save that was killed when it had written only bytes that were there before leaves the old file, and its record is
/// set aside. So is a journal whose base was not stored, when the save of its text was done, or was completed.
void Desk::judgeAsides() {
    const auto isAny = [this](const auto& isTrue) { return std::ranges::any_of(m_manuscripts, isTrue); };
    const bool isUndone =
        m_isBehind || isAny([](const auto& each) { return each->lastSave() == Manuscript::Save::Undone; });
    const bool isLongDone = isAny(
        [](const auto& each) { return each->lastSave() == Manuscript::Save::Done && each->length() >= SlowToCopy; });
    m_isBehind = false;
    for (const auto& [folder, isExpected] : {std::pair(saves(), isUndone), {journals(), isLongDone}}) {
        for (const QByteArray& name : namesIn(folder)) {
            if (!name.endsWith(SaveRecovery::AsideSuffix))
                continue;
            if (!isExpected)
                throw Broken{name + " was set aside"};
            m_report.count("records of files as they were, and journals of saved long texts, set aside");
            ::unlink((folder + '/' + name).constData());
        }
    }
}

/// A file that did not exist may be left in part: the text that was to be in it comes back as unsaved then.
void Desk::judgeCopy() {
    if (m_copied == nullptr)
        return;
    const std::optional<QByteArray> bytes = bytesOf(m_copy);
    const bool isNew = bytes == m_copyAfter;
    const bool isPart = !m_copyBefore && bytes && !isNew && bytes->size() <= m_copyAfter.size();
    if (isPart)
        m_report.count("kills that left a part of a new file");
    if (!isNew && !isPart && bytes != m_copyBefore)
        throw Broken{"what Save As wrote is neither the old nor the new file"};
    m_isBehind = m_isBehind || !isNew;
    if (!isNew && m_wasCopyDone)
        throw Broken{"what Save As wrote is lost"};
    if (isNew)
        m_copied->givenUp(m_wasCopyDone);
    if (isPart || random(2) == 0)
        ::unlink(m_copy.constData());
    m_copied = nullptr;
}

void Desk::judgeReplaced() {
    if (!m_wasReplacing)
        return;
    m_wasReplacing = false;
    int replaced = 0;
    for (const QByteArray& path : m_replaced->judge(replaced))
        throw Broken{path + " is neither what it was nor what it was to be"};
    m_isBehind = m_isBehind || replaced < m_replaced->count();
    if (m_wasReplaceDone && replaced < m_replaced->count())
        throw Broken{"a replacement was lost"};
    if (m_hasHitReplacement || (replaced > 0 && replaced < m_replaced->count()))
        m_report.count("kills that hit a replacement");
}

void Desk::judgeTexts() {
    std::vector<Manuscript*> shown;
    for (Manuscript* each : m_opened) {
        const bool isJudged = m_hadJournals || each->wasTyped();
        if (isJudged ? judgeText(*each) : std::ranges::find(m_named, each->path()) != m_named.end())
            shown.push_back(each);
    }
    m_opened = shown;
    if (m_untitled != nullptr)
        judgeUntitled();
    m_untitled.reset();
}

/// What is shown is saved, so that it can be compared. A document that does not come up has the text of its file, and
/// false is returned.
bool Desk::judgeText(Manuscript& text) {
    const bool wasTyped = text.wasTyped();
    const QByteArray name = text.path().mid(files().size() + 1);
    const bool isShown = m_operator.activate([&](const QByteArray& active) { return active == text.path(); }, MostTabs);
    if (isShown)
        saveAndWait(text.path());
    note("judged " + name);
    const QByteArray bytes = bytesOf(text.path()).value_or(QByteArray());
    const Manuscript::Match match = text.match(bytes, lastKill());
    if (match == Manuscript::Match::None)
        throw Broken{name + " comes back as it never was"};
    if (match == Manuscript::Match::Early)
        throw Broken{"the last " + QByteArray::number(text.lostKeys()) + " keys of " + name + " are lost"};
    if (wasTyped)
        m_report.count("texts judged");
    m_report.count("keys lost of texts judged", text.lostKeys());
    if (isShown && text.isOfBytes())
        judgeUndo(text);
    return isShown;
}

void Desk::saveAndWait(const QByteArray& path) {
    struct stat before {};
    struct stat after {};
    ::stat(path.constData(), &before);
    m_operator.press("ctrl+s");
    const auto isWritten = [&] { return ::stat(path.constData(), &after) == 0 && !isSameTime(before, after); };
    if (m_operator.waitWhileBusy(isWritten, SaveBeginMs))
        m_operator.waitUntil([&] { return !isSaveUnderWay(); });
    m_operator.settleWell();
    m_operator.expectNoBox();
}

void Desk::judgeUntitled() {
    const QByteArray path = files() + "/untitled.txt";
    QByteArray bytes;
    if (m_operator.activate([](const QByteArray& name) { return !name.contains('/'); }, MostTabs)) {
        m_operator.press("ctrl+s");
        m_operator.waitForWindow("Save");
        m_operator.press("ctrl+a");
        m_operator.type(path);
        m_operator.press("Return");
        m_operator.waitForWindow(Operator::frameTitle(path));
        bytes = bytesOf(path).value_or(QByteArray());
    }
    m_untitled->setPath(path);
    const Manuscript::Match match = m_untitled->match(bytes, lastKill());
    if (match == Manuscript::Match::None)
        throw Broken{"a text without a file comes back as it never was"};
    if (match == Manuscript::Match::Early)
        throw Broken{"the last keys of a text without a file are lost"};
    m_report.count("texts without a file brought back");
}

/// Whether a record holds anything: it is filled with zeros when its save is done. A record without a program is what a
/// kill has left of a save.
bool Desk::isSaveUnderWay() const {
    return std::ranges::any_of(namesIn(saves()), [this](const QByteArray& name) {
        return name.endsWith(SaveRecovery::RecordSuffix) && isUsed(saves() + "/" + name);
    });
}

/// After an end in order.
void Desk::judgeLeftovers() {
    std::vector<QByteArray> folders{saves(), workingCopies()};
    if (m_options.judgesTexts)
        folders.push_back(journals());
    for (const QByteArray& folder : folders) {
        for (const QByteArray& name : namesIn(folder))
            throw Broken{folder.mid(m_folder.size() + 1) + "/" + name + " is left after an end in order"};
    }
}
