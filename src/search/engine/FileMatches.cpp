#include "search/engine/FileMatches.h"

#include "text/codec/Utf16Units.h"

void FileMatches::addLine(qint64 number, std::string_view utf8) {
    const std::string_view kept = utf8.substr(0, static_cast<std::size_t>(bytesForUtf16Units(utf8, LongestText)));
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
    const Line& line = lineOf(match);
    return QString::fromUtf8(m_texts.constData() + line.from, line.length);
}

void FileMatches::squeeze() {
    m_matches.shrink_to_fit();
    m_lines.shrink_to_fit();
    m_texts.squeeze();
}
