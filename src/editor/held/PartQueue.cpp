#include "editor/held/PartQueue.h"

bool PartQueue::put(std::string_view part) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_put - m_taken < Places || m_givenUp; });
    if (m_givenUp)
        return false;
    std::string& place = m_parts[m_put % Places];
    lock.unlock();
    place.assign(part);  // the other thread does not access a place between the two marks
    lock.lock();
    ++m_put;
    m_changed.notify_all();
    return true;
}

void PartQueue::close() {
    const std::lock_guard lock(m_mutex);
    m_closed = true;
    m_changed.notify_all();
}

std::string_view PartQueue::next() {
    std::unique_lock lock(m_mutex);
    if (m_holding) {
        ++m_taken;
        m_changed.notify_all();
    }
    m_changed.wait(lock, [this] { return m_put > m_taken || m_closed; });
    m_holding = m_put > m_taken;
    return m_holding ? std::string_view(m_parts[m_taken % Places]) : std::string_view();
}

void PartQueue::giveUp() {
    const std::lock_guard lock(m_mutex);
    m_givenUp = true;
    m_changed.notify_all();
}
