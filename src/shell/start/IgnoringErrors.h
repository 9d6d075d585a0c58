#pragma once

#include <exception>

/// One line on standard error: a step was given up, and why.
void noteGivenUp(const char* step, const char* reason);

/// Runs the call and goes on whatever it throws: what it would have done is missing, and a line on standard error with
/// the name of the step says so. Commands, and the single statements of a procedure that goes on after a failed one,
/// run by it.
template <typename Call>
void ignoringErrors(const char* step, const Call& call) {
    try {
        call();
    } catch (const std::exception& error) {
        noteGivenUp(step, error.what());
    } catch (...) {
        noteGivenUp(step, "unknown error");
    }
}
