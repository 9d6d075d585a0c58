#include "shell/FrameFixture.h"
#include "shell/recovery/SaveNotices.h"

#include <QSignalSpy>

#include <thread>

namespace {

class SaveNoticesTest : public FrameFixture {
 protected:
    QString notice() { return house().status.text(1); }

    SaveNotices m_notices;
};

}  // namespace

TEST_F(SaveNoticesTest, EachKindOfOutcomeHasASentence) {
    QSignalSpy noticed(&m_notices, &SaveNotices::noticed);
    const auto sentence = [&](const SaveRecovery::Summary& summary) {
        m_notices.report(summary);
        return noticed.isEmpty() ? QString() : noticed.takeLast().first().toString();
    };
    EXPECT_EQ(sentence({3, 0, 0, 2}), QString());
    EXPECT_EQ(sentence({0, 1, 0, 0}), u"An interrupted save has been completed."_qs);
    EXPECT_EQ(sentence({0, 2, 0, 0}), u"2 interrupted saves have been completed."_qs);
    EXPECT_EQ(sentence({0, 0, 1, 0}), u"An interrupted save can't be completed; quillmark-recover has it."_qs);
    EXPECT_EQ(sentence({0, 1, 3, 0}),
              u"An interrupted save has been completed. "
              "3 interrupted saves can't be completed; quillmark-recover has them."_qs);
}

TEST_F(SaveNoticesTest, TheFrameShowsThemWhicheverThreadTheyComeFrom) {
    FrameServices given{m_prompts,     m_registry,   m_makePanel,   {}, {}, m_programFolder.path(),
                        m_shareFolder, m_fileExists, m_printDialogs};
    given.saveNotices = &m_notices;
    m_frame = std::make_unique<frmMain>(given);
    m_frame->Load();
    m_notices.report({0, 1, 0, 0});
    EXPECT_EQ(notice(), u"An interrupted save has been completed."_qs);
    std::thread([this] { m_notices.report({0, 0, 1, 0}); }).join();
    QCoreApplication::processEvents();
    EXPECT_EQ(notice(), u"An interrupted save can't be completed; quillmark-recover has it."_qs);
}
