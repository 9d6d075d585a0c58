// The opening of the settings dialog in a whole frame, from the command until all of it is painted: for the first time,
// when it is created, and again, when it is only shown. Runs without a display with QT_QPA_PLATFORM=offscreen; the
// results are wall-clock times.

#include "platform/Folders.h"
#include "properties/frmProperties.h"
#include "settings/registry/SqliteRegistry.h"
#include "shell/frame/FrameServices.h"
#include "shell/frame/frmMain.h"
#include "widgets/QtPrompts.h"
#include "workspace/host/WorkspaceServices.h"
#include "workspace/panel/ucExplorer.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTemporaryDir>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

constexpr double NanosecondsOfASecond = 1e9;

/// A frame on the screen with the installed languages and a store on the disk.
struct Shown {
    QTemporaryDir own;
    QtPrompts prompts;
    SqliteRegistry registry{own.filePath(u"registry.db"_qs)};
    frmMain frame{{prompts,
                   registry,
                   [](const WorkspaceServices& services) -> PanelLink& { return *new ucExplorer(services); },
                   {},
                   {},
                   own.path(),
                   shareFolder()}};

    Shown() {
        frame.Load();
        frame.show();
        QApplication::processEvents();
    }
};

/// Measures one opening, and closes the dialog when it has been painted.
class Opening : public QObject {
 public:
    explicit Opening(frmMain& frame) : m_command(frame.findChild<QAction*>(u"mnuFileProperties"_qs)) {
        qApp->installEventFilter(this);
    }

    double seconds() {
        m_painted = false;
        m_clock.start();
        m_command->trigger();
        return static_cast<double>(m_taken) / NanosecondsOfASecond;
    }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* dialog = qobject_cast<frmProperties*>(watched);
        if (dialog != nullptr && event->type() == QEvent::Paint && !m_painted) {
            m_painted = true;
            // The children are painted in the same pass.
            QTimer::singleShot(0, dialog, [this, dialog] {
                m_taken = m_clock.nsecsElapsed();
                dialog->reject();
            });
        }
        return false;
    }

 private:
    QAction* m_command;
    QElapsedTimer m_clock;
    qint64 m_taken = 0;
    bool m_painted = false;
};

void openForTheFirstTime(benchmark::State& state) {
    for (auto _ : state) {
        auto shown = std::make_unique<Shown>();
        state.SetIterationTime(Opening(shown->frame).seconds());
    }
}

void openAgain(benchmark::State& state) {
    Shown shown;
    Opening opening(shown.frame);
    opening.seconds();
    for (auto _ : state)
        state.SetIterationTime(opening.seconds());
}

}  // namespace

BENCHMARK(openForTheFirstTime)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(15);
BENCHMARK(openAgain)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(50);

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
