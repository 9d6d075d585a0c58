#include "search/engine/RequiredText.h"

#include <QStringView>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <optional>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

constexpr std::string_view Utf16Marks[] = {"\xFF\xFE", "\xFE\xFF"};

bool isAsciiLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

char lower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
}

/// Whether a character of a match is this byte in every encoding with ASCII in it. K and S have other characters as
/// their other case.
bool isOneByte(QChar character, bool caseSensitive) {
    const char16_t unit = character.unicode();
    if (unit == 0 || unit >= 0x80)
        return false;
    return caseSensitive || !QStringView(u"kKsS").contains(character);
}

/// Collects runs of required characters and keeps the longest.
class Runs {
 public:
    explicit Runs(bool caseSensitive) : m_caseSensitive(caseSensitive) {}

    void add(QChar character) {
        if (isOneByte(character, m_caseSensitive))
            m_run += m_caseSensitive ? character.toLatin1() : lower(character.toLatin1());
        else
            end();
    }
    void end() {
        if (m_run.size() > m_longest.size())
            m_longest = m_run;
        m_run.clear();
    }
    QByteArray longest() {
        end();
        return m_longest;
    }

 private:
    bool m_caseSensitive;
    QByteArray m_run;
    QByteArray m_longest;
};

/// Reads a regular expression far enough to see which characters every match must have. It gives up on what it does not
/// know, and then nothing is required.
class ExpressionReader {
 public:
    ExpressionReader(QStringView expression, Runs& runs) : m_text(expression), m_runs(runs) {}

    /// False when it gave up.
    bool read() {
        while (m_at < m_text.size()) {
            if (!element())
                return false;
        }
        return true;
    }

 private:
    static constexpr QStringView Special = u".^$";
    /// Escapes of two characters that stand for one character or none.
    static constexpr QStringView ShortEscapes = u"dDwWsSbBAZzhHvVRnrtfeaK";

    QChar at(qsizetype index) const { return index < m_text.size() ? m_text[index] : QChar(); }
    bool element();
    void literal(QChar character, qsizetype length);
    bool escape();
    bool skipClass();
    bool skipGroup();
    bool groupIsKnown() const;
    void otherElement(qsizetype length);
    bool behindElement() {
        skipQuantifiers();
        return true;
    }
    qsizetype countedLength(qsizetype from) const;
    QStringView skipQuantifiers();

    QStringView m_text;
    Runs& m_runs;
    qsizetype m_at = 0;
};

bool ExpressionReader::element() {
    const QChar character = m_text[m_at];
    if (character == u'\\')
        return escape();
    if (character == u'[')
        return skipClass() && behindElement();
    if (character == u'(')
        return skipGroup() && behindElement();
    if (character == u'|' || character == u')')
        return false;
    if (Special.contains(character) || QStringView(u"*+?{").contains(character))
        otherElement(1);
    else
        literal(character, 1);
    return true;
}

/// One character; a quantifier behind it may make it optional, or repeat it.
void ExpressionReader::literal(QChar character, qsizetype length) {
    m_at += length;
    const QStringView quantifier = skipQuantifiers();
    const bool once = quantifier == u"+" || quantifier == u"++" || quantifier == u"+?";
    if (quantifier.isEmpty() || once)
        m_runs.add(character);
    if (!quantifier.isEmpty())
        m_runs.end();
}

void ExpressionReader::otherElement(qsizetype length) {
    m_runs.end();
    m_at += length;
    skipQuantifiers();
}

bool ExpressionReader::escape() {
    const QChar escaped = at(m_at + 1);
    if (escaped.isNull())
        return false;
    if (escaped.unicode() < 0x80 && !escaped.isLetterOrNumber()) {
        literal(escaped, 2);
        return true;
    }
    if (!ShortEscapes.contains(escaped))
        return false;
    otherElement(2);
    return true;
}

bool ExpressionReader::skipClass() {
    m_runs.end();
    ++m_at;
    if (at(m_at) == u'^')
        ++m_at;
    if (at(m_at) == u']')
        ++m_at;
    for (; m_at < m_text.size() && m_text[m_at] != u']'; ++m_at) {
        if (m_text[m_at] == u'\\') {
            // \E is no element, so a bracket behind it may be the first one.
            if (at(m_at + 1).isNull() || QStringView(u"QEc").contains(at(m_at + 1)))
                return false;
            ++m_at;
        } else if (m_text[m_at] == u'[' && QStringView(u":.=").contains(at(m_at + 1))) {
            return false;
        }
    }
    ++m_at;
    return m_at <= m_text.size();
}

/// Options inside of the expression, comments and verbs may change what everything behind them means.
bool ExpressionReader::groupIsKnown() const {
    if (at(m_at + 1) == u'*')
        return false;
    if (at(m_at + 1) != u'?')
        return true;
    return QStringView(u":=!<>|").contains(at(m_at + 2)) && !at(m_at + 2).isNull();
}

bool ExpressionReader::skipGroup() {
    m_runs.end();
    qsizetype depth = 0;
    do {
        const QChar character = at(m_at);
        if (character.isNull() || (character == u'(' && !groupIsKnown()))
            return false;
        if (character == u'[') {
            if (!skipClass())
                return false;
            continue;
        }
        if (character == u'\\' && (at(m_at + 1).isNull() || QStringView(u"QEcx").contains(at(m_at + 1))))
            return false;
        depth += character == u'(' ? 1 : 0;
        depth -= character == u')' ? 1 : 0;
        m_at += character == u'\\' ? 2 : 1;
    } while (depth > 0);
    return true;
}

/// The length of "{2}", "{2,}" or "{2,3}" at this place; 0: none.
qsizetype ExpressionReader::countedLength(qsizetype from) const {
    if (at(from) != u'{')
        return 0;
    qsizetype end = from + 1;
    while (at(end).isDigit() || at(end) == u',' || at(end) == u' ')
        ++end;
    return at(end) == u'}' ? end + 1 - from : 0;
}

/// Returns what it has skipped.
QStringView ExpressionReader::skipQuantifiers() {
    const qsizetype begin = m_at;
    for (qsizetype before = -1; m_at != before;) {
        before = m_at;
        if (!at(m_at).isNull() && QStringView(u"*+?").contains(at(m_at)))
            ++m_at;
        else
            m_at += countedLength(m_at);
    }
    return m_text.sliced(begin, m_at - begin);
}

QByteArray requiredBy(const QString& text, SearchFlags flags) {
    Runs runs(flags.caseSensitive);
    if (flags.regExp)
        return ExpressionReader(text, runs).read() ? runs.longest() : QByteArray();
    for (const QChar character : text)
        runs.add(character);
    return runs.longest();
}

/// How often a byte stands in source texts: the higher, the more often. Only the order matters.
int frequency(char byte) {
    constexpr std::string_view ByFrequency = "vwgmfcupdlh_isnaorte \n";
    constexpr std::string_view Signs = "(),.;=-*/\"'0123456789";
    if (const std::size_t place = ByFrequency.find(lower(byte)); place != std::string_view::npos)
        return 20 + static_cast<int>(place);
    return Signs.find(byte) != std::string_view::npos ? 18 : isAsciiLetter(byte) ? 5 : 10;
}

}  // namespace

RequiredText::RequiredText(const QString& text, SearchFlags flags)
    : m_text(requiredBy(text, flags)), m_caseSensitive(flags.caseSensitive) {
    choosePair();
}

void RequiredText::choosePair() {
    const auto rarest = [this](std::optional<qsizetype> except) {
        qsizetype best = except == 0 && m_text.size() > 1 ? 1 : 0;
        for (qsizetype at = 0; at < m_text.size(); ++at) {
            if (at != except && frequency(m_text[at]) < frequency(m_text[best]))
                best = at;
        }
        return best;
    };
    m_first = rarest(std::nullopt);
    m_second = rarest(m_first);
}

bool RequiredText::mayBeIn(std::string_view bytes) const {
    if (m_text.isEmpty())
        return true;
    const auto begins = [bytes](std::string_view mark) { return bytes.starts_with(mark); };
    return std::ranges::any_of(Utf16Marks, begins) || isIn(bytes);
}

bool RequiredText::isAt(const char* bytes) const {
    if (m_caseSensitive)
        return std::memcmp(bytes, m_text.constData(), static_cast<std::size_t>(m_text.size())) == 0;
    return std::equal(m_text.begin(), m_text.end(), bytes,
                      [](char wanted, char byte) { return wanted == lower(byte); });
}

/// Looks for the two rare bytes at their distance, in sixteen places at once; only there the whole text is compared.
bool RequiredText::isIn(std::string_view bytes) const {
    const auto length = static_cast<std::size_t>(m_text.size());
    if (bytes.size() < length)
        return false;
    const std::size_t places = bytes.size() - length + 1;
    std::size_t at = 0;
#if defined(__SSE2__)
    constexpr std::size_t Block = 16;
    const auto caseBit = [this](char byte) {
        return _mm_set1_epi8(!m_caseSensitive && isAsciiLetter(byte) ? 0x20 : 0);
    };
    const __m128i firstCase = caseBit(m_text[m_first]);
    const __m128i secondCase = caseBit(m_text[m_second]);
    const __m128i first = _mm_set1_epi8(m_text[m_first]);
    const __m128i second = _mm_set1_epi8(m_text[m_second]);
    const auto load = [](const char* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)); };
    for (; at + Block <= places; at += Block) {
        const char* const here = bytes.data() + at;
        const __m128i isFirst = _mm_cmpeq_epi8(_mm_or_si128(load(here + m_first), firstCase), first);
        const __m128i isSecond = _mm_cmpeq_epi8(_mm_or_si128(load(here + m_second), secondCase), second);
        auto both = static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(isFirst, isSecond)));
        for (; both != 0; both &= both - 1) {
            if (isAt(here + std::countr_zero(both)))
                return true;
        }
    }
#endif
    for (; at < places; ++at) {
        if (isAt(bytes.data() + at))
            return true;
    }
    return false;
}
