// Saves of a file of 0.1, 1, 10 and 64 MB: the same bytes written over the old file and flushed by plain calls of the
// system, in turn with the writer of users' files without and with a record of the save. Wall-clock times in
// milliseconds, medians; "ratio" is the save with its record over the plain calls. The files lie under $TMPDIR, else
// /var/tmp.

#include "platform/Paths.h"
#include "platform/UserFileWriter.h"
#include "recovery/saves/SaveRecords.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using Times = std::vector<double>;

double median(Times times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

std::string noise(std::size_t length) {
    std::mt19937_64 random(length);
    std::string bytes(length, '\0');
    for (std::size_t at = 0; at + 8 <= length; at += 8) {
        const auto word = random();
        bytes.replace(at, 8, reinterpret_cast<const char*>(&word), 8);
    }
    return bytes;
}

bool writePlainly(const QByteArray& name, const std::string& bytes) {
    const int handle = ::open(name.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const ssize_t written = ::pwrite(handle, bytes.data(), bytes.size(), 0);
    const bool done = written == static_cast<ssize_t>(bytes.size()) && ::fsync(handle) == 0;
    ::close(handle);
    return done;
}

template <typename Work>
void take(Times& times, benchmark::State& state, Work work) {
    QElapsedTimer clock;
    clock.start();
    if (!work())
        state.SkipWithError("a file could not be written");
    times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
}

void save(benchmark::State& state) {
    const QString root = qEnvironmentVariable("TMPDIR", u"/var/tmp"_qs);
    const QTemporaryDir folder(root + u"/saves-XXXXXX"_qs);
    SaveRecords records(folder.filePath(u"state/saves"_qs));
    std::string bytes = noise(static_cast<std::size_t>(state.range(0)));
    Times plain;
    Times bare;
    Times recorded;
    // Each way has a file of its own, as if nobody else wrote it.
    const auto saveWith = [&](WriteWitness* witness) {
        const QString path = folder.filePath(witness == nullptr ? u"bare"_qs : u"recorded"_qs);
        ++bytes[bytes.size() / 2];
        const std::string_view piece = bytes;
        return !UserFileWriter(FileSystemCalls::system(), witness).write(path, {&piece, 1}).error;
    };
    for (auto unused : state) {
        take(plain, state, [&] { return writePlainly(*localName(folder.filePath(u"plain"_qs)), bytes); });
        take(bare, state, [&] { return saveWith(nullptr); });
        take(recorded, state, [&] { return saveWith(&records); });
        state.SetIterationTime(recorded.back() / 1e3);
    }
    state.counters["plain"] = median(plain);
    state.counters["bare"] = median(bare);
    state.counters["recorded"] = median(recorded);
    state.counters["ratio"] = median(recorded) / median(plain);
}

}  // namespace

BENCHMARK(save)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Arg(10'000'000)
    ->Arg(64'000'000)
    ->Iterations(25)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
