#pragma once

#include "recovery/journals/JournalEntry.h"
#include "recovery/journals/PieceList.h"
#include "text/held/Joints.h"

#include <string_view>
#include <vector>

/// The held text that results from a base and the entries of its journal. The base and the payloads of the entries
/// outlive it; no byte is copied. Offsets are bytes.
class ReplayedText {
 public:
    ReplayedText() = default;

    /// The text without joints becomes one with these. False: there is no room for them in it; nothing has changed.
    bool hold(const std::vector<std::string_view>& plain, JointKind kind, const std::vector<qint64>& joints);
    /// False: the entry does not fit the text, which is as before.
    bool apply(const JournalEntry& entry);

    qint64 length() const { return m_text.length(); }
    JointKind jointKind() const { return m_kind; }
    /// For JointKind::Listed only.
    const std::vector<qint64>& listedJoints() const { return m_listed; }

    /// With joints.
    std::vector<std::string_view> held() const { return m_text.pieces(); }
    /// Without them: what a save writes, in UTF-8.
    std::vector<std::string_view> plain() const;

 private:
    bool insert(qint64 at, std::string_view bytes);
    bool remove(qint64 at, qint64 length);
    bool replaceAll(const JournalEntry& whole);

    PieceList m_text;
    JointKind m_kind = JointKind::None;
    std::vector<qint64> m_listed;
};
