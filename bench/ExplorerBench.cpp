// The cost of the file explorer: a folder of 100,000 files shown and scrolled to its end, beside `ls -lU` of the same
// folder; the same sorted by date; a node of 1,000 folders opened. Runs without a display with
// QT_QPA_PLATFORM=offscreen; the results are wall-clock times.

#include "widgets/QtPrompts.h"
#include "workspace/files/Disk.h"
#include "workspace/files/FileListModel.h"
#include "workspace/files/FileListView.h"
#include "workspace/files/FolderTree.h"
#include "workspace/files/FolderTreeModel.h"
#include "workspace/files/FolderTreeView.h"
#include "workspace/lists/FolderKey.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPixmap>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int ManyFiles = 100'000;
constexpr int ManyFolders = 1'000;

/// A folder with the files, below it one with the folders.
QString folderOfFiles() {
    static const QTemporaryDir folder;
    static bool isMade = false;
    if (isMade)
        return folder.path();
    isMade = true;
    for (int n = 0; n < ManyFiles; ++n)
        QFile(folder.filePath(u"file %1.txt"_qs.arg(n))).open(QFile::WriteOnly);
    for (int n = 0; n < ManyFolders; ++n)
        QDir(folder.path()).mkpath(u"folders/%1"_qs.arg(n));
    return folder.path();
}

struct Shown {
    FileListView view;
    FileListModel model{Disk::system()};

    Shown() {
        view.setModel(&model);
        model.setModifiedShown(true);
        model.setSystemIcons(true);
        view.resize(300, 500);
        view.show();
    }
    void load() {
        model.load(folderOfFiles(), {});
        while (model.isLoading())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    void paint() { benchmark::DoNotOptimize(view.grab()); }
};

void showAndScrollToTheEnd(benchmark::State& state) {
    folderOfFiles();
    for (auto _ : state) {
        Shown shown;
        shown.load();
        shown.paint();
        shown.view.scrollToBottom();
        shown.paint();
        if (shown.model.rowCount() != ManyFiles)
            state.SkipWithError("not all files are shown");
    }
}

void listWithLs(benchmark::State& state) {
    const QString folder = folderOfFiles();
    for (auto _ : state) {
        QProcess list;
        list.setStandardOutputFile(QProcess::nullDevice());
        list.start(u"ls"_qs, {u"-lU"_qs, folder});
        list.waitForFinished(-1);
    }
}

void sortByDate(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Shown shown;
        shown.load();
        bool isSorted = false;
        QObject::connect(&shown.model, &FileListModel::dataChanged, &shown.model, [&] { isSorted = true; });
        state.ResumeTiming();
        shown.model.sort(FileListModel::ModifiedColumn, Qt::DescendingOrder);
        while (!isSorted)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        shown.paint();
    }
}

void openNode(benchmark::State& state) {
    const QString path = folderOfFiles() + u"/folders"_qs;
    QtPrompts prompts;
    for (auto _ : state) {
        state.PauseTiming();
        FolderTreeView view;
        FolderTree tree(view, prompts, Disk::system(), nullptr);
        view.resize(300, 500);
        view.show();
        const QModelIndex node = tree.model().addRoot(folderKey(path), u"folders"_qs, true);
        benchmark::DoNotOptimize(view.grab());
        state.ResumeTiming();
        view.expand(node);
        benchmark::DoNotOptimize(view.grab());
        if (tree.model().rowCount(node) != ManyFolders)
            state.SkipWithError("not all folders are there");
    }
}

}  // namespace

BENCHMARK(showAndScrollToTheEnd)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(listWithLs)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(sortByDate)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(openNode)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
