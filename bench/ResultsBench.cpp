// The cost of the search results: 1,000,000 matches in 100,000 files are added in portions with the event loop between
// them, and then opened, checked, removed and cleared, each with the picture that follows; and the memory for a match
// when all nodes are open. Runs without a display with QT_QPA_PLATFORM=offscreen; the results are wall-clock times.

#include "search/engine/FileMatches.h"
#include "search/results/ucSearchResults.h"
#include "widgets/QtPrompts.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QStringList>
#include <QTreeView>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <initializer_list>
#include <utility>
#include <vector>

namespace {

constexpr int Files = 100'000;
constexpr int MatchesOfAFile = 10;
constexpr int Portion = 1'000;

QString pathOf(int number) {
    return u"/home/user/project/source/folder%1/component/file_%2.cpp"_qs.arg(number / 100).arg(number);
}

/// With one match in each line.
FileMatches matchesOfAFile() {
    FileMatches matches;
    for (int n = 0; n < MatchesOfAFile; ++n) {
        matches.addLine(100 * n + 1, u"    const auto found = search(text, pattern, options);  // %1"_qs.arg(n));
        matches.addMatch({4'000 * n, 6, 0, 23, 6});
    }
    return matches;
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
    /// Times are in seconds, and without the making of what is added.
    struct Filling {
        double all = 0;
        double longestTurn = 0;  ///< for so long the event loop did not run
    };
    Filling fill() {
        Filling times;
        for (int from = 0; from < Files; from += Portion) {
            QStringList files;
            std::vector<FileMatches> matches;
            for (int n = from; n < from + Portion; ++n) {
                files.append(pathOf(n));
                matches.push_back(matchesOfAFile());
            }
            QElapsedTimer turn;
            turn.start();
            for (int n = 0; n < Portion; ++n) {
                results.addMatches(files.at(n), std::move(matches[static_cast<size_t>(n)]));
                results.SetNodeText(files.at(n), u"Find     10 'search'  in '%1'"_qs.arg(files.at(n)));
            }
            QApplication::processEvents();
            const double time = static_cast<double>(turn.nsecsElapsed()) / 1e9;
            times.all += time;
            times.longestTurn = std::max(times.longestTurn, time);
        }
        return times;
    }
    void run(const char* command) {
        results.runCommand(QLatin1String(command));
        paint();
    }
};

void add(benchmark::State& state) {
    double longest = 0;
    for (auto _ : state) {
        Shown shown;
        const Shown::Filling times = shown.fill();
        state.SetIterationTime(times.all);
        longest = std::max(longest, times.longestTurn);
        if (shown.tree().model()->rowCount() != Files)
            state.SkipWithError("not all files are listed");
    }
    state.counters["longest turn ms"] = longest * 1000;
}

void memoryOpened(benchmark::State& state) {
    double bytes = 0;
    for (auto _ : state) {
        const qint64 before = heapInUse();
        Shown shown;
        shown.fill();
        shown.run("mnuExpandAllNodes");
        bytes = static_cast<double>(heapInUse() - before) / (double(Files) * MatchesOfAFile);
    }
    state.counters["bytes a match"] = bytes;
}

/// The time of the last command.
void command(benchmark::State& state, std::initializer_list<const char*> before, const char* measured) {
    for (auto _ : state) {
        state.PauseTiming();
        {
            Shown shown;
            shown.fill();
            for (const char* each : before)
                shown.run(each);
            state.ResumeTiming();
            shown.run(measured);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

/// Every second file and every second match of the others is removed, with all nodes open.
void removeHalf(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        {
            Shown shown;
            shown.fill();
            shown.run("mnuExpandAllNodes");
            QAbstractItemModel& model = *shown.tree().model();
            for (int row = 0; row < Files; ++row) {
                const QModelIndex file = model.index(row, 0);
                if (row % 2 == 0)
                    model.setData(file, Qt::Checked, Qt::CheckStateRole);
                for (int match = 0; match < MatchesOfAFile; match += 2)
                    model.setData(model.index(match, 0, file), Qt::Checked, Qt::CheckStateRole);
            }
            state.ResumeTiming();
            shown.run("mnuRemoveSelectedNodes");
            state.PauseTiming();
            if (model.rowCount() != Files / 2)
                state.SkipWithError("not every second file is removed");
        }
        state.ResumeTiming();
    }
}

void clear(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        {
            Shown shown;
            shown.fill();
            shown.run("mnuExpandAllNodes");
            state.ResumeTiming();
            shown.results.ClearTree();
            shown.paint();
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

}  // namespace

BENCHMARK(add)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(3);
BENCHMARK(memoryOpened)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK_CAPTURE(command, expandAll, {}, "mnuExpandAllNodes")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(3);
BENCHMARK_CAPTURE(command, collapseAll, {"mnuExpandAllNodes"}, "mnuCollapseAllNodes")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(3);
BENCHMARK_CAPTURE(command, checkAll, {"mnuExpandAllNodes"}, "mnuCheckNodes")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(3);
BENCHMARK_CAPTURE(command, uncheckAll, {"mnuExpandAllNodes", "mnuCheckNodes"}, "mnuUncheckNodes")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(3);
BENCHMARK_CAPTURE(command, removeAll, {"mnuExpandAllNodes", "mnuCheckNodes"}, "mnuRemoveSelectedNodes")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(3);
BENCHMARK(removeHalf)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(clear)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
