#pragma once

#include "text/held/StringText.h"
#include "text/search/MatchScan.h"

#include <QString>

#include <string>
#include <utility>
#include <vector>

/// A held text with joints at the given places, and the same text without them.
struct SearchedText {
    StringText held;
    TextMap map{held};
    std::string plain;

    /// Inserts a CR as a joint at each of these byte offsets; the text itself must not contain a CR.
    explicit SearchedText(std::string text, const std::vector<std::size_t>& cuts = {}) : plain(std::move(text)) {
        std::vector<qint64> joints;
        std::size_t taken = 0;
        for (const std::size_t cut : cuts) {
            held.bytes += plain.substr(taken, cut - taken);
            joints.push_back(held.length());
            held.bytes += '\r';
            taken = cut;
        }
        held.bytes += plain.substr(taken);
        map.reset(false, cuts.empty() ? JointKind::None : JointKind::AnyCr, joints);
    }
    SearchedText(const SearchedText&) = delete;
    SearchedText& operator=(const SearchedText&) = delete;

    qint64 plainOf(qint64 heldByte) const { return heldByte - map.joints().before(heldByte); }
    qint64 heldOf(qint64 plainByte) const {
        qint64 byte = plainByte;
        while (plainOf(byte) < plainByte)
            ++byte;
        return byte;
    }
    TextMatch plainOf(const TextMatch& match) const { return {plainOf(match.from), plainOf(match.to)}; }
};

/// Matches as pairs of offsets into the plain text; a failed test prints them.
using Matches = std::vector<std::pair<qint64, qint64>>;

inline Matches allMatches(const SearchedText& text, const SearchPattern& pattern, qint64 from = 0,
                          qint64 window = MatchScan::FirstWindow) {
    Matches found;
    MatchScan scan(pattern, text.held, text.map, text.heldOf(from), window);
    while (scan.next()) {
        const TextMatch match = text.plainOf(scan.match());
        found.emplace_back(match.from, match.to);
    }
    return found;
}
