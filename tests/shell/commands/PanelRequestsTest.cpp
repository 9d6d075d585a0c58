#include "shell/FrameFixture.h"
#include "shell/commands/FrameCommands.h"
#include "shell/commands/PanelRequests.h"
#include "shell/documents/DocumentClosing.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/DocumentSaving.h"

#include <optional>

class RequestsOfThePanel : public FrameFixture {
 protected:
    void begin() {
        start();
        m_files.emplace(parts());
        m_saving.emplace(parts(), *m_files);
        m_closing.emplace(parts(), *m_saving);
        m_commands.emplace(parts(), *m_files, *m_saving, *m_closing);
        m_requests.emplace(parts(), *m_files, *m_commands);
    }

    std::optional<DocumentOpening> m_files;
    std::optional<DocumentSaving> m_saving;
    std::optional<DocumentClosing> m_closing;
    std::optional<FrameCommands> m_commands;
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
