#include "hex/bytes/WorkingCopy.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "recovery/saves/SaveRecords.h"
#include "recovery/saves/SaveRecovery.h"
#include "settings/desktop/ShellIntegration.h"
#include "settings/registry/SqliteRegistry.h"
#include "shell/commands/RoomsToCome.h"
#include "shell/frame/frmMain.h"
#include "shell/start/CommandLine.h"
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

/// The process's own duties. Passing paths to a running instance is still to come: no running instance is ever found.
class Program : public StartDuties {
 public:
    Program(char* name, QString tail) : m_arguments{name, nullptr}, m_tail(std::move(tail)) {}

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
    bool previousInstanceRuns() override { return false; }
    bool handOver(const QString&) override { return false; }

    int runFrame() override {
        SaveRecovery(SaveRecords::saveRecordFolder()).run();
        SaveRecords saveRecords;
        WriteWitness::setOfProcess(&saveRecords);
        int count = 1;
        QApplication application(count, m_arguments);
        QApplication::setApplicationName(u"quillmark"_qs);
        QApplication::setApplicationDisplayName(QString());
        PlaceholderColour::follow();
        SqliteRegistry registry(registryPath());
        QtPrompts prompts;
        RoomsToCome rooms;
        frmMain frame({prompts, registry, makeExplorer, rooms, m_tail, {}});
        frame.Load();
        frame.show();
        QTimer::singleShot(SweepDelay, &frame, [] { WorkingCopy::removeAbandoned(); });
        return QApplication::exec();
    }

 private:
    char* m_arguments[2];
    QString m_tail;
};

}  // namespace

int main(int count, char** arguments) {
    forgetRelativeFolders();
    const QString tail = CommandLine::tailOf(count, arguments);
    char noName[] = "quillmark";
    Program program(count > 0 ? arguments[0] : noName, tail);
    return runMain(tail, {[](const QString& path) { return IsFolderPath(path); }, QDir::currentPath()}, program);
}
