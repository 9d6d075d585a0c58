#include "platform/Folders.h"
#include "text/search/Replacement.h"
#include "text/search/SearchedText.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

constexpr SearchFlags Flags{.caseSensitive = true, .regExp = true};

QString withoutEntities(QString html) {
    return html.replace(u"&lt;"_qs, u"<"_qs).replace(u"&gt;"_qs, u">"_qs).replace(u"&amp;"_qs, u"&"_qs);
}

/// The code in the cells of each row of this class.
QList<QStringList> rows(const QString& name) {
    QFile file(shareFolder() + u"/help/regular-expressions.html"_qs);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QString page = QString::fromUtf8(file.readAll());
    const QRegularExpression row(u"<tr class=\"%1\">(.*?)</tr>"_qs.arg(name),
                                 QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpression cell(u"<td><code>(.*?)</code></td>"_qs);
    QList<QStringList> found;
    for (auto match = row.globalMatch(page); match.hasNext();) {
        QStringList cells;
        for (auto each = cell.globalMatch(match.next().captured(1)); each.hasNext();)
            cells << each.next().captured(1);
        found << cells;
    }
    return found;
}

/// The text with each match put between these two, or replaced.
QString withMatches(const QString& expression, const QString& text,
                    const std::function<QString(const MatchScan&)>& by) {
    const SearchPattern pattern(expression, Flags);
    EXPECT_FALSE(pattern.error()) << expression.toStdString();
    if (pattern.error())
        return {};
    const SearchedText searched(text.toStdString());
    MatchScan scan(pattern, searched.held, searched.map, 0);
    QString made;
    std::size_t from = 0;
    const auto part = [&](std::size_t to) { return QString::fromStdString(searched.plain.substr(from, to - from)); };
    while (scan.next()) {
        made += part(static_cast<std::size_t>(scan.match().from)) + by(scan);
        from = static_cast<std::size_t>(scan.match().to);
    }
    return made + part(searched.plain.size());
}

}  // namespace

TEST(HelpExamples, FindWhatIsMarkedInThem) {
    const QList<QStringList> examples = rows(u"finds"_qs);
    EXPECT_EQ(examples.size(), 24);
    for (const QStringList& cells : examples) {
        ASSERT_EQ(cells.size(), 2) << cells.join(u' ').toStdString();
        const QString marked = withoutEntities(cells[1]);
        const QString text = QString(marked).remove(u"<mark>"_qs).remove(u"</mark>"_qs);
        const QString found = withMatches(withoutEntities(cells[0]), text, [](const MatchScan& scan) {
            const std::string_view match = scan.group(0);
            return u"<mark>%1</mark>"_qs.arg(QString::fromUtf8(match.data(), static_cast<qsizetype>(match.size())));
        });
        EXPECT_EQ(found.toStdString(), marked.toStdString()) << cells[0].toStdString();
    }
}

TEST(HelpExamples, ReplaceAsTheyShow) {
    const QList<QStringList> examples = rows(u"replaces"_qs);
    EXPECT_EQ(examples.size(), 6);
    for (const QStringList& cells : examples) {
        ASSERT_EQ(cells.size(), 4) << cells.join(u' ').toStdString();
        const Replacement replacement(withoutEntities(cells[1]), {.regExp = true},
                                      [](const QString& text) { return text.toUtf8(); });
        const QString made =
            withMatches(withoutEntities(cells[0]), withoutEntities(cells[2]),
                        [&](const MatchScan& scan) { return QString::fromUtf8(replacement.forMatch(scan)); });
        EXPECT_EQ(made.toStdString(), withoutEntities(cells[3]).toStdString()) << cells[0].toStdString();
    }
}
