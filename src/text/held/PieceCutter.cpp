#include "text/held/PieceCutter.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::string_view LineEnds = "\r\n";

qint64 asOffset(std::size_t found, std::size_t none) {
    return static_cast<qint64>(found == std::string_view::npos ? none : found);
}

/// Returns the offset of the first line end of the run; its size if there is none.
qint64 firstLineEnd(std::string_view run) {
    const auto lf = static_cast<std::size_t>(asOffset(run.find('\n'), run.size()));
    return asOffset(run.substr(0, lf).find('\r'), lf);
}

/// Returns the offset after the last line end of the run; 0 if there is none.
qint64 behindLastLineEnd(std::string_view run) {
    return asOffset(run.find_last_of(LineEnds), std::size_t(-1)) + 1;
}

}  // namespace

void PieceCutter::pass(std::string_view run) {
    if (m_out.empty())
        m_uncut += static_cast<qint64>(run.size());
    else
        m_out.append(run);
}

/// Returns how many bytes at the start of `rest` need no cut. Sets m_inLongLine when a long line follows them.
qint64 PieceCutter::shortLines(std::string_view rest, bool last) {
    for (std::size_t at = 0;;) {
        const std::string_view window = rest.substr(at, LongLine + 1);
        const qint64 lines = behindLastLineEnd(window);
        if (lines == 0) {
            m_inLongLine = static_cast<qint64>(window.size()) > LongLine;
            return static_cast<qint64>(last && !m_inLongLine ? rest.size() : at);
        }
        at += static_cast<std::size_t>(lines);
    }
}

qint64 PieceCutter::piecesOfLongLine(std::string_view rest, bool last) {
    const auto end = static_cast<std::size_t>(firstLineEnd(rest));
    std::size_t at = 0;
    while (static_cast<qint64>(end - at) > PieceLength) {
        const auto piece = static_cast<std::size_t>(pieceEnd(rest.substr(at, end - at)));
        m_out.append(rest.substr(at, piece));
        m_joints.push_back(m_given + m_uncut + static_cast<qint64>(m_out.size()));
        m_out.push_back(*m_joint);
        at += piece;
    }
    if (end == rest.size() && !last) {
        m_lineTaken += static_cast<qint64>(at);
        return static_cast<qint64>(at);
    }
    m_inLongLine = false;
    pass(rest.substr(at, end - at));
    m_longestCut = std::max(m_longestCut, std::exchange(m_lineTaken, 0) + static_cast<qint64>(end));
    return static_cast<qint64>(end);
}

/// Returns how many bytes of the part were taken.
std::size_t PieceCutter::cut(std::string_view part, bool last) {
    std::size_t taken = 0;
    while (taken < part.size()) {
        const std::string_view rest = part.substr(taken);
        const bool wasInLongLine = m_inLongLine;
        const qint64 advance = wasInLongLine ? piecesOfLongLine(rest, last) : shortLines(rest, last);
        if (!wasInLongLine)
            pass(rest.substr(0, static_cast<std::size_t>(advance)));
        taken += static_cast<std::size_t>(advance);
        if (advance == 0 && m_inLongLine == wasInLongLine)
            break;
    }
    return taken;
}

qint64 PieceCutter::feed(std::string_view part, bool last, const Give& give) {
    // A CR at the end is not taken yet, because an LF may begin the next part.
    if (!last && !part.empty() && part.back() == '\r')
        part.remove_suffix(1);
    m_uncut = 0;
    m_out.clear();
    std::size_t taken = part.size();
    if (m_joint)
        taken = cut(part, last);
    else
        pass(part);
    m_seen.look(part.substr(0, taken));
    if (m_uncut > 0)
        give(part.substr(0, static_cast<std::size_t>(m_uncut)));
    if (!m_out.empty())
        give(m_out);
    m_given += m_uncut + static_cast<qint64>(m_out.size());
    return static_cast<qint64>(taken);
}
