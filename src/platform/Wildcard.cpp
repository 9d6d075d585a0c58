#include "platform/Wildcard.h"

#include <utility>

namespace {

/// Length in UTF-16 units of the character there.
qsizetype characterLength(QStringView name, qsizetype at) {
    const bool isPair = name.at(at).isHighSurrogate() && at + 1 < name.size() && name.at(at + 1).isLowSurrogate();
    return isPair ? 2 : 1;
}

}  // namespace

Wildcard::Wildcard(QString pattern) : m_pattern(std::move(pattern)) {
    if (m_pattern == u"*.*")
        m_pattern = u"*"_qs;
}

bool Wildcard::matches(QStringView name) const {
    if (name.startsWith(u'.'))
        return false;
    qsizetype at = 0;
    qsizetype inName = 0;
    qsizetype star = -1;  // the last "*" so far, and the first character after those that it stands for
    qsizetype afterStar = 0;
    while (inName < name.size()) {
        const QChar expected = at < m_pattern.size() ? m_pattern.at(at) : QChar();
        if (expected == u'*') {
            star = at++;
            afterStar = inName;
        } else if (at < m_pattern.size() && (expected == u'?' || expected == name.at(inName))) {
            inName += expected == u'?' ? characterLength(name, inName) : 1;
            ++at;
        } else if (star >= 0) {
            at = star + 1;
            afterStar += characterLength(name, afterStar);
            inName = afterStar;
        } else {
            return false;
        }
    }
    while (at < m_pattern.size() && m_pattern.at(at) == u'*')
        ++at;
    return at == m_pattern.size();
}
