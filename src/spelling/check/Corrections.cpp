#include "spelling/check/Corrections.h"

#include <algorithm>

void Corrections::add(qsizetype position, qsizetype length, const QString& text) {
    m_all.push_back({position, length, text});
}

QString Corrections::appliedTo(QStringView text, qsizetype from, qsizetype to) const {
    auto each = std::ranges::lower_bound(m_all, from, {}, &Correction::position);
    QString result;
    result.reserve(to - from);
    for (; each != m_all.end() && each->end() <= to; ++each) {
        result.append(text.mid(from, each->position - from));
        result.append(each->text);
        from = each->end();
    }
    return result.append(text.mid(from, to - from));
}

qsizetype Corrections::movedPosition(qsizetype position) const {
    qsizetype shift = 0;
    for (const Correction& each : m_all) {
        if (each.position >= position)
            break;
        if (position < each.end())
            return each.position + shift + std::min(position - each.position, each.text.size());
        shift += each.text.size() - each.length;
    }
    return position + shift;
}
