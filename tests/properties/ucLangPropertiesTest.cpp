#include "document/EditorGlobals.h"
#include "document/rtCM.h"
#include "editor/control/TextControl.h"
#include "editor/held/Colouring.h"
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
        put(u"languages.idx"_qs, "<<knit>>\r\n*.knit,*.purl\r\n<<SEW>>\r\n*.sew\r\n<<GLUE>>\r\n*.glue\r\n");
        put(u"KNIT.lng"_qs, "rules\nkeywords 0 knit\n");
        put(u"SEW.lng"_qs, "lexer cpp\nclass keyword 5\nkeywords 0 sew\n");
        for (const char* name : {"KNIT", "SEW", "GLUE"})
            put(QLatin1String(name) + QLatin1String(".TXT"), QByteArray(name).toLower() + " one\n");
    }

    QString path(const QString& name) const { return given.programFolder.filePath(u"languages/"_qs + name); }
    void put(const QString& name, const QByteArray& bytes) const {
        QDir().mkpath(given.programFolder.filePath(u"languages"_qs));
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }
    QByteArray index() const {
        QFile file(path(u"languages.idx"_qs));
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
    EXPECT_EQ(list().headerItem()->text(0), u"Languages"_qs);
    EXPECT_EQ(list().topLevelItem(0)->text(0), u"KNIT"_qs);
    EXPECT_EQ(rowData(0, Qt::UserRole), u"KNIT"_qs);
    EXPECT_EQ(rowData(0, Qt::UserRole + 1), u"*.KNIT,*.PURL"_qs);
    EXPECT_EQ(rowData(2, Qt::UserRole + 1), u"*.GLUE"_qs);
}

TEST_F(LanguagePanel, BeginsAtTheFirstRow) {
    panel.InitObjects(false);
    EXPECT_EQ(list().currentItem(), list().topLevelItem(0));
    EXPECT_EQ(box().text(), u"*.KNIT,*.PURL"_qs);
    EXPECT_EQ(sample().Text(), u"knit one\n"_qs);
    EXPECT_EQ(sample().GetLang(), u"KNIT"_qs);
}

TEST_F(LanguagePanel, AnotherRowShowsItsPatternsAndItsColouredSample) {
    panel.InitObjects(false);
    select(1);
    EXPECT_EQ(box().text(), u"*.SEW"_qs);
    EXPECT_EQ(sample().Text(), u"sew one\n"_qs);
    EXPECT_EQ(sample().GetLang(), u"SEW"_qs);
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
    EXPECT_EQ(box().text(), u"*.SEW"_qs);
    QTest::keyClick(&list(), Qt::Key_End);
    EXPECT_EQ(box().text(), u"*.GLUE"_qs);
    for (const char* name : {"lvLang", "txtExt", "cmdProperties", "cmdSaveProperties", "cmdHelp"}) {
        const auto* control = part<QWidget>(name);
        EXPECT_TRUE(control->focusPolicy() & Qt::TabFocus) << name;
    }
    for (const char* name : {"lvLang", "txtExt", "TextControl1"}) {
        EXPECT_FALSE(part<QWidget>(name)->accessibleName().isEmpty()) << name;
    }
}

TEST_F(LanguagePanel, BearsItsLabels) {
    QStringList labels;
    for (const QLabel* label : panel.findChildren<QLabel*>())
        labels << label->text();
    EXPECT_TRUE(labels.contains(u"Associated File Extension:"_qs));
    EXPECT_TRUE(labels.contains(u"Sample Syntax Highlight:"_qs));
}

TEST_F(LanguagePanel, TheSaveButtonFollowsWhatItIsToldAndAnyEdit) {
    panel.InitObjects(true);
    EXPECT_TRUE(save().isEnabled());
    panel.InitObjects(false);
    EXPECT_FALSE(save().isEnabled());
    select(1);
    EXPECT_FALSE(save().isEnabled());
    box().setText(u"*.thread"_qs);
    EXPECT_TRUE(save().isEnabled());
}

TEST_F(LanguagePanel, TellsOfEditsButNotOfRowsThatAreShown) {
    panel.InitObjects(false);
    const QSignalSpy changed(&panel, &ucLangProperties::Changed);
    select(1);
    select(0);
    EXPECT_EQ(changed.count(), 0);
    box().setText(u"*.wool"_qs);
    EXPECT_EQ(changed.count(), 1);
    box().setText(u"*.KNIT,*.PURL"_qs);
    EXPECT_EQ(changed.count(), 1) << "the same as the row's";
}

TEST_F(LanguagePanel, AnEditIsNotLostOnMovingOn) {
    panel.InitObjects(false);
    box().setText(u"*.wool"_qs);
    select(2);
    EXPECT_EQ(rowData(0, Qt::UserRole + 1), u"*.wool"_qs);
    select(0);
    EXPECT_EQ(box().text(), u"*.wool"_qs);
}

TEST_F(LanguagePanel, AnEmptiedBoxLeavesTheRowAsItWas) {
    panel.InitObjects(false);
    box().clear();
    select(1);
    EXPECT_EQ(rowData(0, Qt::UserRole + 1), u"*.KNIT,*.PURL"_qs);
}

TEST_F(LanguagePanel, SaveWritesTheIndexInTheOrderOfTheList) {
    panel.InitObjects(true);
    box().setText(u"*.wool"_qs);
    save().click();
    EXPECT_EQ(index(), "<<KNIT>>\r\n*.wool\r\n<<SEW>>\r\n*.SEW\r\n<<GLUE>>\r\n*.GLUE\r\n");
}

TEST_F(LanguagePanel, WhatIsSavedCountsFromTheNextStartOn) {
    panel.InitObjects(true);
    box().setText(u"*.wool"_qs);
    save().click();
    EXPECT_EQ(given.globals.languages.LanguageOfFile(u"a.wool"_qs), QString());
    EXPECT_EQ(given.globals.languages.LanguageOfFile(u"a.knit"_qs), u"KNIT"_qs);
    LanguageTable next(given.programFolder.path(), {});
    next.LoadLanguageIndex();
    EXPECT_EQ(next.LanguageOfFile(u"a.wool"_qs), u"KNIT"_qs);
    EXPECT_EQ(next.LanguageOfFile(u"a.knit"_qs), QString());
}

TEST_F(LanguagePanel, ApplyingSavesOnlyWhatWasChanged) {
    panel.InitObjects(false);
    const QByteArray before = index();
    panel.SaveProp();
    EXPECT_EQ(index(), before);
    box().setText(u"*.wool"_qs);
    panel.SaveProp();
    EXPECT_TRUE(index().startsWith("<<KNIT>>\r\n*.wool\r\n"));
    put(u"languages.idx"_qs, before);
    panel.SaveProp();
    EXPECT_EQ(index(), before) << "nothing was changed since";
}

TEST_F(LanguagePanel, OpenedAgainItListsEachLanguageOnceWhileTheTableGrows) {
    panel.InitObjects(false);
    box().setText(u"*.wool"_qs);
    panel.InitObjects(false);
    EXPECT_EQ(list().topLevelItemCount(), 3);
    EXPECT_EQ(given.globals.languages.entries().size(), 6);
    EXPECT_EQ(box().text(), u"*.KNIT,*.PURL"_qs);
    const QByteArray before = index();
    panel.SaveProp();
    EXPECT_EQ(index(), before) << "nothing was changed since it was opened";
    for (int opened = 0; opened < 20; ++opened)
        panel.InitObjects(false);
    EXPECT_EQ(given.globals.languages.entries().size(), LanguageTable::MostLanguages);
    EXPECT_EQ(list().topLevelItemCount(), 3);
}

TEST_F(LanguagePanel, WhatWasSavedIsShownAndSavedWhenItIsOpenedAgain) {
    panel.InitObjects(true);
    box().setText(u"*.wool"_qs);
    save().click();
    panel.InitObjects(true);
    EXPECT_EQ(box().text(), u"*.WOOL"_qs);
    select(1);
    box().setText(u"*.thread"_qs);
    save().click();
    EXPECT_EQ(index(), "<<KNIT>>\r\n*.WOOL\r\n<<SEW>>\r\n*.thread\r\n<<GLUE>>\r\n*.GLUE\r\n");
}

TEST_F(LanguagePanel, AnIndexThatWasNotReadWholeIsShownWithTheReasonAndNotSaved) {
    QByteArray whole = index();
    for (int added = 0; added < 57; ++added)
        whole += "<<L" + QByteArray::number(added) + ">>\r\n*.l" + QByteArray::number(added) + "\r\n";
    const QLabel& reason = *part<QLabel>("lblIndexFault");
    panel.InitObjects(true);
    EXPECT_TRUE(reason.isHidden());
    put(u"languages.idx"_qs, whole);
    panel.InitObjects(true);
    EXPECT_EQ(list().topLevelItemCount(), LanguageTable::MostLanguages);
    EXPECT_FALSE(reason.isHidden());
    EXPECT_EQ(reason.text(),
              u"The list can't be saved: "_qs + path(u"languages.idx"_qs) + u" has more than 51 languages"_qs);
    EXPECT_FALSE(save().isEnabled());
    box().setText(u"*.wool"_qs);
    EXPECT_FALSE(save().isEnabled());
    panel.SaveProp();
    EXPECT_EQ(index(), whole);
    put(u"languages.idx"_qs, "<<KNIT>>\r\n*.knit\r\n");
    panel.InitObjects(true);
    EXPECT_TRUE(reason.isHidden());
    EXPECT_TRUE(save().isEnabled());
    EXPECT_EQ(given.prompts.messages, QStringList());
}

TEST_F(LanguagePanel, AMissingSampleIsTold) {
    QFile::remove(path(u"SEW.TXT"_qs));
    panel.InitObjects(false);
    select(1);
    // The message names the last place that is searched: the installed samples.
    const QString missing = given.globals.languages.samplePath(u"SEW"_qs);
    EXPECT_EQ(given.prompts.messages,
              QStringList(FileErrors::reading(missing, SystemError::fromErrno(ENOENT)).description));
    EXPECT_EQ(box().text(), u"*.SEW"_qs);
    EXPECT_EQ(sample().GetLang(), u"SEW"_qs);
}

TEST_F(LanguagePanel, AMissingDefinitionLeavesTheSampleAsItWasColoured) {
    panel.InitObjects(false);
    select(2);
    EXPECT_EQ(sample().Text(), u"glue one\n"_qs);
    EXPECT_EQ(sample().GetLang(), u"KNIT"_qs);
    EXPECT_EQ(given.prompts.messages, QStringList());
}

TEST_F(LanguagePanel, TheFaultOfADefinitionIsToldWithItsLine) {
    put(u"GLUE.lng"_qs, "rules\nstick\n");
    panel.InitObjects(false);
    const QLabel& fault = *part<QLabel>("lblFault");
    EXPECT_TRUE(fault.isHidden());
    select(2);
    EXPECT_FALSE(fault.isHidden());
    EXPECT_EQ(fault.text(), u"No colors: "_qs + path(u"GLUE.lng"_qs) + u":2: \"stick\" is unknown"_qs);
    select(1);
    EXPECT_TRUE(fault.isHidden());
    put(u"GLUE.lng"_qs, "rules\n");
    select(2);
    EXPECT_TRUE(fault.isHidden()) << "mended meanwhile";
    EXPECT_EQ(given.prompts.messages, QStringList());
}

TEST_F(LanguagePanel, WithoutAnIndexTheListIsEmptyAndNothingFails) {
    put(u"languages.idx"_qs, "");
    panel.InitObjects(true);
    EXPECT_EQ(list().topLevelItemCount(), 0);
    EXPECT_EQ(box().text(), QString());
    box().setText(u"*.x"_qs);
    panel.SaveProp();
    EXPECT_EQ(index(), "");
    EXPECT_EQ(given.prompts.messages, QStringList());
}

TEST_F(LanguagePanel, AReadOnlyFolderIsPassedOverQuietly) {
    panel.InitObjects(true);
    const QByteArray before = index();
    box().setText(u"*.wool"_qs);
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
    box().setText(u"*.wool"_qs);
    QFile::remove(path(u"languages.idx"_qs));
    QDir().mkdir(path(u"languages.idx"_qs));
    save().click();
    EXPECT_EQ(given.prompts.messages, QStringList());
    QDir().rmdir(path(u"languages.idx"_qs));
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
    EXPECT_EQ(helpShown, QStringList(u"languages.html"_qs));
}

TEST_F(LanguagePanel, TheFormShowsItAlone) {
    fmrLangProperties form(given.all, [](const QString&) {});
    EXPECT_EQ(form.objectName(), u"fmrLangProperties"_qs);
    EXPECT_EQ(doubledMnemonics(form), QStringList());
    QTimer::singleShot(0, &form, [&] {
        EXPECT_TRUE(form.isModal());
        EXPECT_EQ(form.findChild<QTreeWidget*>(u"lvLang"_qs)->topLevelItemCount(), 3);
        EXPECT_TRUE(form.findChild<QPushButton*>(u"cmdSaveProperties"_qs)->isEnabled());
        QTest::keyClick(form.findChild<QLineEdit*>(u"txtExt"_qs), Qt::Key_Return);
        EXPECT_TRUE(form.isVisible()) << "Return in the box closes nothing";
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    EXPECT_EQ(form.exec(), QDialog::Rejected);
}
