#include "recovery/journals/ReplayedText.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::string_view JointBytes = "\r\n";

std::string_view jointPiece(JointKind kind) {
    return JointBytes.substr(jointByte(kind) == '\r' ? 0 : 1, 1);
}

qint64 lengthOf(const std::vector<std::string_view>& pieces) {
    qint64 length = 0;
    for (const std::string_view piece : pieces)
        length += static_cast<qint64>(piece.size());
    return length;
}

/// The byte after the piece with this number; '\0' at the end.
char nextByte(const std::vector<std::string_view>& pieces, std::size_t number) {
    while (++number < pieces.size()) {
        if (!pieces[number].empty())
            return pieces[number].front();
    }
    return '\0';
}

/// Adds the piece without the bytes that are joints of this kind; `next` is the byte after it.
void addWithoutJoints(std::string_view piece, char next, JointKind kind, std::vector<std::string_view>& plain) {
    const char joint = jointByte(kind);
    std::size_t begin = 0;
    for (std::size_t at = piece.find(joint); at != std::string_view::npos; at = piece.find(joint, at + 1)) {
        const char follows = at + 1 < piece.size() ? piece[at + 1] : next;
        if (kind == JointKind::LoneCr && follows == '\n')
            continue;
        if (at > begin)
            plain.push_back(piece.substr(begin, at - begin));
        begin = at + 1;
    }
    if (begin < piece.size())
        plain.push_back(piece.substr(begin));
}

}  // namespace

/// `joints` count in the text that results, so each of them lies behind as many bytes of the plain text as it has
/// neither joints nor bytes before it.
bool ReplayedText::hold(const std::vector<std::string_view>& plain, JointKind kind, const std::vector<qint64>& joints) {
    const qint64 end = lengthOf(plain) + static_cast<qint64>(joints.size());
    if (!joints.empty() && (kind == JointKind::None || joints.back() >= end))
        return false;
    std::vector<std::string_view> held;
    auto joint = joints.begin();
    qint64 at = 0;
    for (std::string_view piece : plain) {
        while (joint != joints.end() && *joint < at + static_cast<qint64>(piece.size())) {
            const auto cut = static_cast<std::size_t>(*joint - at);
            held.push_back(piece.substr(0, cut));
            held.push_back(jointPiece(kind));
            piece.remove_prefix(cut);
            at = *joint + 1;
            ++joint;
        }
        held.push_back(piece);
        at += static_cast<qint64>(piece.size());
    }
    for (; joint != joints.end(); ++joint)
        held.push_back(jointPiece(kind));
    m_text = PieceList(held);
    m_kind = kind;
    m_listed = kind == JointKind::Listed ? joints : std::vector<qint64>();
    return true;
}

bool ReplayedText::apply(const JournalEntry& entry) {
    switch (entry.kind) {
        case EntryKind::Insert:
            return insert(entry.at, entry.bytes);
        case EntryKind::Remove:
            return remove(entry.at, entry.length);
        case EntryKind::Kind:
            m_kind = entry.jointKind;
            m_listed.clear();
            return true;
        case EntryKind::Joints:
            return hold(plain(), entry.jointKind, entry.joints);
        case EntryKind::Whole:
            return replaceAll(entry);
        case EntryKind::Base:
            return true;
        default:
            return false;
    }
}

std::vector<std::string_view> ReplayedText::plain() const {
    std::vector<std::string_view> pieces = m_text.pieces();
    if (m_kind == JointKind::None || (m_kind == JointKind::Listed && m_listed.empty()))
        return pieces;
    std::vector<std::string_view> plain;
    if (m_kind == JointKind::Listed) {
        PieceList text(pieces);
        for (auto joint = m_listed.rbegin(); joint != m_listed.rend(); ++joint)
            text.remove(*joint, 1);
        return text.pieces();
    }
    for (std::size_t i = 0; i < pieces.size(); ++i)
        addWithoutJoints(pieces[i], nextByte(pieces, i), m_kind, plain);
    return plain;
}

bool ReplayedText::insert(qint64 at, std::string_view bytes) {
    if (at > m_text.length())
        return false;
    m_text.insert(at, bytes);
    for (qint64& joint : m_listed)
        joint += joint >= at ? static_cast<qint64>(bytes.size()) : 0;
    return true;
}

bool ReplayedText::remove(qint64 at, qint64 length) {
    if (at > m_text.length() || length > m_text.length() - at)
        return false;
    m_text.remove(at, length);
    std::erase_if(m_listed, [&](qint64 joint) { return joint >= at && joint < at + length; });
    for (qint64& joint : m_listed)
        joint -= joint >= at ? length : 0;
    return true;
}

bool ReplayedText::replaceAll(const JournalEntry& whole) {
    if (!whole.joints.empty() && (whole.jointKind != JointKind::Listed || whole.joints.back() >= whole.length))
        return false;
    m_text = PieceList({whole.bytes});
    m_kind = whole.jointKind;
    m_listed = whole.joints;
    return true;
}
