#include "shell/FrameFixture.h"

/// Documents that are closed by their own window, as its button and its menu do.
class ChildClosing : public FrameFixture {
 protected:
    void startWithThree() {
        start();
        run("mnuFileNew");
        run("mnuFileNew");
        run("mnuWindowCascade");
    }
    QMdiSubWindow* window(qsizetype index) { return house().children.windowOf(documents().at(index)); }
    void expectWhole(qsizetype count) {
        QCoreApplication::processEvents();
        ASSERT_EQ(documents().size(), count);
        ASSERT_EQ(strip().count(), count);
        ASSERT_NE(active(), nullptr);
        EXPECT_EQ(strip().tabData(strip().currentIndex()).toString(), active()->fIdx);
        EXPECT_EQ(m_frame->focusWidget(), &textWidget());
    }
};

TEST_F(ChildClosing, AnotherBecomesTheActiveOne) {
    startWithThree();
    window(2)->close();
    expectWhole(2);
    window(house().children.documents().indexOf(active()))->close();
    expectWhole(1);
}

TEST_F(ChildClosing, OneBehindGoesWithoutChangingTheActiveOne) {
    startWithThree();
    const frmDocument* before = active();
    window(0)->close();
    expectWhole(2);
    EXPECT_EQ(active(), before);
}

TEST_F(ChildClosing, WithTheOthersMinimisedOneOfThemBecomesTheActiveOne) {
    startWithThree();
    window(0)->showMinimized();
    window(1)->showMinimized();
    house().children.bringToFront(documents().at(2));
    window(2)->close();
    QCoreApplication::processEvents();
    EXPECT_EQ(documents().size(), 2);
    ASSERT_NE(active(), nullptr);
    EXPECT_EQ(strip().tabData(strip().currentIndex()).toString(), active()->fIdx);
}

TEST_F(ChildClosing, TheLastLeavesNone) {
    start();
    window(0)->close();
    EXPECT_EQ(active(), nullptr);
    EXPECT_EQ(strip().count(), 0);
    run("mnuFileNew");
    expectWhole(1);
}

TEST_F(ChildClosing, ChangesAreAskedForOnce) {
    startWithThree();
    type(u"x"_qs);
    m_prompts.answerNo();
    window(2)->close();
    EXPECT_EQ(m_prompts.questions, QStringList(u"Save Document3 ?"_qs));
    expectWhole(2);
}
