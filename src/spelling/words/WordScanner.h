#pragma once

#include <QStringView>

#include <optional>

/// A word of a text: position and length in UTF-16 units.
struct WordSpan {
    qsizetype position = 0;
    qsizetype length = 0;

    bool operator==(const WordSpan&) const = default;
};

/// Finds the words of a text that a dictionary can know, from front to back. A plain value; the text must outlive it.
///
/// A word is made of letters, with apostrophes between them. Passed over are words of one letter, all in capitals, with
/// a capital inside, or longer than 100 letters; names with a digit or an underscore; names joined by dots, "::" or
/// "->"; paths, addresses of pages and mail; what stands directly behind one of \ $ @ # < or </; entities (&amp;);
/// and what is written in a script without blanks between words.
class WordScanner {
 public:
    static constexpr qsizetype LongestWord = 100;

    explicit WordScanner(QStringView text, qsizetype position = 0) : m_text(text), m_at(position) {}

    /// The next word. Nothing: `most` units were examined without finding one, or the text has ended.
    std::optional<WordSpan> next(qsizetype most);
    bool atEnd() const { return m_at >= m_text.size(); }
    /// Everything before it has been examined.
    qsizetype position() const { return m_at; }

 private:
    struct Run;
    enum class Passing { Nothing, Run, Address };

    void pass(qsizetype end);
    Run readRun() const;
    qsizetype widthAt(qsizetype at) const;
    char32_t codePointAt(qsizetype at) const;
    QChar unitAt(qsizetype at) const;
    bool isRunAt(qsizetype at) const;
    bool isLetterAt(qsizetype at) const;
    bool continuesAddress(qsizetype at) const;
    bool beginsPath(qsizetype at) const;
    bool isPartOfCode(const Run& run) const;
    qsizetype endOfName(const Run& run);
    bool takeName(const Run& run);

    QStringView m_text;
    qsizetype m_at;
    Passing m_passing = Passing::Nothing;
    qsizetype m_plainUntil = 0;  ///< what is joined up to here is known to be no name
};
