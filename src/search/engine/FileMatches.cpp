#include "search/engine/FileMatches.h"

#include "text/codec/Utf16Units.h"

#include <algorithm>

void FileMatches::addLine(qint64 number, std::string_view utf8) {
    const std::string_view kept = utf8.substr(0, static_cast<std::size_t>(bytesForUtf16Units(utf8, LongestText)));
    if (!m_lines.empty() && m_lines.back().number == number && textOf(m_lines.back()) == kept)
        return;
    m_lines.push_back({number, m_texts.size(), static_cast<qint64>(kept.size())});
    m_texts.append(kept.data(), static_cast<qsizetype>(kept.size()));
}

void FileMatches::addLine(qint64 number, const QString& text) {
    const QByteArray utf8 = text.left(LongestText).toUtf8();
    addLine(number, std::string_view(utf8.constData(), static_cast<std::size_t>(utf8.size())));
}

void FileMatches::addMatch(Match match) {
    match.line = static_cast<qint32>(m_lines.size()) - 1;
    m_matches.push_back(match);
}

void FileMatches::append(const FileMatches& more) {
    const auto linesBefore = static_cast<qint32>(m_lines.size());
    for (Line line : more.m_lines) {
        line.from += m_texts.size();
        m_lines.push_back(line);
    }
    for (Match match : more.m_matches) {
        match.line += linesBefore;
        m_matches.push_back(match);
    }
    m_texts += more.m_texts;
}

QString FileMatches::lineText(const Match& match) const {
    const std::string_view text = textOf(lineOf(match));
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// In place: what is kept moves towards the front.
void FileMatches::remove(const std::vector<bool>& flags) {
    char* const texts = m_texts.data();
    std::size_t matches = 0;
    std::size_t lines = 0;
    qint64 bytes = 0;
    qint32 lastLine = -1;
    for (std::size_t n = 0; n < m_matches.size(); ++n) {
        if (flags[n])
            continue;
        Match match = m_matches[n];
        if (match.line != lastLine) {
            lastLine = match.line;
            Line line = lineOf(match);
            std::copy_n(texts + line.from, line.length, texts + bytes);
            line.from = bytes;
            bytes += line.length;
            m_lines[lines++] = line;
        }
        match.line = static_cast<qint32>(lines) - 1;
        m_matches[matches++] = match;
    }
    m_matches.resize(matches);
    m_lines.resize(lines);
    m_texts.resize(bytes);
}

void FileMatches::squeeze() {
    m_matches.shrink_to_fit();
    m_lines.shrink_to_fit();
    m_texts.squeeze();
}
