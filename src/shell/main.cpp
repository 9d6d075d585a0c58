#include "hex/bytes/WorkingCopy.h"
#include "platform/Folders.h"
#include "platform/InstanceLock.h"
#include "platform/Paths.h"
#include "recovery/journals/Journals.h"
#include "recovery/saves/SaveRecords.h"
#include "recovery/saves/SaveRecovery.h"
#include "settings/desktop/ShellIntegration.h"
#include "settings/registry/SqliteRegistry.h"
#include "shell/frame/frmMain.h"
#include "shell/recovery/SaveNotices.h"
#include "shell/start/CommandLine.h"
#include "shell/start/EndSignals.h"
#include "shell/start/HandOverEndpoint.h"
#include "shell/start/HandOverSender.h"
#include "shell/start/SessionEnd.h"
#include "shell/start/StartUp.h"
#include "widgets/PlaceholderColour.h"
#include "widgets/QtPrompts.h"
#include "workspace/panel/ucExplorer.h"

#include <QApplication>
#include <QDir>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <utility>

namespace {

/// Done once the window is shown and painted: nobody needs to wait for the removal of files that a killed process left
/// behind.
constexpr std::chrono::seconds SweepDelay(2);

/// So long an end from outside waits for the disk: in the thread of the window, in which a whole text of some hundred
/// megabytes may have to be written, and when that is busy.
constexpr std::chrono::milliseconds FlushTime(1'000);
constexpr std::chrono::milliseconds LastFlushTime(300);

PanelLink& makeExplorer(const WorkspaceServices& services) {
    return *new ucExplorer(services);  // the window owns it
}

QString registryPath() {
    return configFolder() + QLatin1String("/registry.db");
}

/// A message of a process without a window.
void writeToStandardError(const QString& text) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

/// The process's own duties.
class Program : public StartDuties {
 public:
    Program(char* name, QString tail, QStringList arguments)
        : m_name{name, nullptr}, m_tail(std::move(tail)), m_arguments(std::move(arguments)) {}

    void RegisterShellExtension() override {
        SqliteRegistry registry(registryPath());
        ShellIntegration desktop(registry, writeToStandardError);
        desktop.RegisterShellExtension();
        desktop.RegisterExtension(u"qmp"_qs, u"Quillmark Project"_qs, true, true);
    }
    void UnregisterShellExtension() override {
        SqliteRegistry registry(registryPath());
        ShellIntegration(registry, writeToStandardError).UnregisterShellExtension();
    }
    bool previousInstanceRuns() override {
        makeRuntimeFolder();  // without one there is no other instance to be found
        return m_sender.previousInstanceRuns();
    }
    bool handOver(const QStringList& paths) override { return m_sender.send(paths); }

    int runFrame() override {
        becomeInstance();
        SaveRecovery saveRecovery(SaveRecords::saveRecordFolder());
        const SaveRecovery::Summary completedSaves = saveRecovery.run();
        SaveNotices saveNotices;
        SaveRecords saveRecords;
        saveRecords.settling().setReport([&](const SaveRecovery::Summary& summary) { saveNotices.report(summary); });
        WriteWitness::setOfProcess(&saveRecords);
        int count = 1;
        QApplication application(count, m_name);
        QApplication::setApplicationName(u"quillmark"_qs);
        QApplication::setApplicationDisplayName(QString());
        PlaceholderColour::follow();
        SqliteRegistry registry(registryPath());
        QtPrompts prompts;
        Journals journals;
        FrameServices services{prompts, registry, makeExplorer, m_tail, {}};
        services.arguments = m_arguments;
        services.instanceLock = &m_lock;
        services.journals = &journals;
        services.saveNotices = &saveNotices;
        frmMain frame(services);
        EndSignals endSignals([&journals] { journals.flush(LastFlushTime); });
        QObject::connect(&endSignals, &EndSignals::requested, &frame,
                         [&](int signal) { endBy(signal, frame, journals); });
        const SessionEnd sessionEnd(
            [&] {
                frame.writeKept();
                journals.flush(FlushTime);
            },
            [&] { return endWithSession(frame, journals); });
        frame.Load();
        frame.show();
        saveNotices.report(completedSaves);
        QTimer::singleShot(SweepDelay, &frame, [&] {
            WorkingCopy::removeAbandoned();
            saveRecovery.removeOldAsides();
            journals.removeOldAsides();
        });
        return QApplication::exec();
    }

 private:
    static void endBy(int signal, frmMain& frame, Journals& journals) {
        frame.endFromOutside([signal, &journals] {
            journals.flush(FlushTime);
            EndSignals::endBy(signal);
        });
    }
    /// Once the frame is closed, the program ends by itself.
    static bool endWithSession(frmMain& frame, Journals& journals) {
        if (frame.hasEnded())
            return false;
        endBy(0, frame, journals);
        return true;
    }

    /// Before anything that takes time: a later start then waits for this one.
    void becomeInstance() {
        makeRuntimeFolder();
        if (!CommandLine::staysApart(m_tail))
            m_lock.tryToTake();
    }

    char* m_name[2];
    QString m_tail;
    QStringList m_arguments;
    InstanceLock m_lock{HandOverEndpoint::lockIn(runtimeFolder())};
    HandOverSender m_sender{m_lock, HandOverEndpoint::socketIn(runtimeFolder())};
};

}  // namespace

int main(int count, char** arguments) {
    forgetUselessFolders();
    const QString tail = CommandLine::tailOf(count, arguments);
    char noName[] = "quillmark";
    const QStringList parts = CommandLine::argumentsOf(count, arguments);
    Program program(count > 0 ? arguments[0] : noName, tail, parts);
    return runMain(tail, {IsFolderPath, QDir::currentPath(), fileExists, parts}, program);
}
