#include "document/PositionReport.h"
#include "editor/control/TextControl.h"

#include <gtest/gtest.h>

/// A report beside a control that it follows.
class PositionReports : public testing::Test {
 protected:
    PositionReports() { m_control.setText(u"one\ntwo"_qs); }

    void reportEdit() { m_report.edited(place()); }
    bool isMoveNew() { return m_report.isNewAfterMove(place()); }

    TextControl m_control;

 private:
    PositionReport::Place place() const { return {m_control.changeCount(), m_control.SelStart(), m_control.SelEnd()}; }

    PositionReport m_report;
};

TEST_F(PositionReports, AMoveIsNew) {
    EXPECT_TRUE(isMoveNew());
    m_control.setSelStart(2);
    EXPECT_TRUE(isMoveNew());
}

TEST_F(PositionReports, TheMoveOfAnEditIsNotNew) {
    m_control.setSelText(u"x"_qs);
    reportEdit();
    EXPECT_FALSE(isMoveNew());
}

TEST_F(PositionReports, OnlyTheFirstMoveAfterAnEditCanBeItsOwn) {
    m_control.setSelText(u"x"_qs);
    reportEdit();
    EXPECT_FALSE(isMoveNew());
    EXPECT_TRUE(isMoveNew());
}

TEST_F(PositionReports, AMoveAfterAnEditIsNewWhereTheCaretLiesElsewhere) {
    reportEdit();
    m_control.setSelStart(3);
    EXPECT_TRUE(isMoveNew());
}

TEST_F(PositionReports, AnotherEditMakesTheSamePlaceNew) {
    m_control.setSelText(u"x"_qs);
    reportEdit();
    const qint64 place = m_control.SelStart();
    m_control.setText(u"other text"_qs);
    m_control.setSelStart(place);
    m_control.setSelEnd(place);
    EXPECT_TRUE(isMoveNew());
}
