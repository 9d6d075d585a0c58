#include "text/search/Replacement.h"

#include "text/search/MatchScan.h"

#include <algorithm>

namespace {

/// An element of a replacement text: a reference to a group, or literal characters.
struct Token {
    QString text;
    int group = -1;
    qsizetype length = 1;
};

int digitAt(const QString& text, qsizetype at) {
    const bool digit = at < text.size() && text[at] >= u'0' && text[at] <= u'9';
    return digit ? text[at].unicode() - u'0' : -1;
}

Token tokenOfEscape(const QString& text, qsizetype at) {
    if (const int group = digitAt(text, at + 1); group >= 0)
        return {{}, group, 2};
    switch (at + 1 < text.size() ? text[at + 1].unicode() : u'\0') {
        case u'n':
            return {u"\n"_qs, -1, 2};
        case u'r':
            return {u"\r"_qs, -1, 2};
        case u't':
            return {u"\t"_qs, -1, 2};
        case u'\\':
            return {u"\\"_qs, -1, 2};
        default:
            return {u"\\"_qs, -1, 1};
    }
}

/// Parses `$1`, `$12`, `${1}` or `$$`.
Token tokenOfDollar(const QString& text, qsizetype at) {
    if (at + 1 < text.size() && text[at + 1] == u'$')
        return {u"$"_qs, -1, 2};
    const bool braced = at + 1 < text.size() && text[at + 1] == u'{';
    qsizetype end = at + (braced ? 2 : 1);
    int group = digitAt(text, end);
    if (group < 0)
        return {u"$"_qs, -1, 1};
    if (const int second = digitAt(text, ++end); second >= 0) {
        group = group * 10 + second;
        ++end;
    }
    if (!braced)
        return {{}, group, end - at};
    if (end < text.size() && text[end] == u'}')
        return {{}, group, end + 1 - at};
    return {u"$"_qs, -1, 1};
}

Token tokenAt(const QString& text, qsizetype at) {
    if (text[at] == u'\\')
        return tokenOfEscape(text, at);
    if (text[at] == u'$')
        return tokenOfDollar(text, at);
    return {QString(text[at]), -1, 1};
}

QString capitalised(const QString& text) {
    const auto letter = std::find_if(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
    const qsizetype first = letter - text.begin();
    return text.left(first) + text.mid(first, 1).toUpper() + text.mid(first + 1).toLower();
}

QByteArray groupWith(LineEndHalves halves, std::string_view group, std::string_view match) {
    QByteArray text(group.data(), static_cast<qsizetype>(group.size()));
    if (text.isEmpty())
        return text;
    if (halves.cr && group.data() == match.data())
        text.prepend('\r');
    if (halves.lf && group.data() + group.size() == match.data() + match.size())
        text.append('\n');
    return text;
}

}  // namespace

Replacement::Replacement(const QString& text, Rules rules, const std::function<QByteArray(const QString&)>& held)
    : m_preserveCase(rules.preserveCase) {
    QString literal;
    const auto closeLiteral = [&] {
        if (!literal.isEmpty())
            m_pieces.push_back({held(literal), -1});
        literal.clear();
    };
    for (qsizetype at = 0; at < text.size();) {
        const Token token = rules.regExp ? tokenAt(text, at) : Token{QString(text[at])};
        at += token.length;
        literal += token.text;
        if (token.group >= 0) {
            closeLiteral();
            m_pieces.push_back({{}, token.group});
        }
    }
    closeLiteral();
    m_fixed = !m_preserveCase && std::ranges::all_of(m_pieces, [](const Piece& piece) { return piece.group < 0; });
}

QByteArray Replacement::forMatch(const MatchScan& scan, LineEndHalves halves) const {
    const std::string_view match = scan.group(0);
    QByteArray made;
    for (const Piece& piece : m_pieces)
        made += piece.group < 0 ? piece.text : groupWith(halves, scan.group(piece.group), match);
    if (!m_preserveCase)
        return made;
    return withCaseOf(QString::fromUtf8(match.data(), static_cast<qsizetype>(match.size())), QString::fromUtf8(made))
        .toUtf8();
}

QString withCaseOf(const QString& match, const QString& replacement) {
    const QString upper = match.toUpper();
    const QString lower = match.toLower();
    if (upper == lower)
        return replacement;
    if (match == lower)
        return replacement.toLower();
    if (match == capitalised(match))
        return capitalised(replacement);
    return match == upper ? replacement.toUpper() : replacement;
}
