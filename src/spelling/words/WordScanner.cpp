#include "spelling/words/WordScanner.h"

#include <QChar>

#include <algorithm>

namespace {

/// A name joined by dots, slashes and the like is looked at so far.
constexpr qsizetype LongestName = 256;
/// A run longer than this is no word, however it goes on.
constexpr qsizetype LongestRun = 4 * WordScanner::LongestWord;

constexpr char32_t LastLatin = 0x24F;
constexpr char32_t SoftHyphen = 0xAD;
constexpr char32_t MiddleDot = 0xB7;
constexpr char32_t HebrewGeresh = 0x5F3;
constexpr char32_t HebrewGershayim = 0x5F4;
constexpr char32_t NonJoiner = 0x200C;
constexpr char32_t Joiner = 0x200D;
constexpr char32_t Apostrophe = 0x2019;

bool isLetter(char32_t each) {
    return QChar::isLetter(each) || QChar::isMark(each);
}

bool isOfRun(char32_t each) {
    return each == U'_' || isLetter(each) || QChar::isNumber(each);
}

/// Belongs to a word where letters stand on both sides.
bool joinsLetters(char32_t each) {
    constexpr char32_t Joining[] = {U'\'',           SoftHyphen, MiddleDot, HebrewGeresh,
                                    HebrewGershayim, NonJoiner,  Joiner,    Apostrophe};
    return std::ranges::find(Joining, each) != std::end(Joining);
}

/// After these a new part of a word begins, which may have a capital of its own: O'Brien, l'Europe.
bool isApostrophe(char32_t each) {
    return each == U'\'' || each == Apostrophe;
}

/// Whether words of this script are written without blanks between them.
bool isWithoutBlanks(char32_t each) {
    switch (QChar::script(each)) {
        case QChar::Script_Han:
        case QChar::Script_Hiragana:
        case QChar::Script_Katakana:
        case QChar::Script_Thai:
        case QChar::Script_Lao:
        case QChar::Script_Khmer:
        case QChar::Script_Myanmar:
        case QChar::Script_Tibetan:
            return true;
        default:
            return false;
    }
}

bool isAnyOf(QChar each, QStringView set) {
    return !each.isNull() && set.contains(each);
}

}  // namespace

/// Letters, digits and underscores in a row, with what joins letters.
struct WordScanner::Run {
    qsizetype begin = 0;
    qsizetype end = 0;
    qsizetype letters = 0;
    bool hasOthers = false;   ///< digits or underscores
    bool hasCapital = false;  ///< behind its first letter
    bool isUnbroken = false;  ///< holds letters of a script without blanks
    bool isTooLong = false;   ///< goes on behind `end`

    qsizetype length() const { return end - begin; }
    bool isWord() const { return letters > 1 && !hasOthers && !hasCapital && !isUnbroken && length() <= LongestWord; }
};

std::optional<WordSpan> WordScanner::next(qsizetype most) {
    const qsizetype end = most < m_text.size() - m_at ? m_at + most : m_text.size();
    while (m_at < end) {
        if (m_passing != Passing::Nothing) {
            pass(end);
        } else if (beginsPath(m_at)) {
            m_passing = Passing::Address;
        } else if (!isRunAt(m_at)) {
            m_at += widthAt(m_at);
        } else {
            const Run run = readRun();
            if (takeName(run))
                continue;
            m_at = run.end;
            if (run.isWord() && !isPartOfCode(run))
                return WordSpan{run.begin, run.length()};
        }
    }
    return std::nullopt;
}

/// What is being passed over may be as long as the text, so it is left and taken up again.
void WordScanner::pass(qsizetype end) {
    const bool isRun = m_passing == Passing::Run;
    while (m_at < end && (isRun ? isRunAt(m_at) : continuesAddress(m_at)))
        m_at += widthAt(m_at);
    if (m_at < end)
        m_passing = Passing::Nothing;
}

// Units of the text

char32_t WordScanner::codePointAt(qsizetype at) const {
    const QChar unit = m_text[at];
    if (unit.isHighSurrogate() && at + 1 < m_text.size() && m_text[at + 1].isLowSurrogate())
        return QChar::surrogateToUcs4(unit, m_text[at + 1]);
    return unit.unicode();
}

qsizetype WordScanner::widthAt(qsizetype at) const {
    return QChar::requiresSurrogates(codePointAt(at)) ? 2 : 1;
}

/// NUL outside the text.
QChar WordScanner::unitAt(qsizetype at) const {
    return at >= 0 && at < m_text.size() ? m_text[at] : QChar();
}

bool WordScanner::isRunAt(qsizetype at) const {
    return at < m_text.size() && isOfRun(codePointAt(at));
}

bool WordScanner::isLetterAt(qsizetype at) const {
    return at < m_text.size() && isLetter(codePointAt(at));
}

bool WordScanner::continuesAddress(qsizetype at) const {
    return !m_text[at].isSpace() && !isAnyOf(m_text[at], u"<>\"`{}|^");
}

// Runs

WordScanner::Run WordScanner::readRun() const {
    Run run{m_at, m_at};
    bool beginsPart = true;
    while (run.end < m_text.size()) {
        const char32_t each = codePointAt(run.end);
        if (isLetter(each)) {
            run.hasCapital = run.hasCapital || (!beginsPart && QChar::isUpper(each));
            run.isUnbroken = run.isUnbroken || (each > LastLatin && isWithoutBlanks(each));
            run.letters += QChar::isMark(each) ? 0 : 1;
            beginsPart = false;
        } else if (isOfRun(each)) {
            run.hasOthers = true;
        } else if (joinsLetters(each) && run.letters > 0 && isLetterAt(run.end + 1)) {
            beginsPart = isApostrophe(each);
        } else {
            break;
        }
        run.end += QChar::requiresSurrogates(each) ? 2 : 1;
        if (run.length() > LongestRun) {
            run.isTooLong = true;
            break;
        }
    }
    return run;
}

bool WordScanner::isPartOfCode(const Run& run) const {
    const QChar before = unitAt(run.begin - 1);
    const QChar twoBefore = unitAt(run.begin - 2);
    const QChar behind = unitAt(run.end);
    const QChar twoBehind = unitAt(run.end + 1);
    const auto isArrow = [](QChar first, QChar second) {
        return (first == u':' && second == u':') || (first == u'-' && second == u'>');
    };
    return isAnyOf(before, u"\\$@#<") || (before == u'/' && twoBefore == u'<') ||
           (before == u'.' && twoBefore != u'.') || (before == u'&' && behind == u';') || isArrow(twoBefore, before) ||
           isArrow(behind, twoBehind);
}

// Names and addresses

/// Whether a path begins here that no word stands before: /usr, ~/notes, ./make, ../src.
bool WordScanner::beginsPath(qsizetype at) const {
    const QChar first = m_text[at];
    if (first != u'/' && first != u'~' && first != u'.')
        return false;
    const QChar before = unitAt(at - 1);
    if (!before.isNull() && !before.isSpace() && !isAnyOf(before, u"\"'`([{=,:;|"))
        return false;
    if (first == u'/')
        return isRunAt(at + 1) || unitAt(at + 1) == u'.';
    if (unitAt(at + 1) == u'/')
        return true;
    return first == u'.' && unitAt(at + 1) == u'.' && unitAt(at + 2) == u'/';
}

/// The end of a name that this run begins: runs joined by dots, slashes, an @ and the like, as in main.cpp,
/// src/main.cpp and mail@example.org. The end of the run when it begins no such name.
qsizetype WordScanner::endOfName(const Run& run) {
    if (run.end < m_plainUntil)
        return run.end;
    bool isName = false;
    qsizetype at = run.end;
    while (at < m_text.size() && at - run.begin < LongestName) {
        const bool joins = isRunAt(at + 1);
        const QChar each = m_text[at];
        if (!isRunAt(at)) {
            if (each != u'/' && !(joins && isAnyOf(each, u".@-+%~")))
                break;
            isName = isName || (joins && isAnyOf(each, u".@")) || (each == u'/' && !joins);
        }
        at += widthAt(at);
    }
    m_plainUntil = at;
    return isName ? at : run.end;
}

/// False: the run begins no name and no address. Otherwise it is passed over.
bool WordScanner::takeName(const Run& run) {
    if (run.isTooLong) {
        m_at = run.end;
        m_passing = Passing::Run;
        return true;
    }
    const QStringView behind = m_text.mid(run.end, 3);
    const bool isDrive = run.length() == 1 && (behind.startsWith(u":\\") || behind.startsWith(u":/"));
    const qsizetype end = endOfName(run);
    if (!isDrive && behind != u"://" && end == run.end)
        return false;
    m_at = end;
    if (isDrive || behind == u"://" || (isAnyOf(unitAt(end), u"/?#:=&@") && isRunAt(end + 1)))
        m_passing = Passing::Address;
    return true;
}
