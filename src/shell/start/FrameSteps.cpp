#include "shell/start/FrameSteps.h"

#include "shell/start/IgnoringErrors.h"

void runSteps(std::span<const FrameStep> steps, const std::function<void(const char* name)>& noted) {
    for (const FrameStep& step : steps) {
        if (noted)
            noted(step.name);
        ignoringErrors(step.name, step.run);
    }
}
