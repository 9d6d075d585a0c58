#pragma once

#include <QByteArray>
#include <QString>

#include <string_view>
#include <vector>

/// The matches of one file in the order of its text, and the lines in which they begin. A line is kept once however
/// many matches it has, and only its first characters. A plain value; lengths of texts are UTF-16 units.
class FileMatches {
 public:
    /// Of a longer line this many units are kept.
    static constexpr qsizetype LongestText = 1000;

    struct Match {
        qint64 start = 0;       ///< position in the file's text, from 0
        qint32 length = 0;      ///< as the list of results shows it
        qint32 line = 0;        ///< index of its line
        qint32 column = 0;      ///< in its line, from 0; -1: not known
        qint32 textLength = 0;  ///< of the text that was found or put there
    };

    /// Adds a line, counted from 1 in the file, for the matches that are added next. One that equals the last line is
    /// not added again.
    void addLine(qint64 number, std::string_view utf8);
    void addLine(qint64 number, const QString& text);
    /// Adds a match to the last line; its index of the line is set here.
    void addMatch(Match match);
    /// Adds another list behind this one.
    void append(const FileMatches& more);

    bool empty() const { return m_matches.empty(); }
    const std::vector<Match>& matches() const { return m_matches; }
    qint64 lineNumber(const Match& match) const { return lineOf(match).number; }
    QString lineText(const Match& match) const;
    /// Removes the matches whose flag is set, and the lines that have none left. There is a flag for every match.
    void remove(const std::vector<bool>& flags);
    /// Releases memory that was reserved for more.
    void squeeze();

 private:
    struct Line {
        qint64 number = 0;
        qint64 from = 0;  ///< into the texts, in bytes
        qint64 length = 0;
    };
    std::string_view textOf(const Line& line) const {
        return {m_texts.constData() + line.from, static_cast<std::size_t>(line.length)};
    }
    const Line& lineOf(const Match& match) const { return m_lines[static_cast<std::size_t>(match.line)]; }

    std::vector<Match> m_matches;
    std::vector<Line> m_lines;
    QByteArray m_texts;  ///< UTF-8
};
