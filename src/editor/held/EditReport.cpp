#include "editor/held/EditReport.h"

#include "editor/held/EditObserver.h"
#include "text/held/TextMap.h"

#include <utility>

void EditReport::observe(EditObserver* observer) {
    settle();
    m_observer = observer;
}

void EditReport::beforeInsert(qint64 at, qint64 length) {
    if (m_observer == nullptr)
        return;
    settle();
    m_observer->aboutToEdit();
    m_insertedAt = at;
    m_insertedLength = length;
}

void EditReport::beforeDelete(qint64 at, qint64 length) {
    if (m_observer == nullptr)
        return;
    settle();
    const JointList& joints = m_map.joints();
    const qint64 before = joints.before(at);
    const qint64 plainLength = length - (joints.before(at + length) - before);
    if (plainLength == 0)
        return;
    m_observer->aboutToEdit();
    m_observer->removed(at - before, plainLength);
}

/// The gap of the text is at the end of the insertion, so that reading it is cheap.
void EditReport::settle() {
    const qint64 length = std::exchange(m_insertedLength, 0);
    if (length == 0 || m_observer == nullptr)
        return;
    const std::string_view plain = withoutJoints(m_insertedAt, m_text.range(m_insertedAt, length));
    if (!plain.empty())
        m_observer->inserted(m_insertedAt - m_map.joints().before(m_insertedAt), plain);
}

/// The list of joints is asked, and not the bytes: in a text with CR LF as joints are CR, an edit may remove the LF of
/// a line end, and its CR stays a part of the text.
std::string_view EditReport::withoutJoints(qint64 from, std::string_view bytes) {
    const JointList& joints = m_map.joints();
    const qint64 to = from + static_cast<qint64>(bytes.size());
    const auto end = static_cast<std::size_t>(joints.before(to));
    auto number = static_cast<std::size_t>(joints.before(from));
    if (number == end)
        return bytes;
    m_scratch.clear();
    qint64 at = from;
    for (; number < end; ++number) {
        const qint64 joint = joints.offsetAt(number);
        m_scratch += bytes.substr(static_cast<std::size_t>(at - from), static_cast<std::size_t>(joint - at));
        at = joint + 1;
    }
    m_scratch += bytes.substr(static_cast<std::size_t>(at - from));
    return m_scratch;
}

void EditReport::loaded() {
    if (m_observer != nullptr)
        m_observer->loaded();
}

void EditReport::saved() {
    settle();
    if (m_observer != nullptr)
        m_observer->saved();
}
