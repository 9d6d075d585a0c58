#include "editor/Editor.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlBraces.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlMouse.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "editor/windows/ControlProperties.h"
#include "support/Mnemonics.h"

#include <QAccessible>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

struct PropertiesOfAControl : testing::Test {
    QTemporaryDir folder;
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;

    PropertiesOfAControl() {
        control.resize(600, 400);
        control.show();
    }
    ControlProperties& open() {
        control.ExecuteCmd(224);
        return *control.findChild<ControlProperties*>();
    }
    template <typename Widget>
    static Widget& part(const ControlProperties& dialog, const char* name) {
        return *dialog.findChild<Widget*>(QString::fromLatin1(name));
    }
    static void click(const ControlProperties& dialog, const char* name) { part<QPushButton>(dialog, name).click(); }
    QString fileOf(const QByteArray& bytes) const {
        QFile file(folder.filePath(u"a.txt"_qs));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
};

}  // namespace

TEST_F(PropertiesOfAControl, AreShownOnce) {
    ControlProperties& dialog = open();
    EXPECT_TRUE(dialog.isVisible());
    control.ExecuteCmd(224);
    EXPECT_EQ(control.findChildren<ControlProperties*>().size(), 1);
}

TEST_F(PropertiesOfAControl, ShowWhatIsSet) {
    control.typing().setTabWidth(7);
    control.look().setWordWrap(true);
    control.braces().setBraceMatching(false);
    control.typing().setBlanksForTabs(true);
    ControlProperties& dialog = open();
    EXPECT_EQ(part<QSpinBox>(dialog, "numTabWidth").value(), 7);
    EXPECT_TRUE(part<QCheckBox>(dialog, "chkWordWrap").isChecked());
    EXPECT_FALSE(part<QCheckBox>(dialog, "chkBraces").isChecked());
    EXPECT_TRUE(part<QCheckBox>(dialog, "chkBlanksForTabs").isChecked());
}

TEST_F(PropertiesOfAControl, AreSetByOkAndNotBefore) {
    ControlProperties& dialog = open();
    for (const char* name : {"chkWordWrap", "chkWhitespace", "chkLineNumbers", "chkLeftMargin", "chkBraces",
                             "chkBlanksForTabs", "chkAutoIndent", "chkDragDrop"})
        part<QCheckBox>(dialog, name).click();
    part<QSpinBox>(dialog, "numTabWidth").setValue(3);
    EXPECT_FALSE(control.look().WordWrap());
    EXPECT_EQ(control.typing().TabWidth(), 4);
    click(dialog, "cmdOK");
    EXPECT_TRUE(control.look().WordWrap());
    EXPECT_TRUE(control.look().DisplayWhitespace());
    EXPECT_TRUE(control.lineNumbers().LineNumbering());
    EXPECT_FALSE(control.look().DisplayLeftMargin());
    EXPECT_FALSE(control.braces().BraceMatching());
    EXPECT_TRUE(control.typing().BlanksForTabs());
    EXPECT_FALSE(control.typing().AutoIndent());
    EXPECT_FALSE(control.mouse().DragDrop());
    EXPECT_EQ(control.typing().TabWidth(), 3);
}

TEST_F(PropertiesOfAControl, CancelLeavesThem) {
    ControlProperties& dialog = open();
    part<QCheckBox>(dialog, "chkWordWrap").click();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_FALSE(control.look().WordWrap());
}

TEST_F(PropertiesOfAControl, ColoursAreChosenAndReset) {
    ControlProperties& dialog = open();
    EXPECT_FALSE(part<QPushButton>(dialog, "cmdResetBackground").isEnabled());
    for (const char* name : {"cmdBackground", "cmdLeftMargin", "cmdRowHighlight"}) {
        click(dialog, name);
        auto* chooser = dialog.findChild<QColorDialog*>();
        ASSERT_NE(chooser, nullptr);
        chooser->setCurrentColor(QColor(1, 2, 3));
        chooser->accept();
        delete chooser;
        EXPECT_EQ(part<QPushButton>(dialog, name).text(), u"#010203"_qs);
    }
    click(dialog, "cmdResetLeftMargin");
    click(dialog, "cmdOK");
    EXPECT_EQ(control.look().elementColour(ControlLook::BackgroundElement), QColor(1, 2, 3));
    EXPECT_EQ(control.look().elementColour(ControlLook::RowHighlightElement), QColor(1, 2, 3));
    EXPECT_FALSE(control.look().elementColour(ControlLook::LeftMarginElement).isValid());
}

TEST_F(PropertiesOfAControl, ARowHighlightOfItsOwnGoesBeforeTheOneGiven) {
    control.look().setElementColour(ControlLook::BackgroundElement, QColor(255, 255, 255));
    control.look().setLineHighlight(0, QColor(200, 250, 200));
    EXPECT_EQ(control.SendScintilla(TextControl::SCI_GETCARETLINEBACK), 200 | 250 << 8 | 200 << 16);
    control.look().setElementColour(ControlLook::RowHighlightElement, QColor(250, 200, 200));
    EXPECT_EQ(control.SendScintilla(TextControl::SCI_GETCARETLINEBACK), 250 | 200 << 8 | 200 << 16);
    control.look().setLineHighlight(-1, QColor());
    EXPECT_EQ(control.SendScintilla(TextControl::SCI_GETCARETLINEVISIBLE), 0);
}

TEST_F(PropertiesOfAControl, LineEndsAreConverted) {
    ASSERT_FALSE(control.file().OpenFile(fileOf("a\nb\r\nc\rd")));
    control.bookmarks().setBookmarkAt(2, true);
    QSignalSpy changes(&control, &TextControl::Change);
    ControlProperties& dialog = open();
    auto& ends = part<QComboBox>(dialog, "cmbLineEnds");
    EXPECT_EQ(ends.currentData().toInt(), TextControl::SC_EOL_LF);
    ends.setCurrentIndex(1);
    click(dialog, "cmdConvert");
    EXPECT_EQ(control.Text(), u"a\r\nb\r\nc\r\nd"_qs);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_FALSE(control.CanUndo());
    EXPECT_TRUE(control.bookmarks().BookmarkAt(2));
    ends.setCurrentIndex(2);
    click(dialog, "cmdConvert");
    EXPECT_EQ(control.Text(), u"a\rb\rc\rd"_qs);
    control.setSelection(1, 1);
    QTest::keyClick(&control, Qt::Key_Return);
    EXPECT_EQ(control.Text(), u"a\r\rb\rc\rd"_qs);
}

TEST_F(PropertiesOfAControl, LineEndsStayWhileLockedOrHeldInPieces) {
    control.setText(u"a\n"_qs);
    control.setLocked(true);
    EXPECT_FALSE(part<QPushButton>(open(), "cmdConvert").isEnabled());
    control.file().convertLineEnds(TextControl::SC_EOL_CRLF);
    EXPECT_EQ(control.Text(), u"a\n"_qs);
    delete control.findChild<ControlProperties*>();
    control.setLocked(false);
    const QString text = QString(100'000, u'a') + u'\n';
    control.setText(text);
    ControlProperties& dialog = open();
    EXPECT_FALSE(part<QPushButton>(dialog, "cmdConvert").isEnabled());
    EXPECT_TRUE(part<QLabel>(dialog, "lblFileNote").text().contains(u"pieces"_qs));
    control.file().convertLineEnds(TextControl::SC_EOL_CRLF);
    EXPECT_TRUE(control.Text() == text);
}

TEST_F(PropertiesOfAControl, AFileIsOpenedAgainInAnotherEncoding) {
    const QString path = fileOf(
        "gr\xC3\xB6\xC3\x9F"
        "e");
    ASSERT_FALSE(control.file().OpenFile(path));
    EXPECT_EQ(control.Text(), QString::fromUtf8("größe"));
    ControlProperties& dialog = open();
    auto& encoding = part<QComboBox>(dialog, "cmbEncoding");
    encoding.setCurrentIndex(encoding.findData(SaveFlags::Ansi));
    click(dialog, "cmdReopen");
    EXPECT_EQ(control.Text(), QString::fromUtf8("grÃ¶ÃŸe"));
    encoding.setCurrentIndex(encoding.findData(SaveFlags::AsLoaded));
    click(dialog, "cmdReopen");
    EXPECT_EQ(control.Text(), QString::fromUtf8("größe"));
    QFile::remove(path);
    click(dialog, "cmdReopen");
    EXPECT_FALSE(part<QLabel>(dialog, "lblFileNote").text().isEmpty());
    EXPECT_EQ(control.Text(), QString::fromUtf8("größe"));
}

TEST_F(PropertiesOfAControl, AnEditedTextIsNotOpenedAgain) {
    EXPECT_FALSE(control.file().canReopen());
    ASSERT_FALSE(control.file().OpenFile(fileOf("a\nb")));
    EXPECT_TRUE(control.file().canReopen());
    control.file().convertLineEnds(TextControl::SC_EOL_CRLF);
    EXPECT_FALSE(control.file().canReopen());
    ASSERT_FALSE(control.file().SaveFile(folder.filePath(u"a.txt"_qs), SaveFlags::AsLoaded));
    EXPECT_TRUE(control.file().canReopen());
    control.typing().type(u"x"_qs);
    EXPECT_FALSE(control.file().canReopen());
    EXPECT_FALSE(control.file().reopenAs(SaveFlags::Ansi));
    EXPECT_EQ(control.Text(), u"xa\r\nb"_qs);
    EXPECT_FALSE(part<QPushButton>(open(), "cmdReopen").isEnabled());
}

TEST_F(PropertiesOfAControl, NoLetterStandsForTwoThings) {
    EXPECT_EQ(doubledMnemonics(open()), QStringList());
}

TEST_F(PropertiesOfAControl, EachCanBeReachedByKeyAndHasAName) {
    ControlProperties& dialog = open();
    auto& pages = part<QTabWidget>(dialog, "tabPages");
    for (int page = 0; page < pages.count(); ++page) {
        EXPECT_TRUE(pages.tabText(page).contains(u'&'));
        for (const auto* widget : pages.widget(page)->findChildren<QWidget*>()) {
            if (widget->objectName().startsWith(u"qt_"_qs) || widget->focusPolicy() == Qt::NoFocus)
                continue;
            QAccessibleInterface* told = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
            EXPECT_FALSE(told->text(QAccessible::Name).isEmpty()) << widget->objectName().toStdString();
            EXPECT_FALSE(widget->objectName().isEmpty());
        }
    }
}
