#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>

/// Passes the parts of a text from the thread that reads them to the one that stores them, a few at a time. The writer
/// waits while all places are full, the reader while all are empty.
class PartQueue {
 public:
    /// False when the reader has stopped.
    bool put(std::string_view part);
    /// The writer has no more.
    void close();

    /// The next part, valid until the next call; an empty one at the end.
    std::string_view next();
    /// The reader needs no more.
    void giveUp();

 private:
    static constexpr std::size_t Places = 8;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::array<std::string, Places> m_parts;
    std::size_t m_put = 0;
    std::size_t m_taken = 0;
    bool m_holding = false;  ///< the reader still uses the part in front
    bool m_closed = false;
    bool m_givenUp = false;
};
