#include "text/lines/clsConcat.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype Spare = 15000;

}  // namespace

void clsConcat::ReInit() {
    m_buffer.clear();
    m_used = 0;
}

void clsConcat::SetString(const QString& pStr) {
    m_buffer = pStr + QString(Spare, QChar(0));
}

void clsConcat::SConcat(QStringView pStr) {
    if (m_used + pStr.size() >= m_buffer.size())
        grow(pStr.size());
    std::ranges::copy(pStr, m_buffer.begin() + m_used);
    m_used += pStr.size();
}

/// If the memory grew by the same steps as the size, each step would copy the whole text; therefore the memory doubles.
void clsConcat::grow(qsizetype added) {
    const qsizetype step = added > m_used ? added : Spare;
    const qsizetype size = std::max(m_buffer.size() + step, m_used + added);
    if (size > m_buffer.capacity())
        m_buffer.reserve(std::max(size, 2 * m_buffer.capacity()));
    m_buffer.resize(size, QChar(0));
}

QString clsConcat::GetString() {
    const qsizetype used = std::min(m_used, m_buffer.size());
    m_buffer.truncate(used);
    return std::exchange(m_buffer, {});
}
