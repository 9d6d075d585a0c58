#pragma once

#include <functional>
#include <span>

/// One step of a sequence, by name.
struct FrameStep {
    const char* name;
    std::function<void()> run;
};

/// Runs the steps in their order; `noted`, which may be empty, is called with the name of each as it begins. A step
/// that throws is ended, and the next one runs.
void runSteps(std::span<const FrameStep> steps, const std::function<void(const char* name)>& noted);
