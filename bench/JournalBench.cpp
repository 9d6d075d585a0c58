// Journals of unsaved changes, in milliseconds: a thousand keys passed on in the thread of the window; the longest that
// one of them takes in ten minutes of typing into 1 GB, of which the journal must stay under 10 MB; and the recovery of
// a text of 100 MB with ten thousand edits all over it, from the folder to the file with the text. The files lie under
// $TMPDIR, else /var/tmp.

#include "platform/FileState.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/Journals.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <string>

namespace {

constexpr std::chrono::minutes Long{10};

QString patternOfFolders() {
    return qEnvironmentVariable("TMPDIR", u"/var/tmp"_qs) + u"/journals-XXXXXX"_qs;
}

/// Lines of text, so many bytes.
JournalBase makeFile(const QString& path, qint64 size) {
    QFile file(path);
    const QByteArray part =
        QByteArray("The quick brown fox jumps over the lazy dog, and nobody looks.\n").repeated(16'000);
    qint64 left = file.open(QFile::WriteOnly) ? size : 0;
    while (left > 0)
        left -= file.write(part.left(left));
    file.close();
    JournalBase base;
    base.path = path;
    base.state = FileState::of(path);
    base.heldLength = size;
    return base;
}

qint64 sizeOfJournals(const QString& folder) {
    qint64 size = 0;
    for (const QFileInfo& file : QDir(folder).entryInfoList({u"*.journal"_qs}, QDir::Files))
        size += file.size();
    return size;
}

void thousandKeys(benchmark::State& state) {
    const QTemporaryDir folder(patternOfFolders());
    Journals journals(folder.filePath(u"journals"_qs));
    const auto journal = journals.begin(JournalBase());
    qint64 at = 0;
    for (auto unused : state) {
        for (int i = 0; i < 1'000; ++i)
            journal->insert(at++, "k");
    }
    journal->discard();
}

/// Eight keys a second, with a jump now and then; what the clock would start is started by hand.
void tenMinutesInto1GB(benchmark::State& state) {
    constexpr int Batches = 120;
    constexpr int KeysOfABatch = 40;
    constexpr qint64 Size = 1'000'000'000;
    const QTemporaryDir folder(patternOfFolders());
    Journals journals(folder.filePath(u"journals"_qs));
    const auto journal = journals.begin(makeFile(folder.filePath(u"file"_qs), Size));
    std::mt19937_64 random(1);
    for (auto unused : state) {
        qint64 longest = 0;
        for (int batch = 0; batch < Batches; ++batch) {
            qint64 at = static_cast<qint64>(random() % Size);
            for (int key = 0; key < KeysOfABatch; ++key) {
                QElapsedTimer clock;
                clock.start();
                journal->insert(at++, "k");
                longest = std::max(longest, clock.nsecsElapsed());
            }
            if (!journals.flush(Long))
                state.SkipWithError("the journal was not written");
        }
        const qint64 size = sizeOfJournals(folder.filePath(u"journals"_qs));
        state.counters["journal"] = static_cast<double>(size);
        if (size >= 10'000'000 || journal->needsWhole())
            state.SkipWithError("the journal is too large");
        state.SetIterationTime(static_cast<double>(longest) / 1e9);
    }
    journal->discard();
}

void recoveryOf100MB(benchmark::State& state) {
    constexpr qint64 Size = 100'000'000;
    const QTemporaryDir folder(patternOfFolders());
    const JournalBase base = makeFile(folder.filePath(u"file"_qs), Size);
    std::mt19937_64 random(1);
    {
        Journals journals(folder.filePath(u"journals"_qs));
        const auto journal = journals.begin(base);
        for (int i = 0; i < 5'000; ++i) {
            journal->insert(static_cast<qint64>(random() % Size), "some words");
            journal->remove(static_cast<qint64>(random() % (Size - 100)), 10);
        }
        journals.flush(Long);
    }
    for (auto unused : state) {
        Journals journals(folder.filePath(u"journals"_qs));
        const auto found = journals.takeAbandoned();
        if (found.size() != 1 || found.front()->restore() != FoundJournal::Outcome::Restored)
            state.SkipWithError("the journal was not brought back");
    }
}

}  // namespace

BENCHMARK(thousandKeys)->Iterations(100)->Unit(benchmark::kMillisecond);
BENCHMARK(tenMinutesInto1GB)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(recoveryOf100MB)->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
