#include "platform/Folders.h"
#include "shell/search/SearchInFrame.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>

/// The dialogs as the commands show them.
class SearchDialogsInFrame : public SearchInFrame {
 protected:
    SearchDialogsInFrame() { EXPECT_TRUE(QDir().mkpath(ProgramFolder())); }

    QDialog* dialog(const char* name) { return m_frame->findChild<QDialog*>(QLatin1String(name)); }
    /// Fills in the dialog once it is shown, and presses one of its buttons.
    void whenShown(const char* name, const std::function<void(QDialog&)>& fill, const char* button = "cmdFind") {
        atYields([this, name, fill, button] {
            QDialog* shown = dialog(name);
            if (shown == nullptr || !shown->isVisible())
                return false;
            fill(*shown);
            shown->findChild<QAbstractButton*>(QLatin1String(button))->click();
            return true;
        });
    }
    static void set(const QDialog& dialog, const char* box, const QString& text) {
        dialog.findChild<QComboBox*>(QLatin1String(box))->setEditText(text);
    }
    static QString textIn(const QDialog& dialog, const char* box) {
        return dialog.findChild<QComboBox*>(QLatin1String(box))->currentText();
    }
    static void choose(const QDialog& dialog, const char* button, bool on = true) {
        dialog.findChild<QAbstractButton*>(QLatin1String(button))->setChecked(on);
    }
    static QByteArray firstOf(const char* history) {
        QFile file(ProgramFolder() + u'/' + QLatin1String(history));
        return file.open(QIODevice::ReadOnly) ? file.readLine().trimmed() : QByteArray("(no such file)");
    }
};

TEST_F(SearchDialogsInFrame, FindSearchesWhatWasFilledIn) {
    start();
    folder(u"sub"_qs);
    const QString file = fileOf("Foo food foo", u"sub/a.c"_qs);
    fileOf("foo", u"sub/b.h"_qs);
    whenShown("frmSearchInFiles", [&](QDialog& shown) {
        set(shown, "cmbDir", m_folder.path());
        set(shown, "cmbFiles", u"*.c"_qs);
        set(shown, "cmbFind", u"foo"_qs);
        choose(shown, "chkSubdir");
        choose(shown, "chkMatchCase");
        choose(shown, "chkWholeWord");
    });
    run("mnuFindInFiles");
    EXPECT_TRUE(allActionsWereDone());
    EXPECT_EQ(searched(), 1);
    EXPECT_EQ(files(), QStringList(file));
    EXPECT_EQ(tags(0), QStringList(u"1,9,3"_qs));
    EXPECT_EQ(title(), u"Search completed, files found : 1"_qs);
    EXPECT_EQ(firstOf("infiles_find.txt"), "foo");
    EXPECT_EQ(firstOf("infiles_files.txt"), "*.c");
    EXPECT_EQ(firstOf("infiles_dir.txt"), m_folder.path().toUtf8());
}

TEST_F(SearchDialogsInFrame, ADirectoryIsFilledInForTheUser) {
    start();
    const QString file = fileOf("f1o");
    QString directory;
    whenShown("frmSearchInFiles", [&](QDialog& shown) {
        directory = textIn(shown, "cmbDir");
        set(shown, "cmbFiles", u"*"_qs);
        set(shown, "cmbFind", u"f\\do"_qs);
        choose(shown, "chkRegular");
    });
    m_frame->ShowSearchInFiles(m_folder.path());
    EXPECT_EQ(directory, m_folder.path());
    EXPECT_EQ(files(), QStringList(file));
}

TEST_F(SearchDialogsInFrame, AFolderOnTheCommandLineIsSearchedWhenTheFrameHasLoaded) {
    const QString file = fileOf("foo");
    QString directory;
    bool wasLoading = false;
    whenShown("frmSearchInFiles", [&](QDialog& shown) {
        directory = textIn(shown, "cmbDir");
        wasLoading = !m_steps.contains(u"setCaption"_qs);
        set(shown, "cmbFiles", u"*"_qs);
        set(shown, "cmbFind", u"foo"_qs);
    });
    load(m_folder.path());
    EXPECT_EQ(directory, m_folder.path());
    EXPECT_TRUE(wasLoading);
    EXPECT_EQ(window(), nullptr);  // which the search would have created
    m_frame->show();
    QCoreApplication::processEvents();
    EXPECT_EQ(files(), QStringList(file));
    EXPECT_EQ(title(), u"Search completed, files found : 1"_qs);
}

TEST_F(SearchDialogsInFrame, CancelSearchesNothing) {
    start();
    fileOf("foo");
    const QString before = title();
    whenShown(
        "frmSearchInFiles", [&](QDialog& shown) { set(shown, "cmbFind", u"foo"_qs); }, "cmdCancel");
    m_frame->ShowSearchInFiles(m_folder.path());
    EXPECT_TRUE(allActionsWereDone());
    EXPECT_EQ(window(), nullptr);
    EXPECT_FALSE(panel().isShown());
    EXPECT_EQ(title(), before);
}

TEST_F(SearchDialogsInFrame, ReplaceReplacesAndListsWhatItWasAskedTo) {
    start();
    const QString file = fileOf("Foo foo");
    const auto fill = [&](QDialog& shown, bool lists) {
        set(shown, "cmbDir", m_folder.path());
        set(shown, "cmbFiles", u"*"_qs);
        set(shown, "cmbFind", u"foo"_qs);
        set(shown, "cmbReplace", u"bar"_qs);
        choose(shown, "chkPreserve");
        choose(shown, "chkChanged", lists);
    };
    whenShown("frmReplaceInFiles", [&](QDialog& shown) { fill(shown, false); });
    run("mnuReplaceInFiles");
    EXPECT_EQ(bytesOf(file), "Bar bar");
    EXPECT_TRUE(files().isEmpty());
    EXPECT_FALSE(panel().isShown());
    EXPECT_EQ(firstOf("infiles_replace.txt"), "bar");
    fileOf("Foo foo");
    whenShown("frmReplaceInFiles", [&](QDialog& shown) { fill(shown, true); });
    run("mnuReplaceInFiles");
    EXPECT_EQ(files(), QStringList(file));
    EXPECT_TRUE(panel().isShown());
    EXPECT_EQ(title(), u"Replace completed, changed files : 1"_qs);
}

TEST_F(SearchDialogsInFrame, OpenFilesAreSearchedWithoutADirectory) {
    start();
    const QString file = fileOf("foo");
    open(file);
    whenShown("frmSearchInFiles", [&](QDialog& shown) {
        choose(shown, "Option1(1)");
        set(shown, "cmbDir", {});
        set(shown, "cmbFiles", {});
        set(shown, "cmbFind", u"foo"_qs);
    });
    run("mnuFindInFiles");
    EXPECT_EQ(files(), QStringList(file));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(SearchDialogsInFrame, TheProjectIsOfferedWhileThereIsOneAndStaysChosenWhenItIsGone) {
    start();
    const QString file = fileOf("foo");
    m_items.items = {{file, u"FILE"_qs}};
    bool offered = true;
    const auto look = [&](const QDialog& shown) {
        offered = shown.findChild<QWidget*>(u"Option1(2)"_qs)->isVisible();
        set(shown, "cmbFind", u"foo"_qs);
    };
    whenShown("frmSearchInFiles", look, "cmdCancel");
    run("mnuFindInFiles");
    EXPECT_FALSE(offered);
    m_frame->ProjectFilename = path(u"p.qmp"_qs);
    whenShown("frmSearchInFiles", [&](QDialog& shown) {
        look(shown);
        choose(shown, "Option1(2)");
    });
    run("mnuFindInFiles");
    EXPECT_TRUE(offered);
    EXPECT_EQ(files(), QStringList(file));
    m_frame->ProjectFilename.clear();
    whenShown("frmSearchInFiles", look);
    run("mnuFindInFiles");
    EXPECT_FALSE(offered);
    EXPECT_EQ(searched(), 0);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(SearchDialogsInFrame, MissingInputIsAskedForAndTheDialogStays) {
    start();
    QStringList messages;
    whenShown(
        "frmSearchInFiles",
        [&](QDialog& shown) {
            auto* find = shown.findChild<QAbstractButton*>(u"cmdFind"_qs);
            set(shown, "cmbDir", u"  "_qs);
            set(shown, "cmbFiles", {});
            set(shown, "cmbFind", u"  "_qs);
            find->click();
            set(shown, "cmbDir", m_folder.path());
            find->click();
            set(shown, "cmbFiles", u"*"_qs);
            find->click();
            messages = m_prompts.messages;
            EXPECT_TRUE(shown.isVisible());
        },
        "cmdCancel");
    run("mnuFindInFiles");
    EXPECT_EQ(messages, QStringList({u"Please select a searching directory."_qs, u"Please enter file filter."_qs,
                                     u"Please enter find text."_qs}));
    EXPECT_EQ(window(), nullptr);
}
