#include "RecordedServices.h"
#include "document/EditorGlobals.h"
#include "editor/control/CommandNumbers.h"
#include "properties/PropertiesServices.h"
#include "properties/frmProperties.h"
#include "properties/ucFont.h"
#include "settings/FileFilters.h"
#include "settings/Settings.h"
#include "settings/desktop/ShellIntegration.h"
#include "settings/registry/modRegistry.h"
#include "support/Mnemonics.h"
#include "support/ScriptedServices.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace {

class PropertiesDialog : public testing::Test {
 protected:
    PropertiesDialog() {
        const QDir folder(services.programFolder.path());
        folder.mkdir(u"languages"_qs);
        put("languages.idx", "<<KNIT>>\r\n*.knit\r\n<<HTML>>\r\n*.html\r\n");
        for (const char* name : {"KNIT.TXT", "HTML.TXT"})
            put(name, "text\n");
        put("KNIT.lng", "rules\n");
        put("HTML.lng", "lexer hypertext\n");
        for (int n = 1; n <= 2; ++n)
            bindMacro(n, u'0' + static_cast<char16_t>(n));
        calls.clear();
    }
    void put(const char* name, const QByteArray& bytes) const {
        QFile file(services.programFolder.filePath(u"languages/"_qs + QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }
    QByteArray index() const {
        QFile file(services.programFolder.filePath(u"languages/languages.idx"_qs));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void bindMacro(int n, char16_t digit) {
        services.globals.hotKeys.bind(Command::MacroBase + n, {{HotKeyStroke::Ctrl, QString(QChar(digit))}, {}});
    }
    frmProperties& open() {
        dialog.InitValues();
        dialog.open();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        return dialog;
    }
    QTabBar& strip() { return *dialog.findChild<QTabBar*>(u"TabStrip1"_qs); }
    QTabWidget& pages() { return *dialog.findChild<QTabWidget*>(); }
    template <typename Widget = QWidget>
    Widget& page(const char* name) {
        return *dialog.findChild<Widget*>(QLatin1String(name));
    }
    template <typename Widget>
    Widget& on(const char* pageName, const char* name) {
        return *page(pageName).findChild<Widget*>(QLatin1String(name));
    }
    QPushButton& button(const char* name) {
        return *dialog.findChild<QPushButton*>(QLatin1String(name), Qt::FindDirectChildrenOnly);
    }
    void click(const char* name) { button(name).click(); }
    bool canApply() { return button("cmdApply").isEnabled(); }
    QString key(int tab) { return strip().tabData(tab).toString(); }
    void select(const char* tabKey) {
        for (int i = 0; i < strip().count(); ++i) {
            if (key(i) == QLatin1String(tabKey))
                strip().setCurrentIndex(i);
        }
    }
    /// Changes something on each page that saves with the dialog.
    void changeAll() {
        on<QCheckBox>("ucPropFindReplace1", "chkCase").click();
        on<QCheckBox>("ucPropGeneral1", "chkShowPath").click();
        on<QLineEdit>("ucLangProperties1", "txtExt").setText(u"*.wool"_qs);
        on<QComboBox>("ucFont1", "cmbSize").setEditText(u"21"_qs);
        on<QLineEdit>("ucFileFilter1", "txtDesc").setText(u"All"_qs);
    }

    ScriptedServices services;
    QStringList calls;
    RecordedRegistry registry{calls};
    RecordedShell shell{calls};
    Settings settings{registry};
    ShellIntegration integration{registry, [](const QString&) {}};
    QStringList helpShown;
    frmProperties dialog{{services.all, services.options, settings, registry, shell, integration,
                          [this](const QString& name) { helpShown << name; }}};
};

struct Page {
    const char* key;
    const char* panel;
};

constexpr Page Pages[] = {
    {"general", "ucPropGeneral1"},
    {"filefilters", "ucFileFilter1"},
    {"associate", "ucFileAssociation1"},
    {"languages", "ucLangProperties1"},
    {"macro", "ucMarco1"},
    {"editor", "ucFont1"},
    {"find", "ucPropFindReplace1"},
};

}  // namespace

TEST_F(PropertiesDialog, HasItsPagesByTheirKeys) {
    open();
    ASSERT_EQ(strip().count(), static_cast<int>(std::size(Pages)));
    for (int i = 0; i < strip().count(); ++i) {
        EXPECT_EQ(key(i), QLatin1String(Pages[i].key));
        EXPECT_EQ(pages().widget(i)->objectName(), QLatin1String(Pages[i].panel));
    }
    EXPECT_EQ(dialog.objectName(), u"frmProperties"_qs);
}

TEST_F(PropertiesDialog, ATabShowsItsPanelAndHidesAllOthers) {
    open();
    for (int chosen = 0; chosen < strip().count(); ++chosen) {
        strip().setCurrentIndex(chosen);
        for (int i = 0; i < strip().count(); ++i) {
            EXPECT_EQ(page(Pages[i].panel).isVisible(), i == chosen) << Pages[i].key;
        }
    }
}

TEST_F(PropertiesDialog, HasItsButtons) {
    const std::pair<const char*, const char*> captions[] = {
        {"cmdConfirm", "Confirm"}, {"cmdApply", "Apply"}, {"cmdCancel", "Cancel"}, {"cmdHelp", "Help"}};
    for (const auto& [name, caption] : captions) {
        EXPECT_EQ(button(name).text().remove(u'&'), QLatin1String(caption));
    }
}

// Loading

TEST_F(PropertiesDialog, LoadsThePagesOnceOnly) {
    open();
    dialog.hide();
    settings.write(u"ToolbarCase"_qs, u"1"_qs);
    settings.write(u"ShowFullPath"_qs, u"0"_qs);
    on<QCheckBox>("ucPropFindReplace1", "chkReg").click();
    open();
    EXPECT_FALSE(on<QCheckBox>("ucPropFindReplace1", "chkCase").isChecked());
    EXPECT_TRUE(on<QCheckBox>("ucPropGeneral1", "chkShowPath").isChecked());
    EXPECT_TRUE(on<QCheckBox>("ucPropFindReplace1", "chkReg").isChecked());
    EXPECT_TRUE(canApply());
}

TEST_F(PropertiesDialog, LoadsEachPage) {
    settings.write(u"ToolbarCase"_qs, u"1"_qs);
    settings.write(u"ShowFullPath"_qs, u"0"_qs);
    settings.write(u"FontSize"_qs, u"19"_qs);
    open();
    EXPECT_TRUE(on<QCheckBox>("ucPropFindReplace1", "chkCase").isChecked());
    EXPECT_FALSE(on<QCheckBox>("ucPropGeneral1", "chkShowPath").isChecked());
    EXPECT_EQ(on<QComboBox>("ucFont1", "cmbSize").currentText(), u"19"_qs);
    EXPECT_EQ(on<QTreeWidget>("ucFileFilter1", "ListView1").topLevelItemCount(), 12);
    EXPECT_EQ(on<QTreeWidget>("ucLangProperties1", "lvLang").topLevelItemCount(), 2);
    EXPECT_EQ(on<QTreeWidget>("ucMarco1", "ListView1").topLevelItemCount(), 2);
    EXPECT_FALSE(on<QPushButton>("ucLangProperties1", "cmdSaveProperties").isEnabled());
}

// Saving

TEST_F(PropertiesDialog, ApplyIsEnabledByAnyChangeAndDisabledByItself) {
    open();
    EXPECT_FALSE(canApply());
    const std::function<void()> changes[] = {
        [&] { on<QCheckBox>("ucPropFindReplace1", "chkCase").click(); },
        [&] { on<QCheckBox>("ucPropGeneral1", "chkShowPath").click(); },
        [&] { on<QLineEdit>("ucLangProperties1", "txtExt").setText(u"*.wool"_qs); },
        [&] { on<QComboBox>("ucFont1", "cmbSize").setEditText(u"21"_qs); },
        [&] { on<QPushButton>("ucFileFilter1", "cmdNew").click(); },
        [&] { on<QLineEdit>("ucMarco1", "txtName").setText(u"mine"_qs); },
    };
    for (const auto& change : changes) {
        change();
        EXPECT_TRUE(canApply());
        click("cmdApply");
        EXPECT_FALSE(canApply());
        EXPECT_TRUE(dialog.isVisible());
    }
}

TEST_F(PropertiesDialog, SavesThePagesInTheirOrder) {
    open();
    changeAll();
    calls.clear();
    const QSignalSpy menu(&dialog, &frmProperties::UpdateMacroMenu);
    click("cmdApply");
    QStringList sections;
    for (const QString& call : calls) {
        const QString section = call.section(u'/', 0, 0);
        if (section != u"manifest 1"_qs && !sections.contains(section))
            sections << section;
    }
    EXPECT_EQ(sections, QStringList({u"search"_qs, u"general"_qs, u"editor"_qs, u"FilenameFilters"_qs}));
    EXPECT_TRUE(index().startsWith("<<KNIT>>\r\n*.wool\r\n"));
    EXPECT_EQ(menu.count(), 1);
}

TEST_F(PropertiesDialog, AnAssociationIsSavedByItsPageAndNotByTheDialog) {
    open();
    on<QComboBox>("ucFileAssociation1", "cmdFileType").setEditText(u".txt"_qs);
    on<QPushButton>("ucFileAssociation1", "cmdAdd").click();
    EXPECT_TRUE(calls.contains(u"AssociatedFiles/001/extension=.txt"_qs));
    EXPECT_FALSE(canApply());
    on<QLineEdit>("ucFileAssociation1", "txtDesc").setText(u"other"_qs);
    calls.clear();
    click("cmdConfirm");
    EXPECT_EQ(calls, QStringList());
}

TEST_F(PropertiesDialog, ConfirmSavesAndHides) {
    open();
    changeAll();
    click("cmdConfirm");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(settings.forFrame(u"ToolbarCase"_qs), u"1"_qs);
    EXPECT_TRUE(GetFilterString(registry).startsWith(u"All|*.*|"_qs));
    EXPECT_FALSE(canApply()) << "nothing is left to be saved";
}

TEST_F(PropertiesDialog, ConfirmWithoutAChangeWritesNothing) {
    open();
    const QByteArray before = index();
    click("cmdConfirm");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(calls, QStringList());
    EXPECT_EQ(index(), before);
}

TEST_F(PropertiesDialog, CancelHidesAndSavesNothing) {
    open();
    changeAll();
    click("cmdCancel");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(calls, QStringList());
}

TEST_F(PropertiesDialog, WhatWasAppliedStaysApplied) {
    open();
    on<QCheckBox>("ucPropFindReplace1", "chkCase").click();
    click("cmdApply");
    on<QCheckBox>("ucPropFindReplace1", "chkReg").click();
    click("cmdCancel");
    EXPECT_EQ(settings.forFrame(u"ToolbarCase"_qs), u"1"_qs);
    EXPECT_EQ(settings.forFrame(u"ToolbarRegExp"_qs), u"0"_qs);
}

// What was changed elsewhere

TEST_F(PropertiesDialog, MacrosThatWereRecordedMeanwhileAreShown) {
    open();
    dialog.hide();
    bindMacro(3, u'3');
    settings.write(u"1Desc"_qs, u"renamed"_qs);
    dialog.refreshMacros();
    const auto& list = on<QTreeWidget>("ucMarco1", "ListView1");
    ASSERT_EQ(list.topLevelItemCount(), 3);
    EXPECT_EQ(list.topLevelItem(0)->text(0), u"renamed"_qs);
}

TEST_F(PropertiesDialog, LanguagesThatWereSavedElsewhereAreShownUnlessChangesWait) {
    open();
    put("languages.idx", "<<KNIT>>\r\n*.thread\r\n");
    dialog.refreshLanguages();
    auto& patterns = on<QLineEdit>("ucLangProperties1", "txtExt");
    EXPECT_EQ(patterns.text(), u"*.THREAD"_qs);
    patterns.setText(u"*.mine"_qs);
    put("languages.idx", "<<KNIT>>\r\n*.other\r\n");
    dialog.refreshLanguages();
    EXPECT_EQ(patterns.text(), u"*.mine"_qs);
}

TEST_F(PropertiesDialog, IsLoadedByItsFirstOpeningAndNotByARefresh) {
    dialog.refreshLanguages();
    dialog.refreshMacros();
    EXPECT_EQ(on<QTreeWidget>("ucLangProperties1", "lvLang").topLevelItemCount(), 0);
}

// Help

TEST_F(PropertiesDialog, HelpShowsItsPage) {
    open();
    click("cmdHelp");
    QTest::keyClick(&dialog, Qt::Key_F1);
    EXPECT_EQ(helpShown, QStringList({u"properties.html"_qs, u"properties.html"_qs}));
    on<QPushButton>("ucLangProperties1", "cmdHelp").click();
    on<QPushButton>("ucMarco1", "cmdHelp").click();
    EXPECT_EQ(helpShown.mid(2), QStringList({u"languages.html"_qs, u"macro.html"_qs}));
}

// The keyboard

TEST_F(PropertiesDialog, EscapeCancelsAndEnterConfirms) {
    open();
    on<QCheckBox>("ucPropFindReplace1", "chkCase").click();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(calls, QStringList());
    open();
    QTest::keyClick(&on<QLineEdit>("ucPropGeneral1", "txtCursorColor"), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(settings.forFrame(u"ToolbarCase"_qs), u"1"_qs);
}

TEST_F(PropertiesDialog, EnterPressesTheButtonThatHasTheFocus) {
    open();
    select("filefilters");
    auto& add = on<QPushButton>("ucFileFilter1", "cmdNew");
    add.setFocus();
    QTest::keyClick(&add, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(on<QTreeWidget>("ucFileFilter1", "ListView1").topLevelItemCount(), 13);
    QTest::keyClick(&on<QLineEdit>("ucFileFilter1", "txtDesc"), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(PropertiesDialog, PagesAreTurnedByTheKeyboard) {
    open();
    QTest::keyClick(&dialog, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(key(strip().currentIndex()), u"filefilters"_qs);
    QTest::keyClick(&dialog, Qt::Key_PageUp, Qt::ControlModifier);
    QTest::keyClick(&dialog, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(key(strip().currentIndex()), u"find"_qs) << "around the ends";
    QTest::keyClick(&dialog, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(key(strip().currentIndex()), u"general"_qs);
}

TEST_F(PropertiesDialog, OpensWithTheFocusInTheFirstControlOfThePage) {
    open();
    EXPECT_EQ(dialog.focusWidget(), &on<QWidget>("ucPropGeneral1", "chkLoadLastFiles"));
    select("filefilters");
    button("cmdCancel").setFocus();
    click("cmdCancel");
    open();
    EXPECT_EQ(dialog.focusWidget(), &on<QWidget>("ucFileFilter1", "ListView1"));
}

TEST_F(PropertiesDialog, TheTabKeyReachesEveryControlOfEachPage) {
    open();
    for (const Page& each : Pages) {
        select(each.key);
        QSet<QWidget*> reached;
        for (int step = 0; step < 100; ++step) {
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            reached.insert(dialog.focusWidget());
        }
        for (QWidget* widget : dialog.findChildren<QWidget*>()) {
            const bool wanted = widget->isVisibleTo(&dialog) && widget->isEnabled() &&
                                widget->focusPolicy() & Qt::TabFocus && widget->focusProxy() == nullptr;
            const auto* radio = qobject_cast<QRadioButton*>(widget);
            if (wanted && (radio == nullptr || radio->isChecked())) {
                EXPECT_TRUE(reached.contains(widget)) << each.key << ' ' << widget->objectName().toStdString();
            }
        }
    }
}

TEST_F(PropertiesDialog, NoMnemonicIsUsedTwiceOnAPage) {
    EXPECT_EQ(doubledMnemonics(dialog), QStringList());
}

TEST_F(PropertiesDialog, FitsOnASmallScreen) {
    open();
    EXPECT_LE(dialog.sizeHint().width(), 760);
    EXPECT_LE(dialog.sizeHint().height(), 560);
}
