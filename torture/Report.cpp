#include "Report.h"

#include <cstdio>

namespace {

/// So many of a scene are printed.
constexpr int MostOfAScene = 5;

}  // namespace

void Report::count(const char* kind, qint64 number) {
    const std::lock_guard lock(m_mutex);
    m_counts[kind] += number;
}

qint64 Report::number(const char* kind) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_counts.find(kind);
    return found == m_counts.end() ? 0 : found->second;
}

void Report::fault(const QByteArray& scene, const QByteArray& what) {
    const std::lock_guard lock(m_mutex);
    ++m_faults;
    if (++m_ofScene[scene] <= MostOfAScene)
        std::printf("FAULT %s: %s\n", scene.constData(), what.constData());
    std::fflush(stdout);
}

void Report::print() const {
    for (const auto& [kind, number] : m_counts)
        std::printf("%12lld %s\n", static_cast<long long>(number), kind.constData());
    for (const auto& [scene, number] : m_ofScene)
        std::printf("%12d broken promises in %s\n", number, scene.constData());
    std::printf("%12lld broken promises in all\n", static_cast<long long>(m_faults));
}
