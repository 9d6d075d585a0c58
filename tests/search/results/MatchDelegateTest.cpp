#include "search/results/SearchResultsModel.h"
#include "search/results/SearchResultsView.h"
#include "widgets/Contrast.h"

#include <QApplication>
#include <QImage>
#include <QPalette>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

/// One row for each match of a file, drawn in a palette.
class MatchDelegateTest : public testing::Test {
 protected:
    void SetUp() override {
        m_view.resize(500, 200);
        setLight();
        m_view.show();
    }
    void setLight() { setColours(Qt::white, Qt::black); }
    void setDark() { setColours(QColor(35, 38, 41), QColor(239, 240, 241)); }
    void setColours(const QColor& ground, const QColor& text) {
        QPalette palette;
        palette.setColor(QPalette::Base, ground);
        palette.setColor(QPalette::Text, text);
        palette.setColor(QPalette::Highlight, QColor(40, 90, 200));
        palette.setColor(QPalette::HighlightedText, Qt::white);
        m_view.setPalette(palette);
    }
    QModelIndex add(const QString& line, qint32 column, qint32 length) {
        FileMatches matches;
        matches.addLine(1, line);
        matches.addMatch({0, length, 0, column, length});
        m_model.addMatches(u"/a"_qs, matches);
        m_view.expandAll();
        QApplication::processEvents();
        const QModelIndex file = m_model.index(0, 0);
        return m_model.index(m_model.rowCount(file) - 1, 0, file);
    }
    QImage picture(const QModelIndex& index) {
        return m_view.viewport()->grab(m_view.visualRect(index)).toImage().convertToFormat(QImage::Format_RGB32);
    }
    /// The first and the last column of the row with a colour of the mark; -1 without one.
    struct Marked {
        int first = -1;
        int last = -1;
    };
    Marked markedIn(const QModelIndex& index) {
        const QImage image = picture(index);
        const int y = image.height() / 2;
        // Above the letters there is nothing but the ground of row and mark.
        const int top = 2;
        Marked marked;
        for (int x = 0; x < image.width(); ++x) {
            for (const int line : {top, y}) {
                if (!isMark(image.pixelColor(x, line)))
                    continue;
                marked.first = marked.first < 0 ? x : marked.first;
                marked.last = x;
            }
        }
        return marked;
    }
    /// Yellow, light or dark.
    static bool isMark(const QColor& colour) {
        return colour.red() > colour.blue() + 60 && colour.green() > colour.blue() + 40;
    }
    int widthOf(const QString& text) const { return QFontMetrics(m_view.font()).horizontalAdvance(text); }

    SearchResultsModel m_model;
    SearchResultsView m_view{m_model, nullptr};
};

TEST_F(MatchDelegateTest, TheMatchHasAGroundOfItsOwnWidth) {
    const Marked marked = markedIn(add(u"if (needle)"_qs, 4, 6));
    ASSERT_GE(marked.first, 0);
    EXPECT_NEAR(marked.last - marked.first, widthOf(u"needle"_qs), 3);
    const Marked later = markedIn(add(u"if (needle && needle)"_qs, 14, 6));
    EXPECT_NEAR(later.first - marked.first, widthOf(u"needle && "_qs), 3);
}

TEST_F(MatchDelegateTest, WithoutAKnownPlaceNothingIsMarked) {
    EXPECT_EQ(markedIn(add(u"needle"_qs, -1, 6)).first, -1);
    EXPECT_EQ(markedIn(add(u"needle"_qs, 6, 6)).first, -1);
    EXPECT_EQ(markedIn(m_model.index(0, 0)).first, -1);
}

TEST_F(MatchDelegateTest, TabsAndControlCharactersInFrontKeepTheMarkOnItsText) {
    const Marked plain = markedIn(add(u"    needle"_qs, 4, 6));
    const Marked behindTab = markedIn(add(u"\t\tneedle"_qs, 2, 6));
    ASSERT_GE(behindTab.first, 0);
    EXPECT_NEAR(behindTab.last - behindTab.first, plain.last - plain.first, 2);
    EXPECT_GT(behindTab.first, plain.first - widthOf(u"    "_qs));
    const Marked behindBreak = markedIn(add(u"\r\x0b\x1bneedle"_qs, 3, 6));
    ASSERT_GE(behindBreak.first, 0);
    EXPECT_NEAR(behindBreak.last - behindBreak.first, plain.last - plain.first, 2);
}

TEST_F(MatchDelegateTest, AllRowsHaveTheSameHeight) {
    const QModelIndex plain = add(u"x"_qs, 0, 1);
    const int height = m_view.visualRect(plain).height();
    EXPECT_EQ(m_view.visualRect(add(u"a\nb\u2028c\rd"_qs, 0, 1)).height(), height);
    EXPECT_EQ(m_view.itemDelegate()->sizeHint({}, plain).height(),
              m_view.itemDelegate()->sizeHint({}, add(u"a\nb\u2028c\rd"_qs, 0, 1)).height());
}

TEST_F(MatchDelegateTest, TheMarkIsReadableInLightAndDarkAndOnASelectedRow) {
    const QModelIndex row = add(u"if (needle)"_qs, 4, 6);
    for (const bool isDark : {false, true}) {
        if (isDark)
            setDark();
        for (const bool isSelected : {false, true}) {
            SCOPED_TRACE(testing::Message() << "dark " << isDark << " selected " << isSelected);
            m_view.setCurrentIndex(isSelected ? row : QModelIndex());
            const Marked marked = markedIn(row);
            ASSERT_GE(marked.first, 0);
            const QImage image = picture(row);
            const QColor ground = image.pixelColor(marked.first + 1, 2);
            EXPECT_GT(Contrast::between(ground, image.pixelColor(image.width() - 2, 2)), 1.2);
            double contrast = 1;
            for (int x = marked.first; x <= marked.last; ++x) {
                for (int y = 0; y < image.height(); ++y)
                    contrast = std::max(contrast, Contrast::between(ground, image.pixelColor(x, y)));
            }
            EXPECT_GT(contrast, Contrast::Enough);
        }
    }
}

TEST_F(MatchDelegateTest, OfALongLineTheFirstThousandCharactersAreDrawn) {
    const QStyleOptionViewItem option;
    const int inTheLimit = m_view.itemDelegate()->sizeHint(option, add(QString(993, u'x'), 0, 1)).width();
    const int beyond = m_view.itemDelegate()->sizeHint(option, add(QString(1000, u'x'), 0, 1)).width();
    EXPECT_EQ(beyond, inTheLimit);
}

}  // namespace
