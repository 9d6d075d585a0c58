#pragma once

#include <algorithm>
#include <chrono>

/// How long to wait before something that failed is tried again: twice as long each time, up to a limit. A plain value.
class RetryDelay {
 public:
    RetryDelay(std::chrono::milliseconds first, std::chrono::milliseconds longest)
        : m_first(first), m_longest(longest), m_next(first) {}

    std::chrono::milliseconds next() {
        const auto now = std::min(m_next, m_longest);
        m_next = now * 2;
        return now;
    }
    void reset() { m_next = m_first; }

 private:
    std::chrono::milliseconds m_first;
    std::chrono::milliseconds m_longest;
    std::chrono::milliseconds m_next;
};
