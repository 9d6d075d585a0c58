#pragma once

#include <exception>

/// Writes one line to standard error: a step has failed, and why.
void noteGivenUp(const char* step, const char* reason);

/// Calls the function and returns even if it throws: then its effect is missing, and a line on standard error with the
/// name of the step reports it. Commands, and the single statements of a procedure that continues after a failed one,
/// are run by it.
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
