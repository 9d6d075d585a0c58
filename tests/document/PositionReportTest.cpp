#include "document/PositionReport.h"
#include "editor/control/TextControl.h"

#include <gtest/gtest.h>

/// A report beside a control that it follows.
class PositionReports : public testing::Test {
 protected:
    PositionReports() { m_control.setText(u"one\ntwo"_qs); }

    TextControl m_control;
    PositionReport m_report;
};

TEST_F(PositionReports, AMoveIsNew) {
    EXPECT_TRUE(m_report.isNewAfterMove(m_control));
    m_control.setSelStart(2);
    EXPECT_TRUE(m_report.isNewAfterMove(m_control));
}

TEST_F(PositionReports, TheMoveOfAnEditIsNotNew) {
    m_control.setSelText(u"x"_qs);
    m_report.edited(m_control);
    EXPECT_FALSE(m_report.isNewAfterMove(m_control));
}

TEST_F(PositionReports, OnlyTheFirstMoveAfterAnEditCanBeItsOwn) {
    m_control.setSelText(u"x"_qs);
    m_report.edited(m_control);
    EXPECT_FALSE(m_report.isNewAfterMove(m_control));
    EXPECT_TRUE(m_report.isNewAfterMove(m_control));
}

TEST_F(PositionReports, AMoveAfterAnEditIsNewWhereTheCaretLiesElsewhere) {
    m_report.edited(m_control);
    m_control.setSelStart(3);
    EXPECT_TRUE(m_report.isNewAfterMove(m_control));
}

TEST_F(PositionReports, AnotherEditMakesTheSamePlaceNew) {
    m_control.setSelText(u"x"_qs);
    m_report.edited(m_control);
    const qint64 place = m_control.SelStart();
    m_control.setText(u"other text"_qs);
    m_control.setSelStart(place);
    m_control.setSelEnd(place);
    EXPECT_TRUE(m_report.isNewAfterMove(m_control));
}
