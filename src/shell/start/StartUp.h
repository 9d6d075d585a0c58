#pragma once

#include "shell/start/CommandLine.h"

/// What Main calls once it knows what the tail asks for. The program supplies the real one.
class StartDuties {
 public:
    virtual ~StartDuties() = default;

    /// Enters context menu and project file type into the desktop.
    virtual void RegisterShellExtension() = 0;
    virtual void UnregisterShellExtension() = 0;
    /// True only when another living process of this program runs as an instance.
    virtual bool previousInstanceRuns() = 0;
    /// Gives a document's path to the running instance. True: it has it, and this process is to end.
    virtual bool handOver(const QString& path) = 0;
    /// Shows the frame and runs the event loop; gives the process's exit code.
    virtual int runFrame() = 0;
};

/// The process from its command line to its end; gives the exit code. Only a plain document path ever looks for a
/// running instance: folders, lists, projects and "-d" begin a further one.
int runMain(const QString& tail, const CommandLine::Surroundings& around, StartDuties& duties);
