// A search in 75,000 source files of 1.2 GB through a whole frame, from the start of the search to the complete tree of
// results, beside grep and, where it is installed, ripgrep with the same number of threads over the same files, which
// are in the page cache. And a word replaced in 10,000 files, with and without records of the saves, beside grep and
// sed. Runs without a display with QT_QPA_PLATFORM=offscreen; the results are wall-clock times. The window lives
// meanwhile, which the longest wait of an event says.

#include "platform/WriteWitness.h"
#include "recovery/saves/SaveRecords.h"
#include "settings/registry/MemoryRegistry.h"
#include "shell/frame/FrameServices.h"
#include "shell/frame/frmMain.h"
#include "widgets/QtPrompts.h"
#include "workspace/host/WorkspaceServices.h"
#include "workspace/panel/ucExplorer.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <random>

namespace {

constexpr int Folders = 750;
constexpr int FilesEach = 100;
constexpr int MeanLength = 16'000;
constexpr int ReplacedFiles = 10'000;

/// Lines like those of programs: words of which a few are very frequent.
class Words {
 public:
    Words() {
        for (const char* word : {"return", "if", "int", "const", "value", "for", "name", "static", "include", "result"})
            m_words << QByteArray(word);
        for (int n = 0; n < 4000; ++n)
            m_words << QByteArray("item") + QByteArray::number(n * 7919 % 100'003, 36) + (n % 3 == 0 ? "_Init" : "");
    }
    QByteArray text(qsizetype length) {
        QByteArray text;
        while (text.size() < length) {
            text += QByteArray(static_cast<qsizetype>(m_random() % 4) * 4, ' ');
            for (unsigned words = m_random() % 9; words > 0; --words)
                text += m_words[next()] + (words % 3 == 0 ? "(x, " : words % 3 == 1 ? " = " : ");");
            text += '\n';
        }
        return text;
    }
    std::mt19937& random() { return m_random; }

 private:
    /// One word of twelve is one of the first ten.
    qsizetype next() {
        const auto number = static_cast<qsizetype>(m_random());
        return number % 12 == 0 ? number / 12 % 10 : number / 12 % m_words.size();
    }

    QList<QByteArray> m_words;
    std::mt19937 m_random{7};
};

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (file.open(QFile::WriteOnly))
        file.write(bytes);
}

/// The files, made once for each run of this program.
class Tree {
 public:
    Tree() {
        Words words;
        const QByteArray blob = words.text(64 * 1024 * 1024);
        for (int folder = 0; folder < Folders; ++folder) {
            const QString path = m_folder.filePath(u"d%1/s%2"_qs.arg(folder % 25).arg(folder));
            QDir().mkpath(path);
            for (int n = 0; n < FilesEach; ++n)
                write(path + u"/f%1.cpp"_qs.arg(n), slice(words.random(), blob, folder * FilesEach + n));
        }
    }
    QString path() const { return m_folder.path(); }

 private:
    static QByteArray slice(std::mt19937& random, const QByteArray& blob, int number) {
        const auto length = static_cast<qsizetype>(std::exponential_distribution<>(1.0 / MeanLength)(random)) + 200;
        const qsizetype from = static_cast<qsizetype>(random()) % (blob.size() - std::min(length, blob.size() / 2));
        QByteArray bytes = blob.mid(from, length);
        if (number % 3001 == 0)
            bytes += "\nrare_word_qx7 = 1;\n";
        return bytes;
    }

    QTemporaryDir m_folder;
};

const Tree& tree() {
    static const Tree made;
    return made;
}

/// A frame on the screen, with folders of its own.
struct Shown {
    QTemporaryDir own;
    QtPrompts prompts;
    MemoryRegistry registry;
    frmMain frame{{prompts,
                   registry,
                   [](const WorkspaceServices& services) -> PanelLink& { return *new ucExplorer(services); },
                   {},
                   {},
                   own.path(),
                   own.path()}};

    Shown() {
        frame.Load();
        frame.show();
        QApplication::processEvents();
    }
};

/// The longest time between two passes of the event loop.
class LongestWait {
 public:
    LongestWait() {
        m_clock.start();
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { note(); });
        m_timer.start(0);
    }
    double milliseconds() {
        note();
        return static_cast<double>(m_longest);
    }

 private:
    void note() { m_longest = std::max(m_longest, m_clock.restart()); }

    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_longest = 0;
};

struct Row {
    const char* name;
    const char* text;
    bool regExp;
    bool caseSensitive;
    bool wholeWord;
    QStringList options;  ///< of grep and ripgrep alike
};

const Row Rows[] = {
    {"literal", "return", false, true, false, {u"-F"_qs}},
    {"ignoringCase", "RESULT", false, false, false, {u"-F"_qs, u"-i"_qs}},
    {"wholeWord", "name", false, true, true, {u"-F"_qs, u"-w"_qs}},
    {"expression", "[a-z]+[0-9a-z]*_Init\\(", true, true, false, {u"-E"_qs}},
    {"rareWord", "rare_word_qx7", false, true, false, {u"-F"_qs}},
};

void search(benchmark::State& state, const Row& row) {
    tree();
    Shown shown;
    double longest = 0;
    for (auto _ : state) {
        LongestWait wait;
        shown.frame.StartSearch(tree().path(), u"*"_qs, true, QString::fromLatin1(row.text), row.regExp,
                                row.caseSensitive, false, row.wholeWord, 0, true, {}, true);
        longest = std::max(longest, wait.milliseconds());
    }
    state.counters["files"] = shown.frame.FilesFound();
    state.counters["longest_wait_ms"] = longest;
}

/// Its lines go to a file, as they do into a list.
void run(benchmark::State& state, const QString& program, const QStringList& arguments) {
    const QTemporaryDir folder;
    for (auto _ : state) {
        QProcess process;
        process.setStandardOutputFile(folder.filePath(u"out"_qs));
        process.start(program, arguments);
        if (!process.waitForFinished(-1) || process.exitCode() > 1)
            state.SkipWithError("it failed");
    }
}

void grep(benchmark::State& state, const Row& row) {
    tree();
    run(state, u"grep"_qs,
        QStringList{u"-rn"_qs} + row.options + QStringList{QString::fromLatin1(row.text), tree().path()});
}

void ripgrep(benchmark::State& state, const Row& row) {
    tree();
    QStringList options = row.options;
    options.removeAll(u"-E"_qs);
    const QString threads = u"-j"_qs + QString::number(QThread::idealThreadCount());
    run(state, u"rg"_qs,
        QStringList{threads, u"-n"_qs, u"-uuu"_qs} + options +
            QStringList{QString::fromLatin1(row.text), tree().path()});
}

/// 10,000 files with a word in each.
class FilesToReplaceIn {
 public:
    FilesToReplaceIn() {
        Words words;
        for (int n = 0; n < ReplacedFiles; ++n)
            write(m_folder.filePath(u"f%1.txt"_qs.arg(n)), words.text(4000) + "the lonely word\n" + words.text(4000));
        sync();  // what the disk still has to do for them is no part of the measurement
    }
    QString path() const { return m_folder.path(); }

 private:
    QTemporaryDir m_folder;
};

void replaceWord(benchmark::State& state, bool isRecorded) {
    Shown shown;
    const QTemporaryDir recordFolder;
    for (auto _ : state) {
        state.PauseTiming();
        const auto files = std::make_unique<FilesToReplaceIn>();
        SaveRecords records(recordFolder.filePath(u"state/saves"_qs));
        if (isRecorded)
            WriteWitness::setOfProcess(&records);
        state.ResumeTiming();
        shown.frame.StartSearch(files->path(), u"*"_qs, true, u"lonely"_qs, false, true, false, false, 0, false,
                                u"replaced"_qs, true);
        if (shown.frame.FilesFound() != ReplacedFiles)
            state.SkipWithError("not all files were replaced in");
    }
}

void replaceWordWithSed(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        const auto files = std::make_unique<FilesToReplaceIn>();
        state.ResumeTiming();
        QProcess process;
        process.start(u"sh"_qs,
                      QStringList{u"-c"_qs, u"grep -rlZ lonely '%1' | xargs -0 sed -i s/lonely/replaced/g"_qs.arg(
                                                files->path())});
        process.waitForFinished(-1);
    }
}

void addRows() {
    const bool hasRipgrep = !QStandardPaths::findExecutable(u"rg"_qs).isEmpty();
    const auto add = [](const std::string& name, const Row& row, void (*measure)(benchmark::State&, const Row&)) {
        benchmark::RegisterBenchmark(name.c_str(), measure, row)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime()
            ->Iterations(3);
    };
    for (const Row& row : Rows) {
        add(row.name, row, search);
        add(std::string(row.name) + "WithGrep", row, grep);
        if (hasRipgrep)
            add(std::string(row.name) + "WithRipgrep", row, ripgrep);
    }
}

}  // namespace

BENCHMARK_CAPTURE(replaceWord, WithoutRecords, false)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK_CAPTURE(replaceWord, WithRecords, true)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(replaceWordWithSed)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    addRows();
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
