#include "shell/FrameFixture.h"
#include "shell/bars/SidePanel.h"
#include "shell/commands/PanelRequests.h"

#include <stdexcept>

class RequestsOfThePanel : public FrameFixture {
 protected:
    PanelRequests& requests() { return house().panelRequests; }
};

TEST_F(RequestsOfThePanel, ADocumentIsSelectedByItsKey) {
    start();
    run("mnuFileNew");
    requests().selectDocument(u"F1"_qs);
    EXPECT_EQ(active()->fIdx, u"F1"_qs);
    EXPECT_EQ(strip().currentIndex(), 0);
    requests().selectDocument(u"F77"_qs);
    EXPECT_EQ(active()->fIdx, u"F1"_qs);
}

TEST_F(RequestsOfThePanel, AFileIsOpenedUnlocked) {
    start();
    requests().openFile(fileOf("1"));
    EXPECT_EQ(active()->filename, path(u"a.txt"_qs));
    EXPECT_FALSE(active()->Locked());
}

TEST_F(RequestsOfThePanel, ClosingAndSavingConcernTheActiveDocument) {
    start();
    const QString file = fileOf("1");
    open(file);
    type(u"x"_qs);
    requests().saveDocument();
    EXPECT_EQ(bytesOf(file), "x1");
    requests().closeDocument();
    EXPECT_TRUE(documents().isEmpty());
    requests().saveDocument();
    requests().closeDocument();
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(RequestsOfThePanel, WhileRowsAreDraggedNoDocumentTakesADrop) {
    start();
    run("mnuFileNew");
    requests().dragStarts();
    for (const frmDocument* document : documents()) {
        EXPECT_FALSE(document->DocEnabled());
    }
    requests().dragEnds();
    for (const frmDocument* document : documents()) {
        EXPECT_TRUE(document->DocEnabled());
    }
}

TEST_F(RequestsOfThePanel, ThePanelIsHiddenAndTheMarkOfItsEntryFollows) {
    start();
    EXPECT_TRUE(entry("mnuEditExplorer")->isChecked());
    requests().hidePanel();
    EXPECT_FALSE(house().sidePanel.isShown());
    EXPECT_FALSE(entry("mnuEditExplorer")->isChecked());
    requests().hidePanel();
    EXPECT_FALSE(entry("mnuEditExplorer")->isChecked());
}

TEST_F(RequestsOfThePanel, ARequestThatFailsLeavesThePanelStanding) {
    start();
    type(u"x"_qs);
    m_prompts.whileShown([] { throw std::runtime_error("no box"); });
    EXPECT_NO_THROW(requests().closeDocument());
    m_prompts.whileShown([] { throw std::runtime_error("no box"); });
    EXPECT_NO_THROW(requests().openFile(path(u"gone.txt"_qs)));
}
