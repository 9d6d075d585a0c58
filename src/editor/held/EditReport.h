#pragma once

#include "text/held/HeldText.h"

#include <string>
#include <string_view>

class EditObserver;
class TextMap;

/// Reports the edits of a held text to an observer. Owned by the control, which calls it before each edit. The library
/// does not say which bytes it is about to insert: they are read when they are in the text, before the next edit or
/// when the action ends. Without an observer it does nothing.
class EditReport {
 public:
    /// Both are owned by the control and outlive this object.
    EditReport(const HeldText& text, const TextMap& map) : m_text(text), m_map(map) {}

    /// Null: nobody is notified any more. The observer before it gets what is still to be reported.
    void observe(EditObserver* observer);

    void beforeInsert(qint64 at, qint64 length);
    void beforeDelete(qint64 at, qint64 length);
    /// Reports the last insertion if that is still to be done.
    void settle();
    void loaded();
    void saved();

 private:
    std::string_view withoutJoints(qint64 from, std::string_view bytes);

    const HeldText& m_text;
    const TextMap& m_map;
    EditObserver* m_observer = nullptr;
    qint64 m_insertedAt = 0;
    qint64 m_insertedLength = 0;  ///< 0: nothing is still to be reported
    std::string m_scratch;
};
