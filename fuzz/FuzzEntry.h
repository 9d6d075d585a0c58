#pragma once

// What every fuzz target begins with: its entry, which the fuzzer calls with each input, and the way to report a fault.

#include <QByteArrayView>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// A fault ends the run, and the fuzzer keeps the input.
inline void require(bool condition) {
    if (!condition)
        std::abort();
}

inline QByteArrayView viewOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
