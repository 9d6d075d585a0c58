#include "document/EditorGlobals.h"
#include "document/rtCM.h"
#include "editor/control/TextControl.h"
#include "editor/windows/ControlProperties.h"
#include "platform/FileErrors.h"
#include "properties/fmrLangProperties.h"
#include "properties/ucLangProperties.h"
#include "support/AnotherUser.h"
#include "support/Mnemonics.h"
#include "support/ScriptedServices.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>

namespace {

class LanguagePanel : public testing::Test {
 protected:
    LanguagePanel() {
        put(QStringLiteral("languages.idx"), "<<knit>>\r\n*.knit,*.purl\r\n<<SEW>>\r\n*.sew\r\n<<GLUE>>\r\n*.glue\r\n");
        put(QStringLiteral("KNIT.lng"), "rules\nkeywords 0 knit\n");
        put(QStringLiteral("SEW.lng"), "lexer cpp\nclass keyword 5\nkeywords 0 sew\n");
        for (const char* name : {"KNIT", "SEW", "GLUE"})
            put(QLatin1String(name) + QLatin1String(".TXT"), QByteArray(name).toLower() + " one\n");
    }

    QString path(const QString& name) const {
        return given.programFolder.filePath(QStringLiteral("languages/") + name);
    }
    void put(const QString& name, const QByteArray& bytes) const {
        QDir().mkpath(given.programFolder.filePath(QStringLiteral("languages")));
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }
    QByteArray index() const {
        QFile file(path(QStringLiteral("languages.idx")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    template <typename Widget>
    Widget* part(const char* name) {
        return panel.findChild<Widget*>(QString::fromLatin1(name));
    }
    QTreeWidget& list() { return *part<QTreeWidget>("lvLang"); }
    QLineEdit& box() { return *part<QLineEdit>("txtExt"); }
    rtCM& sample() { return *part<rtCM>("rtCM1"); }
    QPushButton& save() { return *part<QPushButton>("cmdSaveProperties"); }
    void select(int row) { list().setCurrentItem(list().topLevelItem(row)); }
    QVariant rowData(int row, int role) { return list().topLevelItem(row)->data(0, role); }

    ScriptedServices given;
    QStringList helpShown;
    ucLangProperties panel{given.all, [this](const QString& page) { helpShown << page; }};
};

}  // namespace

TEST_F(LanguagePanel, ListsEachLanguageWithKeyAndPatterns) {
    panel.InitObjects(false);
    ASSERT_EQ(list().topLevelItemCount(), 3);
    EXPECT_EQ(list().headerItem()->text(0), QStringLiteral("Languages"));
    EXPECT_EQ(list().topLevelItem(0)->text(0), QStringLiteral("KNIT"));
    EXPECT_EQ(rowData(0, Qt::UserRole), QStringLiteral("KNIT"));
    EXPECT_EQ(rowData(0, Qt::UserRole + 1), QStringLiteral("*.KNIT,*.PURL"));
    EXPECT_EQ(rowData(2, Qt::UserRole + 1), QStringLiteral("*.GLUE"));
}

TEST_F(LanguagePanel, BeginsAtTheFirstRow) {
    panel.InitObjects(false);
    EXPECT_EQ(list().currentItem(), list().topLevelItem(0));
    EXPECT_EQ(box().text(), QStringLiteral("*.KNIT,*.PURL"));
    EXPECT_EQ(sample().Text(), QStringLiteral("knit one\n"));
    EXPECT_EQ(sample().GetLang(), QStringLiteral("KNIT"));
}

TEST_F(LanguagePanel, AnotherRowShowsItsPatternsAndItsColouredSample) {
    panel.InitObjects(false);
    select(1);
    EXPECT_EQ(box().text(), QStringLiteral("*.SEW"));
    EXPECT_EQ(sample().Text(), QStringLiteral("sew one\n"));
    EXPECT_EQ(sample().GetLang(), QStringLiteral("SEW"));
    const TextControl& control = sample().control();
    control.colouring().completeTo(3);
    EXPECT_EQ(control.colouring().classAt(0), TokenClass::Keyword);
    EXPECT_EQ(given.prompts.messages, QStringList());
}

TEST_F(LanguagePanel, TheKeyboardGoesThroughTheRowsAndTheControls) {
    panel.InitObjects(true);
    panel.show();
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_EQ(box().text(), QStringLiteral("*.SEW"));
    QTest::keyClick(&list(), Qt::Key_End);
    EXPECT_EQ(box().text(), QStringLiteral("*.GLUE"));
    for (const char* name : {"lvLang", "txtExt", "cmdProperties", "cmdSaveProperties", "cmdHelp"}) {
        const auto* control = part<QWidget>(name);
        EXPECT_TRUE(control->focusPolicy() & Qt::TabFocus) << name;
    }
    for (const char* name : {"lvLang", "txtExt", "TextControl1"})
        EXPECT_FALSE(part<QWidget>(name)->accessibleName().isEmpty()) << name;
}

TEST_F(LanguagePanel, BearsItsLabels) {
    QStringList labels;
    for (const QLabel* label : panel.findChildren<QLabel*>())
        labels << label->text();
    EXPECT_TRUE(labels.contains(QStringLiteral("Associated File Extension:")));
    EXPECT_TRUE(labels.contains(QStringLiteral("Sample Syntax Highlight:")));
}

TEST_F(LanguagePanel, TheSaveButtonFollowsWhatItIsToldAndAnyEdit) {
    panel.InitObjects(true);
    EXPECT_TRUE(save().isEnabled());
    panel.InitObjects(false);
    EXPECT_FALSE(save().isEnabled());
    select(1);
    EXPECT_FALSE(save().isEnabled());
    box().setText(QStringLiteral("*.thread"));
    EXPECT_TRUE(save().isEnabled());
}

TEST_F(LanguagePanel, TellsOfEditsButNotOfRowsThatAreShown) {
    panel.InitObjects(false);
    const QSignalSpy changed(&panel, &ucLangProperties::Changed);
    select(1);
    select(0);
    EXPECT_EQ(changed.count(), 0);
    box().setText(QStringLiteral("*.wool"));
    EXPECT_EQ(changed.count(), 1);
    box().setText(QStringLiteral("*.KNIT,*.PURL"));
    EXPECT_EQ(changed.count(), 1) << "the same as the row's";
}

TEST_F(LanguagePanel, AnEditIsNotLostOnMovingOn) {
    panel.InitObjects(false);
    box().setText(QStringLiteral("*.wool"));
    select(2);
    EXPECT_EQ(rowData(0, Qt::UserRole + 1), QStringLiteral("*.wool"));
    select(0);
    EXPECT_EQ(box().text(), QStringLiteral("*.wool"));
}

TEST_F(LanguagePanel, AnEmptiedBoxLeavesTheRowAsItWas) {
    panel.InitObjects(false);
    box().clear();
    select(1);
    EXPECT_EQ(rowData(0, Qt::UserRole + 1), QStringLiteral("*.KNIT,*.PURL"));
}

TEST_F(LanguagePanel, SaveWritesTheIndexInTheOrderOfTheList) {
    panel.InitObjects(true);
    box().setText(QStringLiteral("*.wool"));
    save().click();
    EXPECT_EQ(index(), "<<KNIT>>\r\n*.wool\r\n<<SEW>>\r\n*.SEW\r\n<<GLUE>>\r\n*.GLUE\r\n");
}

TEST_F(LanguagePanel, WhatIsSavedCountsFromTheNextStartOn) {
    panel.InitObjects(true);
    box().setText(QStringLiteral("*.wool"));
    save().click();
    EXPECT_EQ(given.globals.languages.LanguageOfFile(QStringLiteral("a.wool")), QString());
    EXPECT_EQ(given.globals.languages.LanguageOfFile(QStringLiteral("a.knit")), QStringLiteral("KNIT"));
    LanguageTable next(given.programFolder.path(), {});
    next.LoadLanguageIndex();
    EXPECT_EQ(next.LanguageOfFile(QStringLiteral("a.wool")), QStringLiteral("KNIT"));
    EXPECT_EQ(next.LanguageOfFile(QStringLiteral("a.knit")), QString());
}

TEST_F(LanguagePanel, ApplyingSavesOnlyWhatWasChanged) {
    panel.InitObjects(false);
    const QByteArray before = index();
    panel.SaveProp();
    EXPECT_EQ(index(), before);
    box().setText(QStringLiteral("*.wool"));
    panel.SaveProp();
    EXPECT_TRUE(index().startsWith("<<KNIT>>\r\n*.wool\r\n"));
    put(QStringLiteral("languages.idx"), before);
    panel.SaveProp();
    EXPECT_EQ(index(), before) << "nothing was changed since";
}

TEST_F(LanguagePanel, OpenedAgainItListsEachLanguageOnceWhileTheTableGrows) {
    panel.InitObjects(false);
    box().setText(QStringLiteral("*.wool"));
    panel.InitObjects(false);
    EXPECT_EQ(list().topLevelItemCount(), 3);
    EXPECT_EQ(given.globals.languages.entries().size(), 6);
    EXPECT_EQ(box().text(), QStringLiteral("*.KNIT,*.PURL"));
    const QByteArray before = index();
    panel.SaveProp();
    EXPECT_EQ(index(), before) << "nothing was changed since it was opened";
    for (int opened = 0; opened < 20; ++opened)
        panel.InitObjects(false);
    EXPECT_EQ(given.globals.languages.entries().size(), LanguageTable::MostLanguages);
    EXPECT_EQ(list().topLevelItemCount(), 3);
}

TEST_F(LanguagePanel, AMissingSampleIsTold) {
    QFile::remove(path(QStringLiteral("SEW.TXT")));
    panel.InitObjects(false);
    select(1);
    // What is looked for last is the installed one.
    const QString missing = given.globals.languages.samplePath(QStringLiteral("SEW"));
    EXPECT_EQ(given.prompts.messages,
              QStringList(FileErrors::reading(missing, SystemError::fromErrno(ENOENT)).description));
    EXPECT_EQ(box().text(), QStringLiteral("*.SEW"));
    EXPECT_EQ(sample().GetLang(), QStringLiteral("SEW"));
}

TEST_F(LanguagePanel, AMissingDefinitionLeavesTheSampleAsItWasColoured) {
    panel.InitObjects(false);
    select(2);
    EXPECT_EQ(sample().Text(), QStringLiteral("glue one\n"));
    EXPECT_EQ(sample().GetLang(), QStringLiteral("KNIT"));
    EXPECT_EQ(given.prompts.messages, QStringList());
}

TEST_F(LanguagePanel, TheFaultOfADefinitionIsToldWithItsLine) {
    put(QStringLiteral("GLUE.lng"), "rules\nstick\n");
    panel.InitObjects(false);
    const QLabel& fault = *part<QLabel>("lblFault");
    EXPECT_TRUE(fault.isHidden());
    select(2);
    EXPECT_FALSE(fault.isHidden());
    EXPECT_EQ(fault.text(), QStringLiteral("No colors: ") + path(QStringLiteral("GLUE.lng")) +
                                QStringLiteral(":2: \"stick\" is unknown"));
    select(1);
    EXPECT_TRUE(fault.isHidden());
    put(QStringLiteral("GLUE.lng"), "rules\n");
    select(2);
    EXPECT_TRUE(fault.isHidden()) << "mended meanwhile";
    EXPECT_EQ(given.prompts.messages, QStringList());
}

TEST_F(LanguagePanel, WithoutAnIndexTheListIsEmptyAndNothingFails) {
    put(QStringLiteral("languages.idx"), "");
    panel.InitObjects(true);
    EXPECT_EQ(list().topLevelItemCount(), 0);
    EXPECT_EQ(box().text(), QString());
    box().setText(QStringLiteral("*.x"));
    panel.SaveProp();
    EXPECT_EQ(index(), "");
    EXPECT_EQ(given.prompts.messages, QStringList());
}

TEST_F(LanguagePanel, AReadOnlyFolderIsPassedOverQuietly) {
    panel.InitObjects(true);
    const QByteArray before = index();
    box().setText(QStringLiteral("*.wool"));
    ASSERT_EQ(::chmod(QFile::encodeName(path(QString())).constData(), 0555), 0);
    EXPECT_TRUE(asSomebodyElse([&] {
        save().click();
        return given.prompts.messages.isEmpty();
    }));
    EXPECT_EQ(index(), before);
    ASSERT_EQ(::chmod(QFile::encodeName(path(QString())).constData(), 0755), 0);
}

TEST_F(LanguagePanel, WhatCouldNotBeWrittenCanBeSavedLater) {
    panel.InitObjects(true);
    box().setText(QStringLiteral("*.wool"));
    QFile::remove(path(QStringLiteral("languages.idx")));
    QDir().mkdir(path(QStringLiteral("languages.idx")));
    save().click();
    EXPECT_EQ(given.prompts.messages, QStringList());
    QDir().rmdir(path(QStringLiteral("languages.idx")));
    panel.SaveProp();
    EXPECT_TRUE(index().startsWith("<<KNIT>>\r\n*.wool\r\n"));
}

TEST_F(LanguagePanel, PropertiesOpensTheDialogOfTheSample) {
    panel.InitObjects(false);
    panel.show();
    part<QPushButton>("cmdProperties")->click();
    EXPECT_NE(sample().findChild<ControlProperties*>(), nullptr);
}

TEST_F(LanguagePanel, HelpShowsThePageOfLanguages) {
    part<QPushButton>("cmdHelp")->click();
    EXPECT_EQ(helpShown, QStringList(QStringLiteral("languages.html")));
}

TEST_F(LanguagePanel, TheFormShowsItAlone) {
    fmrLangProperties form(given.all, [](const QString&) {});
    EXPECT_EQ(form.objectName(), QStringLiteral("fmrLangProperties"));
    EXPECT_EQ(doubledMnemonics(form), QStringList());
    QTimer::singleShot(0, &form, [&] {
        EXPECT_TRUE(form.isModal());
        EXPECT_EQ(form.findChild<QTreeWidget*>(QStringLiteral("lvLang"))->topLevelItemCount(), 3);
        EXPECT_TRUE(form.findChild<QPushButton*>(QStringLiteral("cmdSaveProperties"))->isEnabled());
        QTest::keyClick(form.findChild<QLineEdit*>(QStringLiteral("txtExt")), Qt::Key_Return);
        EXPECT_TRUE(form.isVisible()) << "Return in the box closes nothing";
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    EXPECT_EQ(form.exec(), QDialog::Rejected);
}
