// The cost of the search results: 1,000,000 matches in 100,000 files are added in portions with the event loop between
// them, and then opened, closed, checked, removed and cleared, each with the picture that follows; and the memory for a
// match when all nodes are open. Runs without a display with QT_QPA_PLATFORM=offscreen; the results are wall-clock
// times.

#include "search/engine/FileMatches.h"
#include "search/results/ucSearchResults.h"
#include "widgets/QtPrompts.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QTreeView>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

namespace {

constexpr int Files = 100'000;
constexpr int MatchesOfAFile = 10;
constexpr int Portion = 1'000;  ///< files that are added before the event loop runs
constexpr double MostBytes = 400;

struct FoundFile {
    QString path;
    QString title;
    FileMatches matches;  ///< each in a line of its own
};

FoundFile foundFile(int number) {
    FoundFile file;
    file.path = u"/home/user/project/source/folder%1/component/file_%2.cpp"_qs.arg(number / 100).arg(number);
    file.title = u"Find     10 'search'  in '%1'"_qs.arg(file.path);
    for (int n = 0; n < MatchesOfAFile; ++n) {
        file.matches.addLine(100 * n + 1, u"    const auto found = search(text, pattern, options);  // %1"_qs.arg(n));
        file.matches.addMatch({4'000 * n, 6, 0, 23, 6});
    }
    return file;
}

std::vector<FoundFile> foundFiles() {
    std::vector<FoundFile> files;
    files.reserve(Files);
    for (int n = 0; n < Files; ++n)
        files.push_back(foundFile(n));
    return files;
}

qint64 heapInUse() {
    const struct mallinfo2 now = mallinfo2();
    return static_cast<qint64>(now.uordblks + now.hblkhd);
}

struct Shown {
    QtPrompts prompts;
    ucSearchResults results{prompts};

    Shown() {
        results.resize(900, 300);
        results.show();
    }
    QTreeView& tree() const { return *results.findChild<QTreeView*>(u"t1"_qs); }
    void paint() const {
        QApplication::processEvents();
        benchmark::DoNotOptimize(tree().viewport()->grab());
    }
    /// Returns the longest time in milliseconds for which the event loop did not run.
    double fill(std::vector<FoundFile> files) {
        double longest = 0;
        QElapsedTimer turn;
        turn.start();
        for (int n = 0; n < Files; ++n) {
            FoundFile& file = files[static_cast<size_t>(n)];
            results.addMatches(file.path, std::move(file.matches));
            results.SetNodeText(file.path, file.title);
            if ((n + 1) % Portion == 0) {
                QApplication::processEvents();
                longest = std::max(longest, static_cast<double>(turn.nsecsElapsed()) / 1e6);
                turn.start();
            }
        }
        return longest;
    }
    void run(const char* command) {
        results.runCommand(QLatin1String(command));
        paint();
    }
};

void add(benchmark::State& state) {
    double longest = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto shown = std::make_unique<Shown>();
        std::vector<FoundFile> files = foundFiles();
        state.ResumeTiming();
        longest = std::max(longest, shown->fill(std::move(files)));
        state.PauseTiming();
        if (shown->tree().model()->rowCount() != Files)
            state.SkipWithError("not all files are listed");
        shown.reset();
        state.ResumeTiming();
    }
    state.counters["longest turn ms"] = longest;
}

void memoryOpened(benchmark::State& state) {
    for (auto _ : state) {
        const qint64 before = heapInUse();
        Shown shown;
        shown.fill(foundFiles());
        shown.run("mnuExpandAllNodes");
        const double bytes = static_cast<double>(heapInUse() - before) / (double(Files) * MatchesOfAFile);
        state.counters["bytes a match"] = bytes;
        if (bytes > MostBytes)
            state.SkipWithError("a match takes too many bytes");
    }
}

/// Every second file and every second match of the others.
void checkHalf(QAbstractItemModel& model) {
    for (int row = 0; row < Files; ++row) {
        const QModelIndex file = model.index(row, 0);
        if (row % 2 == 0)
            model.setData(file, Qt::Checked, Qt::CheckStateRole);
        for (int match = 0; match < MatchesOfAFile; match += 2)
            model.setData(model.index(match, 0, file), Qt::Checked, Qt::CheckStateRole);
    }
}

/// The time of `measured` and of what the view does then, after `before`.
template <typename Before, typename Measured>
void measure(benchmark::State& state, Before before, Measured measured) {
    for (auto _ : state) {
        state.PauseTiming();
        auto shown = std::make_unique<Shown>();
        shown->fill(foundFiles());
        before(*shown);
        state.ResumeTiming();
        measured(*shown);
        state.PauseTiming();
        shown.reset();
        state.ResumeTiming();
    }
}

void command(benchmark::State& state, std::initializer_list<const char*> before, const char* measured) {
    measure(
        state,
        [&](Shown& shown) {
            for (const char* each : before)
                shown.run(each);
        },
        [&](Shown& shown) { shown.run(measured); });
}

void expandAll(benchmark::State& state) {
    command(state, {}, "mnuExpandAllNodes");
}

void collapseAll(benchmark::State& state) {
    command(state, {"mnuExpandAllNodes"}, "mnuCollapseAllNodes");
}

void checkAll(benchmark::State& state) {
    command(state, {"mnuExpandAllNodes"}, "mnuCheckNodes");
}

void uncheckAll(benchmark::State& state) {
    command(state, {"mnuExpandAllNodes", "mnuCheckNodes"}, "mnuUncheckNodes");
}

void removeAll(benchmark::State& state) {
    command(state, {"mnuExpandAllNodes", "mnuCheckNodes"}, "mnuRemoveSelectedNodes");
}

void removeHalf(benchmark::State& state) {
    measure(
        state,
        [](Shown& shown) {
            shown.run("mnuExpandAllNodes");
            checkHalf(*shown.tree().model());
            shown.paint();
        },
        [](Shown& shown) { shown.run("mnuRemoveSelectedNodes"); });
}

void clear(benchmark::State& state) {
    measure(
        state, [](Shown& shown) { shown.run("mnuExpandAllNodes"); },
        [](Shown& shown) {
            shown.results.ClearTree();
            shown.paint();
        });
}

}  // namespace

BENCHMARK(add)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(memoryOpened)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(expandAll)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(collapseAll)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(checkAll)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(uncheckAll)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(removeAll)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(removeHalf)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(clear)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
