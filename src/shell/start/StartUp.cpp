#include "shell/start/StartUp.h"

int runMain(const QString& tail, const CommandLine::Surroundings& around, StartDuties& duties) {
    using Kind = CommandLine::MainOrder::Kind;
    const CommandLine::MainOrder order = CommandLine::readForMain(tail, around);
    switch (order.kind) {
        case Kind::Register:
            duties.RegisterShellExtension();
            return 0;
        case Kind::Unregister:
            duties.UnregisterShellExtension();
            return 0;
        case Kind::Document:
            if (duties.previousInstanceRuns() && duties.handOver(order.paths))
                return 0;
            break;
        case Kind::Run:
            break;
    }
    return duties.runFrame();
}
