#include "shell/FrameFixture.h"
#include "shell/commands/PanelRequests.h"

#include <optional>

class RequestsOfThePanel : public FrameFixture {
 protected:
    void begin() {
        start();
        m_requests.emplace(house().children, house().active, house().opening, house().fileCommands);
    }

    std::optional<PanelRequests> m_requests;
};

TEST_F(RequestsOfThePanel, ADocumentIsSelectedByItsKey) {
    begin();
    run("mnuFileNew");
    m_requests->selectDocument(u"F1"_qs);
    EXPECT_EQ(active()->fIdx, u"F1"_qs);
    EXPECT_EQ(strip().currentIndex(), 0);
    m_requests->selectDocument(u"F77"_qs);
    EXPECT_EQ(active()->fIdx, u"F1"_qs);
}

TEST_F(RequestsOfThePanel, AFileIsOpenedUnlocked) {
    begin();
    m_requests->openFile(fileOf("1"));
    EXPECT_EQ(active()->filename, path(u"a.txt"_qs));
    EXPECT_FALSE(active()->Locked());
}

TEST_F(RequestsOfThePanel, ClosingAndSavingConcernTheActiveDocument) {
    begin();
    const QString file = fileOf("1");
    open(file);
    type(u"x"_qs);
    m_requests->saveDocument();
    EXPECT_EQ(bytesOf(file), "x1");
    m_requests->closeDocument();
    EXPECT_TRUE(documents().isEmpty());
    m_requests->saveDocument();
    m_requests->closeDocument();
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(RequestsOfThePanel, WhileRowsAreDraggedNoDocumentTakesADrop) {
    begin();
    run("mnuFileNew");
    m_requests->dragStarts();
    for (const frmDocument* document : documents()) {
        EXPECT_FALSE(document->DocEnabled());
    }
    m_requests->dragEnds();
    for (const frmDocument* document : documents()) {
        EXPECT_TRUE(document->DocEnabled());
    }
}
