#pragma once

#include <QtGlobal>

#include <string>
#include <string_view>
#include <vector>

class Journal;

/// A copy of a text that is made part by part, from the beginning to the end, while the text is edited. Owned by the
/// DocumentJournal. Offsets and lengths are bytes of the text in UTF-8 without joints.
///
/// What is edited behind the copied beginning is copied later as it is then. What is edited within it is recorded: the
/// copied parts with these edits are the beginning of the text as it is now.
class TextCopy {
 public:
    /// Of the beginning of the text, as it is now, that is copied; the next part begins there.
    qint64 length() const { return m_length; }
    void append(std::string part);

    // The edits of the text, in their order; see EditObserver
    void inserted(qint64 at, std::string_view bytes);
    void removed(qint64 at, qint64 length);

    /// All of the text is copied: the journal gets it, followed by the recorded edits. Call it once.
    void passTo(Journal& journal);

 private:
    struct Edit {
        qint64 at;
        qint64 removed;
        std::string inserted;
    };

    std::vector<std::string> m_parts;
    std::vector<Edit> m_edits;
    qint64 m_length = 0;
};
