#pragma once

#include <QString>

#include <memory>

struct pcre2_real_code_8;
struct pcre2_real_match_context_8;

/// The options of a search.
struct SearchFlags {
    bool caseSensitive = false;
    bool regExp = false;  ///< the text is a regular expression in PCRE2 syntax, not literal
    bool wholeWord = false;

    bool operator==(const SearchFlags&) const = default;
};

/// Why a search is not possible or was ended early. An empty sentence means no error.
struct SearchError {
    QString sentence;
    qint64 position = -1;  ///< where the expression is wrong, in UTF-16 units; -1: no particular place

    explicit operator bool() const { return !sentence.isEmpty(); }
};

/// A text or regular expression compiled for searching in UTF-8. ^ and $ match at every line, which may end with LF, CR
/// LF or CR. A literal text is a whole word if no word continues across one of its ends; a match of an expression is
/// one if both its ends are word boundaries. Shared by the searches that use it, on one thread only.
class SearchPattern {
 public:
    /// `asciiText`: all searched text is ASCII, so matching can ignore the letters and digits of other scripts.
    SearchPattern(const QString& text, SearchFlags flags, bool asciiText = false);
    ~SearchPattern();
    SearchPattern(const SearchPattern&) = delete;
    SearchPattern& operator=(const SearchPattern&) = delete;

    /// When an error is set, the pattern must not be used for a search.
    const SearchError& error() const { return m_error; }
    /// How many characters before a start a match may depend on (lookbehinds).
    int lookBehind() const { return m_lookBehind; }
    /// The pattern does not name CR or LF explicitly, so no search starts between the two bytes of a CR LF.
    bool keepsCrLfWhole() const { return m_keepsCrLfWhole; }

    /// The result depends on where the search began (\G), or parts of the expression control the search as a whole,
    /// such as (*COMMIT). It must search the whole text at once, from one start.
    bool seesTextAsOne() const { return m_seesTextAsOne; }
    /// An attempt may take long, so it should try only a few starts at a time.
    bool mayTakeLong() const { return m_mayTakeLong; }

    const pcre2_real_code_8* code() const { return m_code.get(); }
    /// The same pattern anchored to a single start; exists only when mayTakeLong() is true.
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
