#include "Report.h"

#include <cstdio>

namespace {

/// So many of a scene are printed.
constexpr int MostOfAScene = 5;

}  // namespace

void Report::fault(const QByteArray& scene, const QByteArray& what) {
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
