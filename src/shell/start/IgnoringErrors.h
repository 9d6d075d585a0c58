#pragma once

/// Runs the call and goes on whatever it throws: what it would have brought is missing, and nobody is told. Commands,
/// and the single statements of a procedure that goes on after a failed one, run by it.
template <typename Call>
void ignoringErrors(const Call& call) {
    try {
        call();
    } catch (...) {
        // The frame stays as it was.
    }
}
