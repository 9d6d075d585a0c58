#pragma once

#include "shell/start/CommandLine.h"

/// The actions that Main runs once the tail is read. The program supplies the real ones.
class StartDuties {
 public:
    virtual ~StartDuties() = default;

    /// Enters context menu and project file type into the desktop.
    virtual void RegisterShellExtension() = 0;
    virtual void UnregisterShellExtension() = 0;
    /// True only when another living process of this program runs as an instance.
    virtual bool previousInstanceRuns() = 0;
    /// Passes the paths of documents to the running instance. True: they are sent, and this process should end.
    virtual bool handOver(const QStringList& paths) = 0;
    /// Shows the frame and runs the event loop; returns the process's exit code.
    virtual int runFrame() = 0;
};

/// The process from its command line to its end; returns the exit code. A running instance is only searched for with a
/// plain document path: folders, lists, projects and "-d" start another one.
int runMain(const QString& tail, const CommandLine::Surroundings& around, StartDuties& duties);
