#include "shell/FrameFixture.h"
#include "shell/commands/LanguageMenu.h"
#include "shell/commands/MenuText.h"

#include <QMenu>

class RunTimeMenus : public FrameFixture {
 protected:
    QStringList shown(const char* menu) {
        QStringList captions;
        for (const QAction* action : house().entries.menu(menu)->actions()) {
            if (action->isVisible())
                captions << MenuText::captionOf(*action);
        }
        return captions;
    }
    void fill(const char* array, int number, const QString& caption, const QVariant& tag = {}) {
        MenuText::setCaption(*slot(array, number), caption);
        slot(array, number)->setData(tag);
        slot(array, number)->setVisible(true);
    }
};

TEST_F(RunTimeMenus, EverySlotIsThereUnderItsName) {
    start();
    struct {
        const char* array;
        int first;
        int last;
        const char* placeholder;
    } const arrays[] = {{"mnuFiles", 1, 10, "Files(s)"},
                        {"mnuWorkspaces", 1, 10, "Project(s)"},
                        {"mnuFavoriteProject", 1, 30, nullptr},
                        {"mnuExecMacro", 1, 10, "Macro(s)"}};
    for (const auto& array : arrays) {
        for (int i = array.first; i <= array.last; ++i) {
            ASSERT_NE(slot(array.array, i), nullptr) << array.array << i;
            EXPECT_EQ(slot(array.array, i)->objectName(), u"%1(%2)"_qs.arg(QLatin1String(array.array)).arg(i));
            EXPECT_FALSE(slot(array.array, i)->isVisible());
        }
        EXPECT_EQ(slot(array.array, array.last + 1), nullptr);
        EXPECT_EQ(slot(array.array, 0) == nullptr, array.placeholder == nullptr);
        if (array.placeholder == nullptr)
            continue;
        EXPECT_EQ(slot(array.array, 0)->text(), QLatin1String(array.placeholder));
        EXPECT_TRUE(slot(array.array, 0)->isVisible());
        EXPECT_FALSE(slot(array.array, 0)->isEnabled());
    }
    EXPECT_FALSE(slot("mnuOpenWindows", 0)->isVisible());
    EXPECT_EQ(slot("mnuOpenWindows", 0)->text(), u"-"_qs);
    EXPECT_FALSE(entry("mnuProjects")->isEnabled());
    EXPECT_TRUE(entry("mnuProjects")->isVisible());
}

TEST_F(RunTimeMenus, ARecentFileOpensByItsCaption) {
    start();
    const QString file = fileOf("x", u"a & b.txt"_qs);
    fill("mnuFiles", 2, file);
    slot("mnuFiles", 2)->trigger();
    EXPECT_EQ(active()->filename, file);
    fill("mnuFiles", 1, path(u"gone"_qs));
    slot("mnuFiles", 1)->trigger();
    EXPECT_EQ(m_prompts.messages, QStringList(path(u"gone"_qs) + QLatin1String("\nFile not found!")));
}

TEST_F(RunTimeMenus, ProjectsOpenByCaptionOrTag) {
    start();
    fill("mnuWorkspaces", 1, u"/a.qmp"_qs);
    m_prompts.answerNo();
    slot("mnuWorkspaces", 1)->trigger();
    EXPECT_EQ(missingProject(), u"/a.qmp"_qs);
    fill("mnuFavoriteProject", 30, u"b"_qs, u"/b.qmp"_qs);
    m_prompts.answerNo();
    slot("mnuFavoriteProject", 30)->trigger();
    EXPECT_EQ(missingProject(), u"/b.qmp"_qs);
}

TEST_F(RunTimeMenus, APlaceholderDoesNothing) {
    start();
    for (const char* array : {"mnuFiles", "mnuWorkspaces", "mnuExecMacro"})
        slot(array, 0)->trigger();
    slot("mnuExecMacro", 0)->setEnabled(true);
    slot("mnuExecMacro", 0)->trigger();
    EXPECT_TRUE(m_explorer.calls.isEmpty());
    EXPECT_EQ(tabs().size(), 1);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(RunTimeMenus, TheHiddenWindowEntrySelectsTheTabOfItsTag) {
    start();
    run("mnuFileNew");
    slot("mnuOpenWindows", 0)->setData(u"F1"_qs);
    slot("mnuOpenWindows", 0)->setEnabled(true);
    slot("mnuOpenWindows", 0)->trigger();
    EXPECT_EQ(active()->fIdx, u"F1"_qs);
}

TEST_F(RunTimeMenus, LanguagesStandInTheirMenuInTheirOrder) {
    start();
    house().languageMenu.LoadLanguageMenu({u"HTML"_qs, u"C&D"_qs});
    EXPECT_EQ(shown("mnuLanguages"), QStringList({u"Organize Languages"_qs, u"-"_qs, u"HTML"_qs, u"C&D"_qs}));
    EXPECT_EQ(entry("mnuLanguage(1)")->data().toInt(), 1);
    EXPECT_FALSE(entry("mnuOrgLanguages")->data().isValid());
    house().languageMenu.LoadLanguageMenu(QStringList(60, u"X"_qs));
    EXPECT_EQ(shown("mnuLanguages").size(), 2 + 51);
    EXPECT_NE(entry("mnuLanguage(50)"), nullptr);
    EXPECT_EQ(entry("mnuLanguage(51)"), nullptr);
}

TEST_F(RunTimeMenus, AChosenLanguageTakesTheMarksOfAllOthersUntilTheNextActivation) {
    m_shareFolder = shareFolder();
    start();
    house().languageMenu.LoadLanguageMenu({u"HTML"_qs, u"ANSI"_qs});
    entry("mnuLanguage(0)")->trigger();
    EXPECT_TRUE(entry("mnuLanguage(0)")->isChecked());
    EXPECT_FALSE(entry("mnuShowLineNumber")->isChecked());
    EXPECT_FALSE(entry("mnuShowFilesTab")->isChecked());
    m_frame->SetDocumentEnv(active());
    EXPECT_TRUE(entry("mnuShowLineNumber")->isChecked());
    EXPECT_TRUE(entry("mnuShowFilesTab")->isChecked());
    EXPECT_TRUE(entry("mnuLanguage(0)")->isChecked());
}

TEST_F(RunTimeMenus, ALanguageMarksEveryEntryOfItsName) {
    start();
    house().languageMenu.LoadLanguageMenu({u"HTML"_qs, u"ANSI"_qs});
    entry("mnuLanguage(1)")->trigger();
    EXPECT_TRUE(entry("mnuLanguage(1)")->isChecked());
    EXPECT_TRUE(entry("mnuANSI")->isChecked());
    house().languageMenu.CheckLangMenu(active());
    EXPECT_FALSE(entry("mnuLanguage(1)")->isChecked());
    EXPECT_FALSE(entry("mnuANSI")->isChecked());
    EXPECT_FALSE(entry("mnuANSI")->isCheckable());
    EXPECT_TRUE(entry("mnuReadonly")->isCheckable());
}

TEST_F(RunTimeMenus, WithoutADocumentALanguageIsNotChosen) {
    start();
    house().languageMenu.LoadLanguageMenu({u"HTML"_qs});
    run("mnuFileClose");
    entry("mnuLanguage(0)")->trigger();
    EXPECT_FALSE(entry("mnuLanguage(0)")->isChecked());
}
