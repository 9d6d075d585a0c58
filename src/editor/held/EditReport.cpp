#include "editor/held/EditReport.h"

#include "editor/held/EditObserver.h"
#include "text/held/TextMap.h"

#include <utility>

void EditReport::observe(EditObserver* observer) {
    settle();
    m_observer = observer;
    m_kind = m_map.joints().kind();
}

void EditReport::beginEdit() {
    settle();
    m_observer->aboutToEdit();
    // It is chosen between two edits, just before the first joint is put in.
    const JointKind kind = m_map.joints().kind();
    if (std::exchange(m_kind, kind) != kind)
        m_observer->jointKindChosen(kind);
}

void EditReport::beforeInsert(qint64 at, qint64 length) {
    if (m_observer == nullptr)
        return;
    beginEdit();
    m_insertedAt = at;
    m_insertedLength = length;
}

void EditReport::beforeDelete(qint64 at, qint64 length) {
    if (m_observer == nullptr)
        return;
    beginEdit();
    m_observer->removed(at, length);
}

/// The gap of the text is at the end of the insertion, so that reading it is cheap.
void EditReport::settle() {
    const qint64 length = std::exchange(m_insertedLength, 0);
    if (length > 0 && m_observer != nullptr)
        m_observer->inserted(m_insertedAt, m_text.range(m_insertedAt, length));
}

void EditReport::loaded() {
    m_kind = m_map.joints().kind();
    if (m_observer != nullptr)
        m_observer->loaded();
}

void EditReport::saved() {
    settle();
    if (m_observer != nullptr)
        m_observer->saved();
}
