#include "shell/FrameFixture.h"
#include "shell/bars/SidePanel.h"
#include "shell/commands/ProjectCommands.h"
#include "shell/session/ProjectLists.h"

#include <QDir>
#include <QRegularExpression>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>
#include <semaphore>

namespace {

class Projects : public FrameFixture {
 protected:
    Projects() {
        set("StartNewDocument", "0");
        start();
    }

    /// A project file with these lines.
    QString projectOf(const QStringList& lines, const QString& name = u"work.qmp"_qs) const {
        return fileOf(lines.join(u"\r\n"_qs).toUtf8(), name);
    }
    static QString record(const QString& file) { return file + u"\tTrue\tFalse\t0\t0\t0\t6000\t4500"_qs; }
    bool openProject(const QString& file) { return m_frame->OpenProject(file); }
    QStringList linesOf(const QString& file) const {
        return QString::fromUtf8(bytesOf(file)).split(u"\r\n"_qs, Qt::SkipEmptyParts);
    }
    QStringList openFiles() {
        QStringList files;
        for (const frmDocument* document : documents())
            files << document->filename;
        return files;
    }
    QStringList recentProjects() { return captionsOf("mnuWorkspaces"); }
    bool isEnabled(const char* name) { return entry(name)->isEnabled(); }
    SidePanel& sidePanel() { return house().sidePanel; }
};

}  // namespace

TEST_F(Projects, OpeningOneThatIsMissingOffersToForgetItAndChangesNothing) {
    open(fileOf("text"));
    const QString missing = path(u"gone.qmp"_qs);
    m_frame->AddFavProject(missing);
    m_prompts.answerNo();
    EXPECT_FALSE(openProject(missing));
    EXPECT_EQ(captionsOf("mnuFavoriteProject"), QStringList{u"gone"_qs});
    m_prompts.answerYes();
    EXPECT_FALSE(openProject(missing));
    EXPECT_TRUE(captionsOf("mnuFavoriteProject").isEmpty());
    EXPECT_EQ(m_prompts.questions[0],
              u"Project '%1' does not exist.\nDo you want to remove the project from the Favorites?"_qs.arg(missing));
    EXPECT_EQ(documents().size(), 1);
    EXPECT_TRUE(m_frame->ProjectFilename.isEmpty());
}

TEST_F(Projects, OpeningOneClosesWhatIsOpenAndOpensItsDocuments) {
    open(fileOf("old"));
    const QString first = fileOf("one", u"first.txt"_qs);
    const QString second = fileOf("two", u"second.txt"_qs);
    const QString file = projectOf({u"<<OPEN FILE>>"_qs, record(first), record(second)});
    EXPECT_TRUE(openProject(file));
    EXPECT_EQ(openFiles(), (QStringList{first, second}));
    EXPECT_EQ(m_frame->ProjectFilename, file);
    EXPECT_EQ(recentProjects(), QStringList{file});
    EXPECT_TRUE(isEnabled("mnuCloseProject") && isEnabled("mnuSaveProject") && isEnabled("mnuDeleteFavorite"));
}

TEST_F(Projects, OpeningOneGivesEachLineToThePartThatItConcerns) {
    const QString file =
        projectOf({u"<<EXPLORER STATUS>>"_qs, u"True\t4200"_qs, u"<<PROJECT FILE>>"_qs, u"file\t/a"_qs, u"no tab"_qs,
                   u"FOLDER\tDRIVE/\tmore"_qs, u""_qs, u"<<EXPLORER>>"_qs, u"FOLDER/home"_qs, u"<<TAB POSITION>>"_qs,
                   u"True\t0\tFalse\t0\tTrue\t3000\t"_qs, u"<<open file>>"_qs, record(fileOf("text"))});
    m_explorer.take();
    EXPECT_TRUE(openProject(file));
    EXPECT_EQ(m_explorer.take().filter(QRegularExpression(u"^(AddProjectItem|GotoPath|RestoreItem|SetProjectName)"_qs)),
              (QStringList{u"SetProjectName  [New Project]"_qs, u"SetProjectName %1 work"_qs.arg(file),
                           u"AddProjectItem /a file"_qs, u"AddProjectItem DRIVE/ FOLDER"_qs, u"GotoPath FOLDER/home"_qs,
                           u"RestoreItem True\t0\tFalse\t0\tTrue\t3000\t"_qs}));
    EXPECT_TRUE(sidePanel().isShown());
    EXPECT_EQ(sidePanel().splitterLeft(), 4200);
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(Projects, AHiddenPanelGetsNeitherWidthNorFolderNorTabs) {
    const int before = sidePanel().splitterLeft();
    const QString file = projectOf({u"<<EXPLORER STATUS>>"_qs, u"False\t4200"_qs, u"<<EXPLORER>>"_qs, u"FOLDER/"_qs,
                                    u"<<TAB POSITION>>"_qs, u"True\t0\tTrue\t0\tTrue\t0\t"_qs});
    m_explorer.take();
    EXPECT_TRUE(openProject(file));
    EXPECT_FALSE(sidePanel().isShown());
    EXPECT_EQ(sidePanel().splitterLeft(), before);
    EXPECT_TRUE(m_explorer.take().filter(QRegularExpression(u"^(GotoPath|RestoreItem)"_qs)).isEmpty());
}

TEST_F(Projects, AnEmptyFileIsAnEmptyWorkspaceUnderItsName) {
    const QString file = projectOf({});
    EXPECT_TRUE(openProject(file));
    EXPECT_EQ(m_frame->ProjectFilename, file);
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(Projects, ADocumentThatIsMissingIsReportedAndTheRestIsOpened) {
    const QString kept = fileOf("text");
    const QString file = projectOf({u"<<OPEN FILE>>"_qs, record(path(u"gone.txt"_qs)), record(kept)});
    EXPECT_TRUE(openProject(file));
    ASSERT_EQ(m_prompts.messages.size(), 1);
    EXPECT_TRUE(m_prompts.messages[0].startsWith(path(u"gone.txt"_qs)));
    EXPECT_TRUE(m_prompts.messages[0].endsWith(u"File not found!"_qs));
    EXPECT_EQ(openFiles(), QStringList{kept});
}

TEST_F(Projects, AFolderInPlaceOfTheFileIsReported) {
    const QString folder = path(u"folder.qmp"_qs);
    ASSERT_TRUE(QDir().mkpath(folder));
    EXPECT_FALSE(openProject(folder));
    ASSERT_EQ(m_prompts.messages.size(), 1);
    EXPECT_TRUE(m_prompts.messages[0].contains(folder));
    EXPECT_FALSE(house().systemClose.isGreyed());
}

TEST_F(Projects, AFileThatCouldNotBeReadIsNotTheProjectThatASaveWrites) {
    const QString folder = path(u"folder.qmp"_qs);
    ASSERT_TRUE(QDir().mkpath(folder));
    m_explorer.take();
    EXPECT_FALSE(openProject(folder));
    EXPECT_EQ(m_frame->ProjectFilename, u"[New Project]"_qs);
    EXPECT_EQ(m_explorer.take().filter(u"SetProjectName"_qs).last(), u"SetProjectName  [New Project]"_qs);
}

TEST_F(Projects, AreNotWrittenIntoAFolderThatDoesNotExist) {
    EXPECT_FALSE(m_frame->WriteProjectFile(path(u"none/work.qmp"_qs)));
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_FALSE(QFile::exists(path(u"none"_qs)));
}

TEST_F(Projects, OneThatIsAskedForWhileAnotherIsBeingClosedWaits) {
    openProject(projectOf({}, u"first.qmp"_qs));
    const QString second = projectOf({}, u"second.qmp"_qs);
    m_prompts.answerNo();
    m_prompts.whileShown([&] { EXPECT_FALSE(openProject(second)); });
    m_frame->CloseCurrentProject(true);
    EXPECT_TRUE(m_frame->ProjectFilename.isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(m_frame->ProjectFilename, second);
}

TEST_F(Projects, OpeningAnotherAsksToSaveThePresentOneThoughNothingChanged) {
    const QString first = projectOf({}, u"first.qmp"_qs);
    const QString second = projectOf({}, u"second.qmp"_qs);
    openProject(first);
    m_prompts.answerYes();
    openProject(second);
    EXPECT_EQ(m_prompts.questions, QStringList{u"Save the current project ?"_qs});
    EXPECT_EQ(linesOf(first).first(), u"<<EXPLORER STATUS>>"_qs);
    EXPECT_EQ(recentProjects(), (QStringList{second, first}));
}

TEST_F(Projects, TheFileHasItsSectionsInOrder) {
    const QString text = fileOf("text");
    open(text);
    run("mnuFileNew");
    const QString file = path(u"saved.qmp"_qs);
    sidePanel().setShown(true);
    sidePanel().setSplitterLeft(3300);
    EXPECT_TRUE(m_frame->WriteProjectFile(file));
    const QStringList lines = linesOf(file);
    ASSERT_GE(lines.size(), 4);
    EXPECT_EQ(lines[0], u"<<EXPLORER STATUS>>"_qs);
    EXPECT_EQ(lines[1], u"True\t3300"_qs);
    EXPECT_EQ(lines[lines.size() - 2], u"<<OPEN FILE>>"_qs);
    EXPECT_TRUE(lines.last().startsWith(text + u"\tTrue\tFalse\t"_qs));
}

TEST_F(Projects, AFileThatCannotBeWrittenIsReported) {
    ASSERT_TRUE(QDir().mkpath(path(u"taken.qmp"_qs)));
    EXPECT_FALSE(m_frame->WriteProjectFile(path(u"taken.qmp"_qs)));
    EXPECT_EQ(m_prompts.messages.size(), 1);
}

TEST_F(Projects, SavingUnderANameAsksBeforeItReplacesAFile) {
    const QString taken = projectOf({u"old"_qs}, u"taken.qmp"_qs);
    const QString free = path(u"free.qmp"_qs);
    m_prompts.answerSavePath(taken);
    m_prompts.answerNo();
    m_prompts.answerSavePath(free);
    m_frame->SaveProjectFileAs();
    EXPECT_EQ(m_prompts.questions, QStringList{taken + u" already exist !\nOverwrite it ?"_qs});
    EXPECT_EQ(m_prompts.fileDialogs[0].title, u"Save Project As"_qs);
    EXPECT_EQ(m_prompts.fileDialogs[0].filters, u"Quillmark Project (*.qmp)|*.qmp"_qs);
    EXPECT_EQ(linesOf(taken), QStringList{u"old"_qs});
    EXPECT_EQ(m_frame->ProjectFilename, free);
    EXPECT_EQ(recentProjects(), QStringList{free});
    EXPECT_TRUE(m_explorer.calls.contains(u"SetProjectName %1 free"_qs.arg(free)));
}

TEST_F(Projects, ACancelledSaveLeavesEverything) {
    m_prompts.answerSavePath({});
    m_frame->SaveProjectFileAs();
    EXPECT_TRUE(m_frame->ProjectFilename.isEmpty());
    EXPECT_TRUE(recentProjects().isEmpty());
}

TEST_F(Projects, SavingWithoutAProjectAsksForAName) {
    const QString file = path(u"new.qmp"_qs);
    m_prompts.answerSavePath(file);
    m_frame->SaveProjectFile();
    EXPECT_EQ(m_prompts.fileDialogs[0].title, u"Save Project"_qs);
    EXPECT_EQ(m_prompts.fileDialogs[0].initialName, QString());
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_TRUE(isEnabled("mnuSaveProject"));
}

TEST_F(Projects, TheCommandSavesToTheNameThatThereIs) {
    const QString file = projectOf({});
    openProject(file);
    run("mnuSaveProject");
    EXPECT_TRUE(m_prompts.fileDialogs.empty());
    EXPECT_EQ(linesOf(file).first(), u"<<EXPLORER STATUS>>"_qs);
}

TEST_F(Projects, TheCommandAsksForANameOfANewProject) {
    m_prompts.answerYes();
    run("mnuNewProject");
    EXPECT_EQ(m_frame->ProjectFilename, u"[New Project]"_qs);
    m_prompts.answerSavePath({});
    run("mnuSaveProject");
    EXPECT_EQ(m_prompts.fileDialogs[0].title, u"Save Project As"_qs);
    EXPECT_EQ(m_prompts.fileDialogs[0].initialName, u"[New Project]"_qs);
}

TEST_F(Projects, ANewProjectClosesEverythingAfterAQuestion) {
    open(fileOf("text"));
    m_prompts.answerNo();
    run("mnuNewProject");
    EXPECT_EQ(documents().size(), 1);
    m_prompts.answerYes();
    m_explorer.take();
    run("mnuNewProject");
    EXPECT_EQ(m_prompts.questions, (QStringList{u"Create [New Project] ?"_qs, u"Create [New Project] ?"_qs}));
    EXPECT_TRUE(documents().isEmpty());
    const QStringList calls = m_explorer.take();
    EXPECT_EQ(calls.mid(calls.size() - 6),
              (QStringList{u"OpenTab 0"_qs, u"OpenTab 1"_qs, u"OpenTab 2"_qs, u"OpenAllTabs"_qs, u"ClearExplorer"_qs,
                           u"SetProjectName  [New Project]"_qs}));
    EXPECT_TRUE(recentProjects().isEmpty());
    EXPECT_TRUE(isEnabled("mnuSaveProjectAs"));
}

TEST_F(Projects, ANewProjectIsWrittenUnderItsNameInTheWorkingFolderWhenItIsClosed) {
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(m_folder.path()));
    m_prompts.answerYes();
    run("mnuNewProject");
    m_prompts.answerYes();
    m_prompts.answerYes();
    run("mnuCloseProject");
    EXPECT_TRUE(QDir::setCurrent(before));
    EXPECT_TRUE(QFile::exists(path(u"[New Project]"_qs)));
    EXPECT_TRUE(m_frame->ProjectFilename.isEmpty());
}

TEST_F(Projects, ClosingAsksTwiceAndLeavesNoProject) {
    openProject(projectOf({u"<<OPEN FILE>>"_qs, record(fileOf("text"))}));
    m_prompts.answerYes();
    m_prompts.answerNo();
    m_explorer.take();
    run("mnuCloseProject");
    EXPECT_EQ(m_prompts.questions, (QStringList{u"Close the current project?"_qs, u"Save the current project ?"_qs}));
    EXPECT_TRUE(documents().isEmpty());
    EXPECT_TRUE(m_frame->ProjectFilename.isEmpty());
    EXPECT_TRUE(m_explorer.take().contains(u"SetProjectName  Project"_qs));
    EXPECT_FALSE(isEnabled("mnuCloseProject") || isEnabled("mnuSaveProject") || isEnabled("mnuSaveProjectAs"));
}

TEST_F(Projects, ClosingWithoutAProjectDoesNothing) {
    house().projects.CloseProject();
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(Projects, TheOpenCommandReportsAFileThatDoesNotExist) {
    m_prompts.answerFiles({{path(u"gone.qmp"_qs)}, false});
    run("mnuOpenProject");
    EXPECT_EQ(m_prompts.messages, QStringList{u"File not exist!"_qs});
    EXPECT_EQ(m_prompts.fileDialogs[0].title, u"Open Project"_qs);
    EXPECT_EQ(m_prompts.fileDialogs[0].choice, FileQuestion::OneFile);
}

TEST_F(Projects, TheOpenCommandOpensTheFileThatWasChosen) {
    const QString file = projectOf({});
    m_prompts.answerFiles({{file}, false});
    run("mnuOpenProject");
    EXPECT_EQ(m_frame->ProjectFilename, file);
    m_prompts.answerFiles({});
    run("mnuOpenProject");
    EXPECT_EQ(m_frame->ProjectFilename, file);
}

TEST_F(Projects, ASecondProjectWaitsUntilTheFirstHasBeenOpened) {
    const QString first = projectOf({u"<<OPEN FILE>>"_qs, record(path(u"gone.txt"_qs))}, u"first.qmp"_qs);
    const QString second = projectOf({}, u"second.qmp"_qs);
    m_prompts.whileShown([&] { EXPECT_FALSE(openProject(second)); });
    m_prompts.answerNo();  // to saving the first
    EXPECT_TRUE(openProject(first));
    EXPECT_EQ(m_frame->ProjectFilename, first);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_frame->ProjectFilename, second);
}

TEST_F(Projects, WhileTheDiskDoesNotAnswerTheWindowLivesAndOtherProjectsWait) {
    const auto gate = std::make_shared<std::counting_semaphore<>>(0);
    const QString first = projectOf({}, u"first.qmp"_qs);
    m_fileExists = [gate, first](const QString& file) {
        if (file == first)
            gate->acquire();
        return fileExists(file);
    };
    start();
    bool isClosed = true;
    QTimer::singleShot(0, m_frame.get(), [&] {
        isClosed = m_frame->close();
        EXPECT_FALSE(openProject(projectOf({}, u"second.qmp"_qs)));
        gate->release();
    });
    EXPECT_TRUE(openProject(first));
    EXPECT_FALSE(isClosed);
    EXPECT_EQ(m_frame->ProjectFilename, first);
    m_prompts.answerNo();  // to saving the first
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_frame->ProjectFilename == path(u"second.qmp"_qs); }));
}

TEST_F(Projects, CloseIsDisabledWhileOneIsBeingOpened) {
    bool closed = true;
    m_prompts.whileShown([&] { closed = m_frame->close(); });
    openProject(projectOf({u"<<OPEN FILE>>"_qs, record(path(u"gone.txt"_qs))}));
    EXPECT_FALSE(closed);
}
