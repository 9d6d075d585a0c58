#include "editor/control/TextControl.h"
#include "properties/frmProperties.h"
#include "settings/FileFilters.h"
#include "shell/FrameFixture.h"
#include "support/Mnemonics.h"
#include "widgets/StoredColour.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTimer>
#include <QTreeWidget>

#include <functional>

/// The settings dialog in the frame, and what its settings do in the running program.
class ProgramPropertiesInTheFrame : public FrameFixture {
 protected:
    /// Opens the dialog, acts in it, and leaves it with a button.
    void inDialog(const std::function<void()>& act, const char* button = "cmdConfirm") {
        bool shown = false;
        QTimer::singleShot(0, m_frame.get(), [&] {
            shown = dialog() != nullptr && dialog()->isVisible();
            act();
            part<QPushButton>(button).click();
        });
        run("mnuFileProperties");
        ASSERT_TRUE(shown);
        ASSERT_FALSE(dialog()->isVisible());
    }
    frmProperties* dialog() { return m_frame->findChild<frmProperties*>(); }
    template <typename Widget = QCheckBox>
    Widget& part(const char* name) {
        return *dialog()->findChild<Widget*>(QLatin1String(name));
    }
    template <typename Widget>
    Widget& on(const char* page, const char* name) {
        return *part<QWidget>(page).findChild<Widget*>(QLatin1String(name));
    }
    void click(const char* box) { part<QAbstractButton>(box).click(); }
    /// The background of the cursor row.
    QColor highlight() {
        return StoredColour::colourOf(static_cast<qint64>(control().SendScintilla(TextControl::SCI_GETCARETLINEBACK)));
    }
    bool isHighlighted() { return control().SendScintilla(TextControl::SCI_GETCARETLINEVISIBLE) != 0; }
    QString caption() { return active()->Caption(); }
    /// Another process writes the file.
    void writeOutside(const QString& file) {
        QFile again(file);
        ASSERT_TRUE(again.open(QIODevice::WriteOnly | QIODevice::Truncate));
        again.write("other");
        again.flush();
        ASSERT_TRUE(again.setFileTime(QDateTime::fromSecsSinceEpoch(1'600'000'000), QFileDevice::FileModificationTime));
    }
};

TEST_F(ProgramPropertiesInTheFrame, TheMenuOpensItModal) {
    start();
    EXPECT_EQ(dialog(), nullptr) << "the start does not wait for it";
    inDialog([&] { EXPECT_TRUE(dialog()->isModal()); });
    EXPECT_EQ(dialog()->objectName(), u"frmProperties"_qs);
    EXPECT_EQ(dialog()->parentWidget(), m_frame.get());
}

TEST_F(ProgramPropertiesInTheFrame, IsKeptFromOneOpeningToTheNext) {
    start();
    inDialog([&] { part<QTabBar>("TabStrip1").setCurrentIndex(1); }, "cmdCancel");
    const frmProperties* first = dialog();
    inDialog([&] { EXPECT_EQ(part<QTabBar>("TabStrip1").currentIndex(), 1); });
    EXPECT_EQ(dialog(), first);
    EXPECT_EQ(m_frame->findChildren<frmProperties*>().size(), 1);
}

TEST_F(ProgramPropertiesInTheFrame, NoMnemonicIsUsedTwiceOnAPage) {
    start();
    inDialog([&] { EXPECT_EQ(doubledMnemonics(*dialog()), QStringList()); });
}

TEST_F(ProgramPropertiesInTheFrame, AFirstStartShowsTwoBoxesTickedThatAreNotInForce) {
    start();
    EXPECT_FALSE(house().options.WholeWord);
    EXPECT_FALSE(house().settings.LoadLastFiles());
    inDialog([&] {
        EXPECT_TRUE(part("chkWholeWord").isChecked());
        EXPECT_TRUE(part("chkLoadLastFiles").isChecked());
    });
    EXPECT_FALSE(house().settings.LoadLastFiles()) << "nothing was changed, nothing written";
    QStringList names;
    m_registry.subKeys(HKEY_CURRENT_USER, u"Software/Quillmark"_qs, names);
    EXPECT_FALSE(names.contains(u"general"_qs) || names.contains(u"search"_qs));
    inDialog([&] { click("chkShowPath"); });
    EXPECT_TRUE(house().settings.LoadLastFiles());
    EXPECT_EQ(house().settings.forFrame(u"ToolbarWholeWord"_qs), u"0"_qs) << "that is on another page";
}

// What follows at once

TEST_F(ProgramPropertiesInTheFrame, NewDocumentsHaveTheNewFontAndOpenOnesKeepTheirs) {
    start();
    const frmDocument* open = active();
    const int before = open->GetEditor()->FontSize();
    inDialog([&] { part<QComboBox>("cmbSize").setEditText(u"23"_qs); });
    EXPECT_EQ(open->GetEditor()->FontSize(), before);
    run("mnuFileNew");
    EXPECT_EQ(active()->GetEditor()->FontSize(), 23);
    EXPECT_EQ(house().settings.forFrame(u"FontSize"_qs), u"23"_qs);
    run("mnuDecreaseFontSize");
    run("mnuDefaultFontSize");
    EXPECT_EQ(active()->GetEditor()->FontSize(), 23);
}

TEST_F(ProgramPropertiesInTheFrame, TheColourOfTheHighlightIsShownAtTheNextMoveOfTheCaret) {
    start();
    type(u"a\nb"_qs);
    inDialog([&] { part<QLineEdit>("txtCursorColor").setText(u"FF8000"_qs); });
    EXPECT_EQ(house().options.RowHighlightColor, 255 | 128 << 8);
    select(0, 0);
    EXPECT_EQ(highlight(), QColor(255, 128, 0));
    run("mnuFileNew");
    type(u"c"_qs);
    EXPECT_EQ(highlight(), QColor(255, 128, 0));
}

TEST_F(ProgramPropertiesInTheFrame, NewDocumentsAreHighlightedOrNot) {
    start();
    inDialog([&] { click("chkRowHighlight"); });
    type(u"a"_qs);
    EXPECT_TRUE(isHighlighted()) << "an open document has a switch of its own";
    run("mnuFileNew");
    type(u"a"_qs);
    EXPECT_FALSE(isHighlighted());
}

TEST_F(ProgramPropertiesInTheFrame, BinaryFilesOpenAsTextWhenTheyAreNotChecked) {
    start();
    const QByteArray binary("\0\1\2\3\0\0\0\0", 8);
    open(fileOf(binary, u"a.bin"_qs));
    EXPECT_FALSE(active()->TextEdit());
    inDialog([&] { click("chkCheckHex"); });
    open(fileOf(binary, u"b.bin"_qs));
    EXPECT_TRUE(active()->TextEdit());
}

TEST_F(ProgramPropertiesInTheFrame, ASaveClearsTheHistoryWhenTheBoxIsTicked) {
    start();
    open(fileOf("1"));
    type(u"x"_qs);
    run("mnuFileSave");
    EXPECT_TRUE(canUndo());
    inDialog([&] { click("chkClearRedo"); });
    type(u"y"_qs);
    run("mnuFileSave");
    EXPECT_FALSE(canUndo());
}

TEST_F(ProgramPropertiesInTheFrame, ChangesByOthersAreIgnoredWhenTheUserSaysSo) {
    start();
    const QString file = fileOf("1");
    open(file);
    inDialog([&] { click("optFileMod(0)"); });
    writeOutside(file);
    house().diskCheck.applicationActivated();
    EXPECT_TRUE(m_prompts.questions.isEmpty());
    inDialog([&] { click("optFileMod(1)"); });
    m_prompts.answerYes();
    house().diskCheck.applicationActivated();
    EXPECT_EQ(m_prompts.questions.size(), 1);
    EXPECT_EQ(text(), u"other"_qs);
}

TEST_F(ProgramPropertiesInTheFrame, FileDialogsOfferTheNewFilters) {
    start();
    inDialog([&] { on<QLineEdit>("ucFileFilter1", "txtDesc").setText(u"Everything"_qs); });
    m_prompts.answerFiles({});
    run("mnuFileOpen");
    ASSERT_EQ(m_prompts.fileDialogs.size(), 1U);
    EXPECT_TRUE(m_prompts.fileDialogs.front().filters.startsWith(u"Everything|*.*|"_qs));
}

// What is read by the next start

TEST_F(ProgramPropertiesInTheFrame, TheRestIsReadByTheNextStart) {
    start();
    inDialog([&] {
        for (const char* box : {"chkWorkFolder", "chkShowPath", "chkShowIcon", "chkLoadLastFolder"})
            click(box);
    });
    EXPECT_TRUE(house().options.DocumentWorkingFolder);
    EXPECT_TRUE(house().options.ShowFullPath);
    EXPECT_FALSE(house().options.UseFileIcon);
    EXPECT_FALSE(house().options.LoadLastFolder);
    m_frame.reset();
    start();
    EXPECT_FALSE(house().options.DocumentWorkingFolder);
    EXPECT_FALSE(house().options.ShowFullPath);
    EXPECT_TRUE(house().options.UseFileIcon);
    EXPECT_TRUE(house().options.LoadLastFolder);
}

TEST_F(ProgramPropertiesInTheFrame, TheSearchFlagsOfTheRunDoNotChange) {
    start();
    inDialog([&] {
        for (const char* box : {"chkReg", "chkCase", "chkContinue"})
            click(box);
    });
    EXPECT_FALSE(house().options.RegExpOn);
    EXPECT_FALSE(house().options.CaseSensitiveOn);
    EXPECT_TRUE(house().options.ContinueSearch);
    EXPECT_FALSE(house().options.WholeWord);
    EXPECT_FALSE(entry("mnuCaseSensitive")->isChecked());
    m_frame.reset();
    start();
    EXPECT_TRUE(house().options.RegExpOn);
    EXPECT_TRUE(house().options.CaseSensitiveOn);
    EXPECT_FALSE(house().options.ContinueSearch);
    EXPECT_TRUE(house().options.WholeWord);
    EXPECT_TRUE(entry("mnuCaseSensitive")->isChecked());
}

TEST_F(ProgramPropertiesInTheFrame, TheNextStartHasNoNewDocumentWhenTheUserSaysSo) {
    start();
    EXPECT_EQ(documents().size(), 1);
    inDialog([&] { click("chkNewDocument"); });
    m_frame.reset();
    start();
    EXPECT_TRUE(documents().isEmpty());
}

// The pages of languages and macros

TEST_F(ProgramPropertiesInTheFrame, AMacroThatIsPutIntoTheMenuIsThereAtOnce) {
    bindMacro(2, u'2');
    start();
    inDialog([&] {
        on<QLineEdit>("ucMarco1", "txtName").setText(u"mine"_qs);
        click("chkDisplay");
        EXPECT_EQ(captionsOf("mnuExecMacro"), QStringList(u"mine"_qs));
    });
}

TEST_F(ProgramPropertiesInTheFrame, AMacroThatWasRecordedSinceIsShown) {
    bindMacro(2, u'2');
    start();
    inDialog([&] { EXPECT_EQ(on<QTreeWidget>("ucMarco1", "ListView1").topLevelItemCount(), 1); });
    globals().hotKeys.bind(Command::MacroBase + 3, {{HotKeyStroke::Ctrl, u"3"_qs}, {}});
    inDialog([&] { EXPECT_EQ(on<QTreeWidget>("ucMarco1", "ListView1").topLevelItemCount(), 2); });
}

TEST_F(ProgramPropertiesInTheFrame, PatternsSavedByTheOtherDialogAreShown) {
    m_shareFolder = path(u"share"_qs);
    QDir(m_folder.path()).mkpath(u"share/languages"_qs);
    fileOf("<<KNIT>>\r\n*.knit\r\n", u"share/languages/languages.idx"_qs);
    fileOf("text\n", u"share/languages/KNIT.TXT"_qs);
    fileOf("rules\n", u"share/languages/KNIT.lng"_qs);
    start();
    inDialog([&] { EXPECT_EQ(part<QLineEdit>("txtExt").text(), u"*.KNIT"_qs); });
    QTimer::singleShot(0, m_frame.get(), [&] {
        QWidget* form = QApplication::activeModalWidget();
        ASSERT_NE(form, nullptr);
        form->findChild<QLineEdit*>(u"txtExt"_qs)->setText(u"*.wool"_qs);
        form->findChild<QPushButton*>(u"cmdSaveProperties"_qs)->click();
        form->close();
    });
    run("mnuOrgLanguages");
    inDialog([&] { EXPECT_EQ(part<QLineEdit>("txtExt").text(), u"*.WOOL"_qs); });
}

// The desktop

TEST_F(ProgramPropertiesInTheFrame, AShortcutIsPutOnTheDesktopAndRemoved) {
    start();
    inDialog([&] {
        EXPECT_FALSE(part("chkSTDesktop").isChecked());
        click("chkSTDesktop");
        part<QPushButton>("cmdApply").click();
        EXPECT_TRUE(part("chkSTDesktop").isChecked());
    });
    m_frame.reset();
    start();
    inDialog([&] {
        EXPECT_TRUE(part("chkSTDesktop").isChecked());
        click("chkSTDesktop");
    });
    m_frame.reset();
    start();
    inDialog([&] { EXPECT_FALSE(part("chkSTDesktop").isChecked()); });
}

TEST_F(ProgramPropertiesInTheFrame, AContextMenuWithoutAHandlerIsToldAndItsBoxIsClearedAgain) {
    start();
    inDialog([&] {
        click("chkSTContext");
        part<QPushButton>("cmdApply").click();
        EXPECT_EQ(m_prompts.messages, QStringList(u"8"_qs));
        EXPECT_FALSE(part("chkSTContext").isChecked());
    });
    EXPECT_EQ(house().settings.PropertyValue(u"register_handle"_qs, {}, false), u"Failed"_qs);
}
