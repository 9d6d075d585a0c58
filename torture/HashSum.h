#pragma once

#include "WeakDisk.h"

#include <QByteArray>

#include <cstdint>
#include <memory>

struct XXH3_state_s;

/// A number of all that was added: two different rows have the same one by a chance of one in 2^64.
class HashSum {
 public:
    HashSum();

    /// With the length, so that "ab", "c" and "a", "bc" differ.
    void add(const QByteArray& bytes);
    void add(std::uint64_t number);
    std::uint64_t value() const;

 private:
    std::unique_ptr<XXH3_state_s, void (*)(XXH3_state_s*)> m_state;
};

/// A number of all that can be found on a disk in this state: the names, what they lead to, and the bytes. Files that
/// no name leads to, or only one in a folder that is not there, do not count.
std::uint64_t hashOf(const WeakDisk::State& state);
/// The same with the times of the files.
std::uint64_t hashWithTimes(const WeakDisk::State& state);
