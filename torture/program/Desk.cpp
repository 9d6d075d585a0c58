#include "program/Desk.h"

#include "Contents.h"
#include "SceneFiles.h"
#include "settings/registry/RegistryData.h"
#include "settings/registry/SqliteRegistry.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <numeric>
#include <string_view>

namespace {

/// A short run plays each act so often.
constexpr int QuickTurns = 2;
/// In a short run each desk begins so many acts behind the one before.
constexpr int DistanceOfDesks = 5;
/// Rounds of what no kill has hit yet when a long run should end: not so many that they would hide that it cannot be
/// hit. What a short one hits depends on how fast the machine is.
constexpr int MostExtraRounds = 40;
/// Every so many rounds the program is ended as it should be, and nothing may be left.
constexpr int RoundsToOrder = 25;
constexpr qsizetype QuickLength = 9'000'000;

constexpr Manuscript::Shape Shapes[] = {
    {"empty.txt", 0, Manuscript::Kind::Text, false, false},
    {"short.txt", 300, Manuscript::Kind::Text, true, false},
    {"linked.txt", 40'000, Manuscript::Kind::Text, false, true},
    {"marked.txt", 100'000, Manuscript::Kind::MarkedText, true, false},
    {"middle.txt", 1'000'000, Manuscript::Kind::Text, true, false},
    {"large.txt", 8'000'000, Manuscript::Kind::Text, false, false},
    {"moving.txt", 24'000'000, Manuscript::Kind::Text, false, false},
    {"huge.txt", 64 * 1024 * 1024, Manuscript::Kind::Text, true, false},
    {"few.bin", 500, Manuscript::Kind::Bytes, false, true},
    {"some.bin", 300'000, Manuscript::Kind::Bytes, false, false},
    {"many.bin", 8'000'000, Manuscript::Kind::Bytes, false, false},
    {"returns.txt", 20'000, Manuscript::Kind::Text, false, false, true},
    {"western.txt", 50'000, Manuscript::Kind::Western, true, false},
    {"western-returns.txt", 1'500'000, Manuscript::Kind::Western, false, true, true},
    {"mark-alone.txt", 0, Manuscript::Kind::Utf16, false, false},
    {"utf16.txt", 1'000, Manuscript::Kind::Utf16, true, false},
    {"utf16-returns.txt", 600'000, Manuscript::Kind::Utf16, false, true, true},
    {"swapped.txt", 2'000'000, Manuscript::Kind::Utf16Swapped, true, false},
    {"swapped-returns.txt", 30'000, Manuscript::Kind::Utf16Swapped, false, false, true},
};

/// The program shows these as bytes, or only when it does not look at what they begin with.
bool isUtf16(Manuscript::Kind kind) {
    return kind == Manuscript::Kind::Utf16 || kind == Manuscript::Kind::Utf16Swapped;
}

void makePrivate(const QByteArray& folder) {
    std::filesystem::create_directories(folder.toStdString());
    mustWork(::chmod(folder.constData(), 0700) == 0, "cannot make " + folder);
}

}  // namespace

const Desk::Act Desk::Acts[] = {
    {"typing", 4, Opens::Any, &Desk::typeAndStop},
    {"saving", 8, Opens::Large, &Desk::save},
    {"replacing in files", 3, Opens::Any, &Desk::replaceInFiles},
    {"closing with Yes", 2, Opens::Large, &Desk::closeWithYes},
    {"typing and a pause", 1, Opens::Any, &Desk::typeAndPause},
    {"tearing a save", 3, Opens::Torn, &Desk::tearSave},
    {"saving one of two", 2, Opens::Any, &Desk::saveOfTwo},
    {"Save As", 2, Opens::Large, &Desk::saveAs},
    {"tearing a replacement", 2, Opens::Any, &Desk::tearReplacement},
    {"typing without a file", 1, Opens::Any, &Desk::typeUntitled},
    {"closing with No", 1, Opens::Any, &Desk::closeWithNo},
    {"undoing bytes", 1, Opens::Bytes, &Desk::undoBytes},
    {"filling bytes", 1, Opens::Bytes, &Desk::fillBytes},
    {"switching to text", 1, Opens::Bytes, &Desk::switchToText},
    {"starting again", 3, Opens::Any, &Desk::startAgain},
    {"an end in order", 0, Opens::Bytes, &Desk::endInOrder},
};

Desk::Desk(int number, QByteArray root, const ProgramOptions& options, const Effort& effort, unsigned seed,
           Report& report)
    : m_number(number),
      m_root(std::move(root)),
      m_options(options),
      m_effort(effort),
      m_seed(seed),
      m_report(report),
      m_random(seed),
      m_operator(options.program, options.patience) {}

void Desk::run() {
    layOut();
    for (m_round = 0; goesOn(); ++m_round)
        playRound(false);
    playRound(true);
    if (m_operator.isRunning())
        m_operator.kill();
}

bool Desk::isDue() const {
    const int turns = QuickTurns * int(std::size(Acts)) / m_options.desks;
    return m_effort.isLong() ? !m_effort.isOver() : m_round < turns;
}

bool Desk::goesOn() {
    return isDue() || (m_effort.isLong() && missingHit() != nullptr && m_extraRounds++ < MostExtraRounds);
}

const Desk::Hit* Desk::missingHit() const {
    const auto* hit = std::ranges::find_if(Hits, [this](const Hit& each) { return m_report.number(each.name) == 0; });
    return hit == std::end(Hits) ? nullptr : hit;
}

/// A home and files as they are at first, and no program at work.
void Desk::layOut() {
    m_folder = m_root + "/desk" + QByteArray::number(m_number) + "-" + QByteArray::number(m_layouts++);
    for (const char* name : {"/home/run", "/home/tmp", "/home/config", "/home/data", "/files"})
        makePrivate(m_folder + name);
    makePrivate(m_folder + "/home/state/quillmark");
    makePrivate(saves());
    m_opened.clear();
    m_manuscripts.clear();
    m_untitled.reset();
    m_copied = nullptr;
    m_wasReplacing = false;
    m_hadJournals = false;
    if (showsTextsOnly())
        writeSettings();
    for (const Manuscript::Shape& shape : Shapes) {
        const bool isRight = showsTextsOnly() ? shape.kind != Manuscript::Kind::Bytes : !isUtf16(shape.kind);
        if (isRight && (m_effort.isLong() || shape.length < QuickLength))
            m_manuscripts.push_back(std::make_unique<Manuscript>(files() + "/" + shape.name, shape, m_random()));
    }
    m_replaced = std::make_unique<ReplacedFiles>(m_folder + "/many");
}

void Desk::writeSettings() const {
    makePrivate(m_folder + "/home/config/quillmark");
    SqliteRegistry store(QString::fromLocal8Bit(m_folder) + u"/home/config/quillmark/registry.db"_qs);
    const int code = store.writeValue(HKEY_CURRENT_USER, u"Software/Quillmark/general"_qs, u"CheckHexModeWhenOpen"_qs,
                                      RegistryData::fromText(u"0"_qs));
    mustWork(code == RegistryCode::Ok, "cannot write the settings");
}

/// An act is played after the judgement of what the one before has left.
void Desk::playRound(bool isLast) {
    if (m_story.size() > 2)
        m_story.erase(m_story.begin(), m_story.end() - 2);
    m_story.emplace_back();
    m_roundBegin = Manuscript::Clock::now();
    try {
        const Act& act = isLast ? Acts[std::size(Acts) - 1] : choose();
        countTorn();
        if (m_options.losesRecords)
            emptyFolder(saves());
        open(act);
        judgeFiles();
        judgeReplaced();
        judgeAsides();
        if (m_options.judgesTexts)
            judgeTexts();
        for (const auto& each : m_manuscripts)
            each->forget();
        note(act.name);
        m_act = act.name;
        m_late = {};
        m_journalPause.reset();
        m_isClosing = false;
        (this->*act.play)();
    } catch (const Broken& broken) {
        breakOff(broken.what);
    }
}

const Desk::Act& Desk::choose() {
    const std::size_t last = std::size(Acts) - 1;
    const Hit* missing = missingHit();
    if (!isDue() && missing != nullptr)
        return *std::ranges::find(Acts, std::string_view(missing->act), &Act::name);
    if (!m_effort.isLong())
        return Acts[static_cast<std::size_t>(m_round + m_number * DistanceOfDesks) % last];
    if (m_round % RoundsToOrder == RoundsToOrder - 1)
        return Acts[last];
    unsigned at = random(std::accumulate(std::begin(Acts), std::end(Acts), 0U,
                                         [](unsigned sum, const Act& act) { return sum + act.weight; }));
    const Act* act = Acts;
    for (; at >= act->weight; ++act)
        at -= act->weight;
    return *act;
}

/// Begins again with fresh files, so that one fault is counted once.
void Desk::breakOff(const QByteArray& what) {
    if (m_options.keepsFolders)
        m_operator.takePicture(m_folder.toStdString() + "/screen.png");
    if (m_operator.isRunning())
        m_operator.kill();
    m_report.fault(QByteArray("program ") + m_act, "seed " + QByteArray::number(m_seed) + ", desk " +
                                                       QByteArray::number(m_number) + ", round " +
                                                       QByteArray::number(m_round) + ": " + what);
    for (const QByteArray& round : m_story)
        std::printf("   %s\n", round.constData());
    const std::filesystem::path folder = m_folder.toStdString();
    std::error_code error;
    const std::filesystem::path kept = m_root.toStdString() + "-kept-" + folder.filename().string();
    if (m_options.keepsFolders) {
        std::filesystem::rename(folder, kept, error);
        std::printf("   kept: %s\n", kept.c_str());
    } else {
        std::filesystem::remove_all(folder, error);
    }
    std::fflush(stdout);
    layOut();
}

void Desk::note(const QByteArray& what) {
    const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(Manuscript::Clock::now() - m_roundBegin);
    m_story.back() += "; " + QByteArray::number(qint64(passed.count())) + " ms: " + what;
}
