#pragma once

#include <QString>

#include <memory>

struct pcre2_real_code_8;
struct pcre2_real_match_context_8;

/// How a text is searched for.
struct SearchFlags {
    bool caseSensitive = false;
    bool regExp = false;  ///< the text is an expression in the syntax of PCRE2, not to be taken literally
    bool wholeWord = false;

    bool operator==(const SearchFlags&) const = default;
};

/// Why nothing can be searched for, or why a search was given up; no sentence: nothing is wrong.
struct SearchError {
    QString sentence;
    qint64 position = -1;  ///< UTF-16 units into the expression where it is wrong; -1: nowhere in particular

    explicit operator bool() const { return !sentence.isEmpty(); }
};

/// A text or expression made ready to be searched for in UTF-8. ^ and $ mean every line, whichever of LF, CR LF and CR
/// ends it. A literal text is a whole word when none of its ends lies within a word; a match of an expression when both
/// its ends are edges of words. Shared by the searches that use it; one thread.
class SearchPattern {
 public:
    /// `asciiText`: all text it will meet is ASCII, so that the letters and digits of other scripts need no thought.
    SearchPattern(const QString& text, SearchFlags flags, bool asciiText = false);
    ~SearchPattern();
    SearchPattern(const SearchPattern&) = delete;
    SearchPattern& operator=(const SearchPattern&) = delete;

    /// Set: nothing may be searched with this.
    const SearchError& error() const { return m_error; }
    /// Characters in front of a place that a match at this place may depend on.
    int lookBehind() const { return m_lookBehind; }
    /// A CR LF is nowhere spoken of by its halves, so no search begins between them.
    bool keepsCrLfWhole() const { return m_keepsCrLfWhole; }

    /// What it finds depends on where the search began, or its parts give up the search as a whole: it is to see all of
    /// the text at once, from one start.
    bool seesTextAsOne() const { return m_seesTextAsOne; }
    /// One try at it may take long, so that it is made for a few starts at a time.
    bool mayTakeLong() const { return m_mayTakeLong; }

    const pcre2_real_code_8* code() const { return m_code.get(); }
    /// The same for one start alone; there for what may take long.
    const pcre2_real_code_8* codeAtStart() const { return m_codeAtStart.get(); }
    pcre2_real_match_context_8* limits() const { return m_limits.get(); }

 private:
    struct FreeCode {
        void operator()(pcre2_real_code_8* code) const;
    };
    struct FreeLimits {
        void operator()(pcre2_real_match_context_8* limits) const;
    };
    struct Stack;

    void compile(const QByteArray& utf8, SearchFlags flags, bool asciiText);
    void setLimits();

    SearchError m_error;
    std::unique_ptr<pcre2_real_code_8, FreeCode> m_code;
    std::unique_ptr<pcre2_real_code_8, FreeCode> m_codeAtStart;
    std::unique_ptr<pcre2_real_match_context_8, FreeLimits> m_limits;
    std::unique_ptr<Stack> m_stack;
    int m_lookBehind = 0;
    bool m_keepsCrLfWhole = true;
    bool m_seesTextAsOne = false;
    bool m_mayTakeLong = false;
};
