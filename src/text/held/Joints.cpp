#include "text/held/Joints.h"

#include "text/codec/Utf8Text.h"

#include <algorithm>

namespace {

/// How many bytes before the end of a piece are searched for a better place to cut.
constexpr qint64 CutSearch = 256;

bool isWordByte(char c) {
    const auto u = static_cast<unsigned char>(c);
    return u >= 0x80 || (u >= '0' && u <= '9') || (u >= 'A' && u <= 'Z') || (u >= 'a' && u <= 'z') || u == '_';
}

bool isJointIn(std::string_view text, std::size_t at, char next, JointKind kind) {
    if (text[at] != jointByte(kind))
        return false;
    if (kind != JointKind::LoneCr)
        return true;
    return (at + 1 < text.size() ? text[at + 1] : next) != '\n';
}

}  // namespace

char jointByte(JointKind kind) {
    return kind == JointKind::AnyCr || kind == JointKind::LoneCr ? '\r' : '\n';
}

void LineEndsSeen::look(std::string_view run, char next) {
    for (std::size_t at = run.find('\r'); at != std::string_view::npos && !(cr && crLf); at = run.find('\r', at + 1))
        ((at + 1 < run.size() ? run[at + 1] : next) == '\n' ? crLf : cr) = true;
    for (std::size_t at = run.find('\n'); at != std::string_view::npos && !lf; at = run.find('\n', at + 1))
        lf = at == 0 || run[at - 1] != '\r';
}

JointKind jointKindFor(LineEndsSeen seen) {
    if (!seen.cr && !seen.crLf)
        return JointKind::AnyCr;
    if (seen.crLf && !seen.cr && !seen.lf)
        return JointKind::LoneCr;
    if (seen.cr && !seen.crLf && !seen.lf)
        return JointKind::AnyLf;
    return JointKind::Listed;
}

qint64 pieceEnd(std::string_view line) {
    qint64 cut = PieceLength;
    while (cut > 1 && isContinuation(line[static_cast<std::size_t>(cut)]))
        --cut;
    for (qint64 at = cut; at > cut - CutSearch; --at) {
        const auto here = static_cast<std::size_t>(at);
        if (!isWordByte(line[here - 1]) && isWordByte(line[here]))
            return at;
    }
    return cut;
}

void JointList::reset(JointKind kind, std::vector<qint64> offsets) {
    m_kind = kind;
    m_offsets = std::move(offsets);
    m_stepAt = m_offsets.size();
    m_step = 0;
}

/// Moves m_stepAt to this number: applies m_step to the offsets before it, and takes it back from those at and after
/// it.
void JointList::moveStep(std::size_t number) const {
    for (; m_stepAt < number; ++m_stepAt)
        m_offsets[m_stepAt] += m_step;
    for (; m_stepAt > number; --m_stepAt)
        m_offsets[m_stepAt - 1] -= m_step;
    if (m_stepAt == m_offsets.size())
        m_step = 0;
}

bool JointList::isJoint(qint64 byte) const {
    const auto number = static_cast<std::size_t>(before(byte));
    return number < m_offsets.size() && offsetAt(number) == byte;
}

qint64 JointList::before(qint64 byte) const {
    std::size_t low = 0;
    std::size_t high = m_offsets.size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (offsetAt(middle) < byte)
            low = middle + 1;
        else
            high = middle;
    }
    return static_cast<qint64>(low);
}

void JointList::textInserted(qint64 at, std::string_view text, char next) {
    if (m_kind == JointKind::None || m_kind == JointKind::Listed)
        return;
    const auto place = static_cast<std::size_t>(before(at));
    moveStep(place);
    m_step += static_cast<qint64>(text.size());

    std::vector<qint64> added;
    const char joint = jointByte(m_kind);
    for (std::size_t found = text.find(joint); found != std::string_view::npos; found = text.find(joint, found + 1)) {
        if (isJointIn(text, found, next, m_kind))
            added.push_back(at + static_cast<qint64>(found));
    }
    m_offsets.insert(m_offsets.begin() + static_cast<std::ptrdiff_t>(place), added.begin(), added.end());
    m_stepAt += added.size();
}

void JointList::textDeleted(qint64 at, qint64 length) {
    const auto first = static_cast<std::size_t>(before(at));
    const auto last = static_cast<std::size_t>(before(at + length));
    moveStep(last);
    m_step -= length;
    m_offsets.erase(m_offsets.begin() + static_cast<std::ptrdiff_t>(first),
                    m_offsets.begin() + static_cast<std::ptrdiff_t>(last));
    m_stepAt -= last - first;
}
