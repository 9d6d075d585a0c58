// Times of the hex view that a user notices, compared with what the system needs for the same: opening, the next page,
// searching, counting and marking, saving; typing, replacing and filling with and without a journal; and the memory
// used for a large file. Runs without a display with QT_QPA_PLATFORM=offscreen; the results are wall-clock times.

#include "document/HexJournal.h"
#include "hex/bytes/HexFindState.h"
#include "hex/bytes/HexText.h"
#include "hex/grid/GridPane.h"
#include "hex/ucHex.h"
#include "recovery/journals/Journals.h"
#include "settings/Options.h"
#include "widgets/QtPrompts.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <fstream>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr qint64 Megabyte = 1'000'000;
constexpr qint64 MostBytes = 2'147'483'647;
constexpr std::size_t SearchBlock = 32'000;
/// Occurs only at the end of each file. It contains letters, so that it can be searched for with and without case.
const QByteArray Last = "Needle\x01\x02";
/// The bytes that are counted and marked.
const QByteArray Often = "OFTEN";

/// Test files of random bytes in a temporary folder. Each file is created once; the folder is deleted when the program
/// ends.
class Files {
 public:
    QString path(qint64 size) {
        QString path = m_folder.filePath(u"%1.bin"_qs.arg(size));
        if (QFile::exists(path))
            return path;
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot make the file");
        const QByteArray block = someBytes(Megabyte);
        for (qint64 written = 0; written < size; written += block.size())
            file.write(block.constData(), std::min<qint64>(block.size(), size - written));
        file.seek(size - Last.size());
        file.write(Last);
        return path;
    }
    /// A file with this many matches of `Often`, one every twenty bytes.
    QString pathOfMatches(qint64 matches) {
        QString path = m_folder.filePath(u"%1.often"_qs.arg(matches));
        QFile file(path);
        if (!file.exists() && file.open(QIODevice::WriteOnly))
            file.write((Often + QByteArray(15, '.')).repeated(matches));
        return path;
    }
    /// A sparse file, which uses no disk space.
    QString pathOfHole(qint64 size) {
        QString path = m_folder.filePath(u"%1.hole"_qs.arg(size));
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.resize(size);
        return path;
    }
    QString target() const { return m_folder.filePath(u"target"_qs); }

 private:
    static QByteArray someBytes(qint64 size) {
        std::mt19937 random(5);
        QByteArray bytes;
        bytes.reserve(size);
        while (bytes.size() < size) {
            const std::uint32_t word = random();
            bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
        }
        return bytes;
    }

    QTemporaryDir m_folder;
};

Files& files() {
    static Files made;
    return made;
}

struct Shown {
    QtPrompts prompts;
    Options options;
    HexFindState findState;
    ucHex view{prompts, options, findState};

    Shown() {
        options.ContinueSearch = false;
        view.resize(1000, 640);
        view.show();
        view.activateWindow();
        QApplication::processEvents();
    }
    explicit Shown(const QString& path) : Shown() {
        if (!view.OpenFile(path))
            qFatal("cannot open the file");
        QApplication::processEvents();
    }
    GridPane* pane() const { return view.findChild<GridPane*>(u"PicHex"_qs); }
};

/// The resident memory of the process, in MiB.
double heldMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes / 1024;
        }
    }
    return 0;
}

int run(const QString& command) {
    return std::system(command.toUtf8().constData());
}

QString sequence(const QByteArray& bytes) {
    return HexText::SpaceHexText(QString::fromLatin1(bytes.toHex().toUpper()));
}

double milliseconds(const std::function<void()>& act) {
    QElapsedTimer timer;
    timer.start();
    act();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Measures both alternately, because the speed of disk and memory changes with time. Before each measurement the
/// target file is deleted and all pending writes are flushed.
void inTurn(benchmark::State& state, const std::function<double()>& yardstick, const std::function<double()>& own) {
    std::vector<double> theirs;
    std::vector<double> ours;
    for (auto _ : state) {
        for (auto* const side : {&theirs, &ours}) {
            QFile::remove(files().target());
            ::sync();
            side->push_back(side == &theirs ? yardstick() : own());
        }
    }
    state.counters["yardstick_ms"] = median(theirs);
    state.counters["own_ms"] = median(ours);
}

/// Copies the file with cp and returns the milliseconds. Called once before measuring, so that neither side has to wait
/// for memory that the machine uses for the first time.
double copied(const QString& path) {
    return milliseconds([&] { run(u"cp '%1' '%2'"_qs.arg(path, files().target())); });
}

void openBesideCp(benchmark::State& state) {
    const QString path = files().path(state.range(0) * Megabyte);
    copied(path);
    inTurn(
        state, [&] { return copied(path); },
        [&] {
            Shown shown;
            return milliseconds([&] {
                shown.view.OpenFile(path);
                QApplication::processEvents();
            });
        });
}

void saveBesideCp(benchmark::State& state) {
    const QString path = files().path(state.range(0) * Megabyte);
    Shown shown(path);
    inTurn(
        state,
        [&] {
            return milliseconds([&] {
                copied(path);
                const int handle = ::open(files().target().toUtf8().constData(), O_RDONLY | O_CLOEXEC);
                ::fsync(handle);
                ::close(handle);
            });
        },
        [&] { return milliseconds([&] { shown.view.SaveFile(files().target(), true); }); });
}

/// How many more MiB the process uses with a file of the maximum size than with a file of one page.
void memory(benchmark::State& state) {
    for (auto _ : state) {
        Shown shown(files().pathOfHole(320));
        const double before = heldMemory();
        shown.view.OpenFile(files().pathOfHole(MostBytes));
        shown.view.MoveLastPage();
        QApplication::processEvents();
        state.counters["more_MB"] = heldMemory() - before;
    }
}

/// From the key press until the page is painted.
void nextPage(benchmark::State& state) {
    Shown shown(files().path(state.range(0) * Megabyte));
    GridPane* const pane = shown.pane();
    for (auto _ : state) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
        QApplication::sendEvent(pane, &key);
        QApplication::processEvents();
        if (shown.view.FilePointer().number() > state.range(0) * Megabyte - 1000)
            shown.view.MoveFirstPage();
    }
}

/// Finds the match at the end of the file, from the first byte on.
void find(benchmark::State& state, const QString& text, HexFindType type) {
    Shown shown(files().path(state.range(0) * Megabyte));
    for (auto _ : state) {
        state.PauseTiming();
        shown.view.MoveFirstPage();
        state.ResumeTiming();
        if (shown.view.FindDown(text, static_cast<qint16>(type)) != state.range(0) * Megabyte - Last.size() + 1)
            state.SkipWithError("not found where it is");
    }
}

void findAsGrep(benchmark::State& state, const QString& options) {
    const QString path = files().path(state.range(0) * Megabyte);
    const QString command = u"LC_ALL=C grep -obUaP%1 'Needle\\x01\\x02' '%2' > /dev/null"_qs.arg(options, path);
    for (auto _ : state) {
        if (run(command) != 0)
            state.SkipWithError("not found");
    }
}

/// The fastest possible search that reads block by block, for comparison.
void findAsBlocks(benchmark::State& state) {
    const QString path = files().path(state.range(0) * Megabyte);
    for (auto _ : state) {
        const int handle = ::open(path.toUtf8().constData(), O_RDONLY | O_CLOEXEC);
        std::array<char, SearchBlock> block{};
        bool found = false;
        const auto step = static_cast<off_t>(SearchBlock) - Last.size();
        for (off_t at = 0; !found; at += step) {
            const ssize_t count = ::pread(handle, block.data(), block.size(), at);
            if (count <= 0)
                break;
            found = ::memmem(block.data(), static_cast<std::size_t>(count), Last.constData(),
                             static_cast<std::size_t>(Last.size())) != nullptr;
        }
        ::close(handle);
        if (!found)
            state.SkipWithError("not found");
    }
}

void countMatches(benchmark::State& state) {
    Shown shown(files().pathOfMatches(state.range(0)));
    for (auto _ : state) {
        if (shown.view.CountBytes(sequence(Often), 0) != state.range(0))
            state.SkipWithError("counted otherwise");
    }
    state.SetComplexityN(state.range(0));
}

void markMatches(benchmark::State& state) {
    Shown shown(files().pathOfMatches(state.range(0)));
    for (auto _ : state) {
        if (shown.view.MarkAll(sequence(Often), 0) != state.range(0))
            state.SkipWithError("marked otherwise");
        QApplication::processEvents();
        state.PauseTiming();
        shown.view.cmdClearBookmark();
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}

/// How many more MiB the process uses once all matches have bookmarks and the list shows them.
void memoryOfMarks(benchmark::State& state) {
    Shown shown(files().pathOfMatches(state.range(0)));
    for (auto _ : state) {
        const double before = heldMemory();
        shown.view.MarkAll(sequence(Often), 0);
        QApplication::processEvents();
        state.counters["more_MB"] = heldMemory() - before;
    }
}

/// Every byte is a match.
void markZeros(benchmark::State& state) {
    Shown shown(files().pathOfHole(state.range(0) * Megabyte));
    for (auto _ : state) {
        const double before = heldMemory();
        if (shown.view.MarkAll(u"00 "_qs, 0) != state.range(0) * Megabyte)
            state.SkipWithError("marked otherwise");
        QApplication::processEvents();
        state.counters["more_MB"] = heldMemory() - before;
        state.PauseTiming();
        shown.view.cmdClearBookmark();
        QApplication::processEvents();
        state.ResumeTiming();
    }
}

/// A view of a file of its own whose changes are kept in a journal, or are not.
struct Kept {
    explicit Kept(bool isKept, const QString& path)
        : shown(path), journals(folder.filePath(u"recovery"_qs)), journal(isKept ? &journals : nullptr, shown.view) {
        journal.begin(path, FileState::of(path));
    }
    /// Waits until all is on the disk.
    double journalBytes() {
        journals.flush(std::chrono::minutes(1));
        double bytes = 0;
        for (const QFileInfo& file : QDir(folder.filePath(u"recovery"_qs)).entryInfoList({u"*.journal"_qs}))
            bytes += static_cast<double>(file.size());
        return bytes;
    }

    Shown shown;
    QTemporaryDir folder;
    Journals journals;
    HexJournal journal;
};

/// Two digits and a step to the next byte, painted. Once with a journal and once without.
void typeByte(benchmark::State& state) {
    Kept kept(state.range(0) == 1, files().path(10 * Megabyte));
    GridPane* const pane = kept.shown.pane();
    const auto press = [pane](int key, const QString& text) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
        QApplication::sendEvent(pane, &event);
    };
    for (auto _ : state) {
        press(Qt::Key_A, u"A"_qs);
        press(Qt::Key_5, u"5"_qs);
        press(Qt::Key_Right, QString());
        QApplication::processEvents();
    }
    state.counters["journal_bytes"] = benchmark::Counter(kept.journalBytes(), benchmark::Counter::kAvgIterations);
}

void replaceMatches(benchmark::State& state) {
    const QString path = files().pathOfMatches(1'000'000);
    Kept kept(state.range(0) == 1, path);
    const QString often = sequence(Often);
    for (auto _ : state) {
        if (kept.shown.view.ReplaceAll(often, often, 0) != 1'000'000)
            state.SkipWithError("replaced otherwise");
    }
    state.counters["journal_bytes"] = benchmark::Counter(kept.journalBytes(), benchmark::Counter::kAvgIterations);
}

void fillMost(benchmark::State& state) {
    Kept kept(state.range(0) == 1, files().path(1000 * Megabyte));
    for (auto _ : state)
        kept.shown.view.fillBlock(Offset(0), Offset(1000 * Megabyte), 0xCC);
    state.counters["journal_bytes"] = benchmark::Counter(kept.journalBytes(), benchmark::Counter::kAvgIterations);
}

}  // namespace

#define QUILLMARK_BENCH(function) BENCHMARK(function)->Unit(benchmark::kMillisecond)->UseRealTime()
#define QUILLMARK_CAPTURE(function, ...) \
    BENCHMARK_CAPTURE(function, __VA_ARGS__)->Unit(benchmark::kMillisecond)->UseRealTime()

QUILLMARK_BENCH(memory)->Iterations(1);
QUILLMARK_BENCH(openBesideCp)->Arg(1000)->Iterations(9);
QUILLMARK_BENCH(saveBesideCp)->Arg(1000)->Iterations(9);
QUILLMARK_BENCH(nextPage)->Arg(1)->Arg(1000);
QUILLMARK_BENCH(findAsBlocks)->Arg(1000)->Iterations(5);
QUILLMARK_CAPTURE(find, sequence, sequence(Last), HexFindType::Bytes)->Arg(1000)->Iterations(5);
QUILLMARK_CAPTURE(find, exact, QString::fromLatin1(Last), HexFindType::ExactCase)->Arg(1000)->Iterations(5);
QUILLMARK_CAPTURE(find, any_case, QString::fromLatin1(Last.toUpper()), HexFindType::AnyCase)->Arg(1000)->Iterations(5);
QUILLMARK_CAPTURE(findAsGrep, exact, QString())->Arg(1000)->Iterations(5);
QUILLMARK_CAPTURE(findAsGrep, any_case, u"i"_qs)->Arg(1000)->Iterations(5);
QUILLMARK_BENCH(countMatches)->RangeMultiplier(2)->Range(125'000, 1'000'000)->Complexity(benchmark::oN);
QUILLMARK_BENCH(markMatches)->RangeMultiplier(2)->Range(125'000, 1'000'000)->Complexity(benchmark::oN);
QUILLMARK_BENCH(memoryOfMarks)->Arg(1'000'000)->Iterations(1);
QUILLMARK_BENCH(typeByte)->Arg(0)->Arg(1);
QUILLMARK_BENCH(replaceMatches)->Arg(0)->Arg(1)->Iterations(3);
QUILLMARK_BENCH(fillMost)->Arg(0)->Arg(1)->Iterations(3);
QUILLMARK_BENCH(markZeros)->Arg(100)->Iterations(1);

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
