#include "text/search/Replacements.h"

namespace {

/// `free` is where the text begins that no earlier match has.
LineEndHalves halvesBeside(const HeldText& text, const TextMatch& match, qint64 free) {
    const auto splits = [&text](qint64 at) {
        return at > 0 && at < text.length() && text.range(at - 1, 1) == "\r" && text.range(at, 1) == "\n";
    };
    if (match.empty())
        return {};
    return {match.from > free && splits(match.from), splits(match.to)};
}

/// Of these halves those that the replacement has too. They stay in the text, because the bookmark of a line stays with
/// its line then.
LineEndHalves halvesKept(LineEndHalves halves, const QByteArray& text) {
    return {halves.cr && text.startsWith("\r\n"), halves.lf && text.endsWith("\r\n")};
}

TextMatch with(LineEndHalves halves, LineEndHalves kept, const TextMatch& match) {
    return {match.from - (halves.cr && !kept.cr ? 1 : 0), match.to + (halves.lf && !kept.lf ? 1 : 0)};
}

}  // namespace

void ReplacementCollector::add(const MatchScan& scan) {
    auto& edits = m_found.edits;
    if (m_withoutLf && scan.match().from == m_withoutLf->match.to)
        edits.back() = *m_withoutLf;
    const qint64 free = edits.empty() ? 0 : edits.back().match.to;
    const LineEndHalves halves = halvesBeside(m_held, scan.match(), free);
    m_withoutLf.reset();
    if (halves.lf)
        m_withoutLf = editFor(scan, {halves.cr, false});
    edits.push_back(editFor(scan, halves));
}

/// A replacement that is the same for every match is held once.
Replacements::Edit ReplacementCollector::editFor(const MatchScan& scan, LineEndHalves halves) {
    if (!m_replacement.fixed() || m_text.isEmpty()) {
        m_text = m_replacement.forMatch(scan, halves);
        m_found.texts += m_text;
    }
    const LineEndHalves kept = halvesKept(halves, m_text);
    return {with(halves, kept, scan.match()), m_found.texts.size() - m_text.size() + (kept.cr ? 1 : 0),
            m_text.size() - (kept.cr ? 1 : 0) - (kept.lf ? 1 : 0)};
}
