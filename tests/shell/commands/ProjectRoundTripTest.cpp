#include "shell/FrameFixture.h"
#include "shell/bars/SidePanel.h"
#include "workspace/lists/FolderKey.h"
#include "workspace/panel/ucExplorer.h"
#include "workspace/project/ProjectFile.h"

#include <QDir>

#include <algorithm>
#include <random>
#include <string>

namespace {

/// A generated workspace in a frame with its real side panel, one for each number.
class ProjectRoundTrip : public FrameFixture, public testing::WithParamInterface<unsigned> {
 protected:
    ProjectRoundTrip() : m_random(GetParam()) {
        m_makePanel = [](const WorkspaceServices& services) -> PanelLink& { return *new ucExplorer(services); };
        set("StartNewDocument", "0");
    }

    int below(int end) { return static_cast<int>(m_random() % static_cast<unsigned>(end)); }
    bool isHeads() { return below(2) == 0; }
    template <typename Values>
    Values shuffled(Values values) {
        std::ranges::shuffle(values, m_random);
        return values;
    }

    void makeWorkspace() {
        start();
        openDocuments();
        for (frmDocument* document : shuffled(documents()))
            placeDocument(*document);
        addItems();
        arrangePanel();
    }

    /// Each file has at least one byte: one without any cannot be shown in hex mode.
    void openDocuments() {
        const QStringList names = shuffled(
            QStringList{u"plain.txt"_qs, u"two  blanks .txt"_qs, u"gr\u00FC\u00DFe.txt"_qs, u"\u6587\U0001F600"_qs,
                        u"don't \"quote\".c"_qs, u"a,b;c%1.txt"_qs, u"<<OPEN FILE>>"_qs, u".hidden"_qs});
        for (const QString& name : names.first(below(6))) {
            const QString file = fileOf(QByteArray("text\n\0bytes\r\n", 1 + below(13)), name);
            constexpr int Locked = 1;
            m_frame->OpenFile(file, isHeads() ? Locked : 0, false, isHeads());
        }
    }

    void placeDocument(const frmDocument& document) {
        const QRect place(below(500) - 50, below(400) - 50, 160 + below(500), 120 + below(400));
        house().children.setPlace(&document, {static_cast<ChildState>(below(3)), place});
    }

    void addItems() {
        ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"folder/in it"_qs));
        const QList<ProjectItem> items = shuffled(QList<ProjectItem>{
            {u"FILE"_qs, fileOf("text", u"item.txt"_qs)},
            {u"FILE"_qs, fileOf("text", u"folder/item.txt"_qs)},
            {u"FILE"_qs, path(u"gone \u00E4.txt"_qs)},
            {u"FOLDER"_qs, folderKey(path(u"folder/in it"_qs))},
            {u"FOLDER"_qs, folderKey(path(u"gone"_qs))},
            {u"FOLDER"_qs, u"DRIVE/"_qs},
            {u"FOLDER"_qs, u"REMOVABLE/gone"_qs},
        });
        for (const ProjectItem& item : items.first(below(static_cast<int>(items.size()) + 1)))
            house().panel.AddProjectItem(item.key, item.type);
    }

    void arrangePanel() {
        if (isHeads())
            house().panel.GotoPath(folderKey(path(isHeads() ? u"folder"_qs : u"folder/in it"_qs)));
        for (int tab = 0; tab < ucExplorer::TabCount(); ++tab)
            panel().SetTab(u"%1\t%2\t%3"_qs.arg(tab).arg(isHeads() ? u"True"_qs : u"False"_qs).arg(below(12000)));
        house().sidePanel.setSplitterLeft(below(9000));
        house().sidePanel.setShown(below(4) != 0);
    }

    ucExplorer& panel() { return *m_frame->findChild<ucExplorer*>(u"ucExplorer1"_qs); }

    /// Writes what is open.
    QString written(const QString& name) {
        EXPECT_TRUE(m_frame->WriteProjectFile(path(name)));
        return path(name);
    }
    void reopen(const QString& file) {
        if (!m_frame->ProjectFilename.isEmpty())
            m_prompts.answerNo();  // to saving the present project
        EXPECT_TRUE(m_frame->OpenProject(file));
        EXPECT_EQ(m_prompts.messages, QStringList());
    }

    /// The lines of a project file without what is not restored: the place of a tab that is closed, and all of a hidden
    /// panel but its items.
    std::string restorable(const QString& file) const {
        QStringList lines = QString::fromUtf8(bytesOf(file)).split(u"\r\n"_qs);
        QString& status = lines[1];
        QString& folder = lines[lines.indexOf(u"<<EXPLORER>>"_qs) + 1];
        QString& tabs = lines[lines.indexOf(u"<<TAB POSITION>>"_qs) + 1];
        if (status.startsWith(u"False"_qs)) {
            status = u"False"_qs;
            folder.clear();
            tabs.clear();
        }
        tabs.replace(QRegularExpression(u"False\t\\d+"_qs), u"False\t"_qs);
        return lines.join(u'\n').toStdString();
    }

 private:
    std::mt19937 m_random;
};

}  // namespace

TEST_P(ProjectRoundTrip, AProjectOpenedAgainInItsWindowIsTheSame) {
    makeWorkspace();
    const QString first = written(u"first.qmp"_qs);
    reopen(first);
    const QString second = written(u"second.qmp"_qs);
    EXPECT_EQ(restorable(second), restorable(first));
    reopen(second);
    EXPECT_EQ(bytesOf(written(u"third.qmp"_qs)).toStdString(), bytesOf(second).toStdString());
}

TEST_P(ProjectRoundTrip, AProjectOpenedInANewWindowIsTheSame) {
    makeWorkspace();
    const QString first = written(u"first.qmp"_qs);
    m_frame.reset();
    start();
    reopen(first);
    const QString second = written(u"second.qmp"_qs);
    EXPECT_EQ(restorable(second), restorable(first));
    reopen(second);
    EXPECT_EQ(restorable(written(u"third.qmp"_qs)), restorable(second));
}

TEST_P(ProjectRoundTrip, TheFileNamesAllThatIsInTheWorkspace) {
    makeWorkspace();
    const QStringList lines = QString::fromUtf8(bytesOf(written(u"first.qmp"_qs))).split(u"\r\n"_qs);
    const qsizetype items = lines.indexOf(u"<<EXPLORER>>"_qs) - lines.indexOf(u"<<PROJECT FILE>>"_qs) - 1;
    EXPECT_EQ(items, house().panel.PjtItemCount());
    const qsizetype opened = lines.indexOf(u"<<OPEN FILE>>"_qs) + 1;
    ASSERT_EQ(lines.size() - 1 - opened, documents().size());  // the last line is the empty one after the last end
    for (const frmDocument* document : documents()) {
        EXPECT_TRUE(lines[opened + documents().indexOf(document)].startsWith(document->filename + u'\t'));
    }
}

INSTANTIATE_TEST_SUITE_P(Generated, ProjectRoundTrip, testing::Range(1U, 25U));
