#include "editor/rtf/RtfReader.h"

#include "text/codec/Windows1252.h"

#include <algorithm>
#include <vector>

namespace {

/// A document whose groups are nested deeper than this is taken for broken.
constexpr std::size_t DeepestGroup = 1000;
constexpr qsizetype LongestNumber = 10;

struct WordText {
    const char* word;
    char16_t text;
};

/// Control words that stand for a character.
constexpr WordText Characters[] = {
    {"par", u'\n'},           {"line", u'\n'},          {"sect", u'\n'},        {"page", u'\n'},
    {"row", u'\n'},           {"tab", u'\t'},           {"cell", u'\t'},        {"emdash", u'\u2014'},
    {"endash", u'\u2013'},    {"bullet", u'\u2022'},    {"lquote", u'\u2018'},  {"rquote", u'\u2019'},
    {"ldblquote", u'\u201C'}, {"rdblquote", u'\u201D'}, {"emspace", u'\u2003'}, {"enspace", u'\u2002'},
};

/// Groups that hold something else than text.
constexpr const char* OtherGroups[] = {
    "fonttbl", "colortbl", "stylesheet", "info",    "pict",    "object",   "header",    "headerl",   "headerr",
    "headerf", "footer",   "footerl",    "footerr", "footerf", "footnote", "generator", "listtable",
};

struct Group {
    bool passedOver = false;
    int skippedBehindUnicode = 1;
};

class Reader {
 public:
    explicit Reader(QStringView rtf) : m_rtf(rtf) {}

    std::optional<QString> read() {
        if (!m_rtf.startsWith(u"{\\rtf"))
            return std::nullopt;
        while (m_at < m_rtf.size() && !(m_begun && m_groups.empty())) {
            if (!step())
                return std::nullopt;
        }
        if (!m_groups.empty())
            return std::nullopt;
        return m_text;
    }

 private:
    bool step() {
        const QChar sign = m_rtf[m_at++];
        if (sign == u'{' || sign == u'}')
            m_toSkip = 0;
        if (sign == u'{') {
            m_begun = true;
            m_groups.push_back(m_groups.empty() ? Group() : m_groups.back());
            return m_groups.size() <= DeepestGroup;
        }
        if (m_groups.empty())
            return false;
        if (sign == u'}')
            m_groups.pop_back();
        else if (sign == u'\\')
            return control();
        else if (sign != u'\r' && sign != u'\n')
            put(sign);
        return true;
    }

    /// A character of the text; those after a Unicode character, for readers without Unicode, are skipped.
    void put(QChar character) {
        if (m_toSkip > 0)
            --m_toSkip;
        else if (!m_groups.back().passedOver)
            m_text += character;
    }

    bool control() {
        if (m_at >= m_rtf.size())
            return false;
        const QChar sign = m_rtf[m_at];
        if ((sign >= u'a' && sign <= u'z') || (sign >= u'A' && sign <= u'Z')) {
            word();
            return true;
        }
        ++m_at;
        switch (sign.unicode()) {
            case u'\'':
                return hexadecimal();
            case u'*':
                m_groups.back().passedOver = true;
                return true;
            case u'~':
                put(QChar::Nbsp);
                return true;
            case u'_':
                put(QChar(u'\u2011'));
                return true;
            case u'\r':
            case u'\n':
                put(QChar(u'\n'));
                return true;
            case u'\\':
            case u'{':
            case u'}':
                put(sign);
                return true;
            default:
                return true;
        }
    }

    bool hexadecimal() {
        bool good = false;
        const uint byte = m_rtf.mid(m_at, 2).toUInt(&good, 16);
        if (!good || m_rtf.size() - m_at < 2)
            return false;
        m_at += 2;
        put(QChar(Windows1252::characterOf(static_cast<std::uint8_t>(byte))));
        return true;
    }

    void word() {
        const qsizetype begin = m_at;
        const auto isLetter = [](QChar c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); };
        while (m_at < m_rtf.size() && isLetter(m_rtf[m_at]))
            ++m_at;
        const QStringView name = m_rtf.mid(begin, m_at - begin);
        const std::optional<int> number = parameter();
        if (m_at < m_rtf.size() && m_rtf[m_at] == u' ')
            ++m_at;
        obey(name, number);
    }

    std::optional<int> parameter() {
        const qsizetype begin = m_at;
        const auto isDigit = [this] { return m_at < m_rtf.size() && m_rtf[m_at] >= u'0' && m_rtf[m_at] <= u'9'; };
        if (m_at < m_rtf.size() && m_rtf[m_at] == u'-')
            ++m_at;
        while (isDigit() && m_at - begin <= LongestNumber)
            ++m_at;
        bool good = false;
        const int number = m_rtf.mid(begin, m_at - begin).toInt(&good);
        return good ? std::optional(number) : std::nullopt;
    }

    void obey(QStringView name, std::optional<int> number) {
        Group& group = m_groups.back();
        if (name == u"u" && number) {
            put(QChar(static_cast<char16_t>(*number)));
            m_toSkip = group.skippedBehindUnicode;
        } else if (name == u"uc") {
            group.skippedBehindUnicode = std::max(0, number.value_or(1));
        } else if (name == u"bin") {
            m_at += std::clamp<qsizetype>(number.value_or(0), 0, m_rtf.size() - m_at);
        } else if (std::ranges::any_of(OtherGroups, [&](const char* other) { return name == QLatin1String(other); })) {
            group.passedOver = true;
        } else {
            const auto* character = std::ranges::find_if(
                Characters, [&](const WordText& each) { return name == QLatin1String(each.word); });
            if (character != std::end(Characters))
                put(QChar(character->text));
        }
    }

    QStringView m_rtf;
    qsizetype m_at = 0;
    bool m_begun = false;
    std::vector<Group> m_groups;
    int m_toSkip = 0;
    QString m_text;
};

}  // namespace

std::optional<QString> plainTextOfRtf(QStringView rtf) {
    return Reader(rtf).read();
}
