// The cost of a project: 200 documents of 10 KB opened from a project file, beside the same files opened one by one, in
// a whole frame with its side panel. Runs without a display with QT_QPA_PLATFORM=offscreen; the results are wall-clock
// times. The window lives meanwhile, which the longest wait of an event says.

#include "settings/registry/MemoryRegistry.h"
#include "shell/frame/FrameServices.h"
#include "shell/frame/frmMain.h"
#include "widgets/QtPrompts.h"
#include "workspace/host/WorkspaceServices.h"
#include "workspace/panel/ucExplorer.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

constexpr int Documents = 200;
constexpr int Bytes = 10'000;

/// Text files of 10 KB, and a project in which all of them are open.
class Files {
 public:
    Files() {
        QByteArray project = "<<OPEN FILE>>\r\n";
        for (int n = 0; n < Documents; ++n) {
            m_paths << m_folder.filePath(u"%1.txt"_qs.arg(n));
            write(m_paths.last(), QByteArray("some words of a line\n").repeated(Bytes / 21));
            project += m_paths.last().toUtf8() + "\tTrue\tFalse\t0\t300\t300\t9000\t6000\r\n";
        }
        write(projectPath(), project);
    }
    const QStringList& paths() const { return m_paths; }
    QString projectPath() const { return m_folder.filePath(u"all.qmp"_qs); }

 private:
    static void write(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        if (file.open(QFile::WriteOnly))
            file.write(bytes);
    }

    QTemporaryDir m_folder;
    QStringList m_paths;
};

const Files& files() {
    static const Files made;
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
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer,
                         [this] { m_longest = std::max(m_longest, m_clock.restart()); });
        m_timer.start(0);
    }
    double milliseconds() const { return static_cast<double>(m_longest); }

 private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_longest = 0;
};

template <typename Open>
void measure(benchmark::State& state, Open open) {
    files();
    double longest = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto shown = std::make_unique<Shown>();
        const LongestWait wait;
        state.ResumeTiming();
        open(shown->frame);
        QApplication::processEvents();
        state.PauseTiming();
        longest = std::max(longest, wait.milliseconds());
        if (!shown->frame.FindOpenDocument(files().paths().last()))
            state.SkipWithError("not all documents are open");
        shown.reset();
        state.ResumeTiming();
    }
    state.counters["longest_wait_ms"] = longest;
}

void openOneByOne(benchmark::State& state) {
    measure(state, [](frmMain& frame) {
        for (const QString& path : files().paths())
            frame.OpenFile(path, 0, false, true);
    });
}

void openProject(benchmark::State& state) {
    measure(state, [](frmMain& frame) { frame.OpenProject(files().projectPath()); });
}

}  // namespace

BENCHMARK(openOneByOne)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(openProject)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
