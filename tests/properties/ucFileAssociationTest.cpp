#include "properties/ucFileAssociation.h"
#include "settings/desktop/ShellIntegration.h"
#include "settings/registry/MemoryRegistry.h"
#include "settings/registry/modRegistry.h"
#include "support/Mnemonics.h"
#include "support/ScriptedPrompts.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

class AssociationPanel : public testing::Test {
 protected:
    void putRow(int row, const char* extension, const char* description) {
        const QString key =
            u"Software/Quillmark/AssociatedFiles/"_qs + QString::number(row).rightJustified(3, QLatin1Char('0'));
        SetRegString(store, HKEY_CURRENT_USER, key, u"extension"_qs, QString::fromLatin1(extension));
        SetRegString(store, HKEY_CURRENT_USER, key, u"desc"_qs, QString::fromLatin1(description));
    }
    void setClass(const char* extension, const char* name) {
        SetRegString(store, HKEY_CLASSES_ROOT, QString::fromLatin1(extension), {}, QString::fromLatin1(name));
    }
    /// The stored rows: key, extension, description.
    QStringList stored() {
        QStringList rows;
        QStringList keys;
        EnumRegSections(store, u"AssociatedFiles"_qs, keys);
        for (const QString& each : keys) {
            const QString key = u"Software/Quillmark/AssociatedFiles/"_qs + each;
            rows << each + u'|' + GetRegString(store, HKEY_CURRENT_USER, key, u"extension"_qs) + u'|' +
                        GetRegString(store, HKEY_CURRENT_USER, key, u"desc"_qs);
        }
        return rows;
    }
    /// The shown rows: extension, description.
    QStringList shown() {
        QStringList rows;
        for (int i = 0; i < list().topLevelItemCount(); ++i)
            rows << list().topLevelItem(i)->text(0) + u'|' + list().topLevelItem(i)->text(1);
        return rows;
    }
    void add(const char* extension, const char* description) {
        type().setEditText(QString::fromLatin1(extension));
        descriptionEdit().setText(QString::fromLatin1(description));
        part<QPushButton>("cmdAdd")->click();
    }
    void select(int row) { list().setCurrentItem(list().topLevelItem(row)); }

    template <typename Widget>
    Widget* part(const char* name) {
        return panel.findChild<Widget*>(QString::fromLatin1(name));
    }
    QTreeWidget& list() { return *part<QTreeWidget>("ListView1"); }
    QComboBox& type() { return *part<QComboBox>("cmdFileType"); }
    QLineEdit& descriptionEdit() { return *part<QLineEdit>("txtDesc"); }

    const QTemporaryDir home;
    MemoryRegistry store;
    ScriptedPrompts prompts;
    ShellIntegration desktop{store,
                             [](const QString&) {},
                             {.program = u"/opt/quillmark"_qs,
                              .applications = home.filePath(u"applications"_qs),
                              .mime = home.filePath(u"mime"_qs),
                              .mimeAppsList = home.filePath(u"mimeapps.list"_qs),
                              .autostart = home.filePath(u"autostart"_qs),
                              .desktop = home.filePath(u"Desktop"_qs),
                              .sharedFolders = {}}};
    ucFileAssociation panel{desktop, store, prompts};
};

}  // namespace

TEST_F(AssociationPanel, OffersTheExtensionsInTheirOrder) {
    for (int times = 0; times < 2; ++times) {
        panel.InitValues();
        QStringList offered;
        for (int i = 0; i < type().count(); ++i)
            offered << type().itemText(i);
        EXPECT_EQ(offered.join(u' '),
                  u".asm .bas .bat .c .cfm .cpp .h .hpp .htm .html .inf .ini .jav .java .jsp .log .pas .php .pl .reg "
                  ".sql .tcl .txt"_qs);
        EXPECT_EQ(type().currentText(), QString());
    }
}

TEST_F(AssociationPanel, ListsTheStoredAssociationsThatStillHold) {
    putRow(1, ".c", "C Source");
    putRow(2, ".txt", "Text");
    putRow(3, ".log", "Log");
    setClass(".c", "Quillmark.c");
    setClass(".txt", "txtfile");
    setClass(".log", "Quillmark.log");
    panel.InitValues();
    EXPECT_EQ(shown(), (QStringList{u".c|C Source"_qs, u".log|Log"_qs}));
    EXPECT_EQ(list().headerItem()->text(1), u"Description"_qs);
    EXPECT_EQ(stored().size(), 3) << "nothing is saved by showing";
    setClass(".log", "other");
    panel.InitValues();
    EXPECT_EQ(shown(), QStringList(u".c|C Source"_qs));
}

TEST_F(AssociationPanel, AnAssociationThatTheDesktopGaveToAnotherProgramIsLeftOut) {
    panel.InitValues();
    add(".c", "C Source");
    QFile file(home.filePath(u"mimeapps.list"_qs));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Default Applications]\ntext/x-csrc=gedit.desktop;\n");
    file.close();
    panel.InitValues();
    EXPECT_EQ(shown(), QStringList());
}

TEST_F(AssociationPanel, AddingRegistersShowsAndSavesAtOnce) {
    panel.InitValues();
    add(".C", "C Source");
    add(".log ", "Log");
    EXPECT_EQ(shown(), (QStringList{u".c|C Source"_qs, u".log|Log"_qs}));
    EXPECT_EQ(stored(), (QStringList{u"001|.c|C Source"_qs, u"002|.log|Log"_qs}));
    EXPECT_TRUE(desktop.IsOurAssociation(u"c"_qs));
    EXPECT_EQ(desktop.DescribeExtension(u"log"_qs), u"Log"_qs);
    EXPECT_EQ(store.openKey(HKEY_CLASSES_ROOT, u"Quillmark.c/DefaultIcon"_qs), RegistryCode::NotFound);
    EXPECT_EQ(prompts.messages, QStringList());
    panel.InitValues();
    EXPECT_EQ(shown().size(), 2);
}

TEST_F(AssociationPanel, AddingIsForced) {
    SetRegString(store, HKEY_CLASSES_ROOT, u".c"_qs, u"Content Type"_qs, u"text/x-c"_qs);
    panel.InitValues();
    add(".c", "C Source");
    EXPECT_TRUE(desktop.IsOurAssociation(u"c"_qs));
}

TEST_F(AssociationPanel, ATextWithoutTheDotIsRefused) {
    panel.InitValues();
    for (const char* text : {"txt", "", " .txt", "*.txt"})
        add(text, "Text");
    EXPECT_EQ(prompts.messages, QStringList(4, u"Invalid extension format!"_qs));
    EXPECT_EQ(shown(), QStringList());
    EXPECT_EQ(stored(), QStringList());
}

TEST_F(AssociationPanel, AKnownExtensionIsRefused) {
    panel.InitValues();
    add(".txt", "Text");
    const QStringList before = stored();
    add(".TXT ", "Text");
    EXPECT_EQ(prompts.messages, QStringList(u"File type '.txt' already associated."_qs));
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(shown(), QStringList(u".txt|Text"_qs));
}

TEST_F(AssociationPanel, PickingOrTypingAnExtensionShowsItsDescription) {
    setClass(".c", "cfile");
    setClass("cfile", "C Source File");
    panel.InitValues();
    type().setEditText(u" .c "_qs);
    EXPECT_EQ(descriptionEdit().text(), u"C Source File"_qs);
    type().setEditText(u".none"_qs);
    EXPECT_EQ(descriptionEdit().text(), QString());
    type().setCurrentIndex(type().findText(u".c"_qs));
    EXPECT_EQ(descriptionEdit().text(), u"C Source File"_qs);
}

TEST_F(AssociationPanel, TypedTextIsNotCompleted) {
    panel.InitValues();
    panel.show();
    type().setFocus();
    QTest::keyClicks(&type(), u".c"_qs);
    EXPECT_EQ(type().currentText(), u".c"_qs);
}

TEST_F(AssociationPanel, DeletingUnregistersAndSavesAtOnce) {
    panel.InitValues();
    add(".c", "C Source");
    add(".txt", "Text");
    select(0);
    part<QPushButton>("cmdDelete")->click();
    EXPECT_EQ(shown(), QStringList(u".txt|Text"_qs));
    EXPECT_EQ(stored(), QStringList(u"001|.txt|Text"_qs));
    EXPECT_FALSE(desktop.IsOurAssociation(u"c"_qs));
    EXPECT_EQ(GetRegString(store, HKEY_CLASSES_ROOT, u".c"_qs, {}), u"txtfile"_qs);
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(shown().size(), 1) << "not shown, so it has no keys";
    panel.show();
    panel.activateWindow();
    list().setFocus();
    QTest::qWait(0);
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(shown(), QStringList());
    EXPECT_EQ(stored(), QStringList());
    EXPECT_FALSE(part<QPushButton>("cmdDelete")->isEnabled());
}

TEST_F(AssociationPanel, WithoutASelectedRowNothingCanBeDeleted) {
    panel.InitValues();
    EXPECT_FALSE(part<QPushButton>("cmdDelete")->isEnabled());
    add(".c", "C Source");
    EXPECT_TRUE(part<QPushButton>("cmdDelete")->isEnabled());
    list().setCurrentItem(nullptr);
    EXPECT_FALSE(part<QPushButton>("cmdDelete")->isEnabled());
}

TEST_F(AssociationPanel, TheSelectedRowFollowsTheDescription) {
    panel.InitValues();
    add(".c", "C Source");
    add(".txt", "Text");
    select(0);
    EXPECT_EQ(type().currentText(), u".c"_qs);
    EXPECT_EQ(descriptionEdit().text(), u"C Source"_qs);
    descriptionEdit().setText(u"Programs in C"_qs);
    EXPECT_EQ(shown(), (QStringList{u".c|Programs in C"_qs, u".txt|Text"_qs}));
    panel.SaveProp();
    EXPECT_EQ(stored(), (QStringList{u"001|.c|Programs in C"_qs, u"002|.txt|Text"_qs}));
}

TEST_F(AssociationPanel, ChoosingAnotherExtensionLeavesTheSelectedRowAlone) {
    panel.InitValues();
    add(".c", "C Source");
    type().setEditText(u".h"_qs);
    descriptionEdit().setText(u"Header"_qs);
    EXPECT_EQ(shown(), QStringList(u".c|C Source"_qs));
    type().setEditText(u".c"_qs);
    EXPECT_EQ(descriptionEdit().text(), u"C Source"_qs);
    EXPECT_EQ(list().currentItem(), list().topLevelItem(0));
}

TEST_F(AssociationPanel, BeyondAThousandRowsTheNamesRepeat) {
    for (int row = 1; row <= 999; ++row) {
        const QByteArray extension = ".e" + QByteArray::number(row);
        putRow(row, extension.constData(), "Many");
        setClass(extension.constData(), "Quillmark.many");
    }
    panel.InitValues();
    add(".f", "First beyond");
    add(".g", "Second beyond");
    EXPECT_EQ(shown().size(), 1001);
    const QStringList rows = stored();
    EXPECT_EQ(rows.size(), 1000);
    EXPECT_EQ(rows.first(), u"000|.f|First beyond"_qs);
    EXPECT_EQ(rows.at(1), u"001|.g|Second beyond"_qs);
}

TEST_F(AssociationPanel, EveryControlHasANameAndAKey) {
    EXPECT_EQ(panel.objectName(), u"ucFileAssociation1"_qs);
    EXPECT_EQ(part<QLabel>("lblNote")->text(),
              u"Explorer or File Manager will automatically start Quillmark to edit files with the extensions that you "
              "set here."_qs);
    QStringList captions;
    for (const QLabel* label : panel.findChildren<QLabel*>()) {
        if (label->buddy() != nullptr)
            captions << QString(label->text()).remove(u'&') + u' ' + label->buddy()->objectName();
    }
    captions.sort();
    EXPECT_EQ(captions, (QStringList{u"Association: ListView1"_qs, u"Description: txtDesc"_qs,
                                     u"File Types/Extensions: cmdFileType"_qs}));
    EXPECT_FALSE(list().accessibleName().isEmpty());
    EXPECT_EQ(part<QPushButton>("cmdDelete")->text().remove(u'&'), u"Delete"_qs);
    QDialog dialog;
    (new QVBoxLayout(&dialog))->addWidget(new ucFileAssociation(desktop, store, prompts));
    EXPECT_EQ(doubledMnemonics(dialog), QStringList());
}
