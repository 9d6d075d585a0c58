#pragma once

#include <chrono>
#include <random>

/// How much is tried: a part of all trials, until a time. Owned by main. Whether something is found must not depend on
/// how fast the machine is, so a short run is limited by its part alone.
class Effort {
 public:
    using Clock = std::chrono::steady_clock;

    Effort(int oneOf, bool isLong, unsigned seed) : m_oneOf(oneOf), m_isLong(isLong), m_random(seed) {}

    /// Whether this trial is one of the part.
    bool takes() { return m_oneOf == 1 || m_random() % static_cast<unsigned>(m_oneOf) == 0; }
    bool isLong() const { return m_isLong; }
    std::mt19937& random() { return m_random; }

    void setEnd(Clock::time_point end) { m_end = end; }
    bool isOver() const { return m_isLong && Clock::now() >= m_end; }

 private:
    int m_oneOf;
    bool m_isLong;
    std::mt19937 m_random;
    Clock::time_point m_end = Clock::time_point::max();
};
