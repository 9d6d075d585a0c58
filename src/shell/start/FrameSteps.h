#pragma once

#include "shell/start/IgnoringErrors.h"

#include <functional>
#include <span>

/// Steps of a sequence by name, run in their order. A step that throws is passed over and does not keep the next one
/// from running.
template <typename Owner>
struct FrameStep {
    const char* name;
    void (Owner::*run)();
};

template <typename Owner>
void runSteps(std::span<const FrameStep<Owner>> steps, Owner& owner,
              const std::function<void(const char* name)>& noted = {}) {
    for (const FrameStep<Owner>& step : steps) {
        if (noted)
            noted(step.name);
        ignoringErrors([&] { (owner.*step.run)(); });
    }
}
