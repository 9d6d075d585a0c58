#include "RecordedServices.h"
#include "properties/ucFileFilter.h"
#include "settings/FileFilters.h"
#include "settings/registry/modRegistry.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace {

class FilterPanel : public testing::Test {
 protected:
    void open(const QList<FilterList::Row>& rows = {}) {
        FilterList list;
        for (const FilterList::Row& row : rows) {
            list.append();
            const int last = static_cast<int>(list.rows().size()) - 1;
            list.setDescription(last, row.description);
            list.setPatterns(last, row.patterns);
        }
        if (!rows.isEmpty()) {
            ASSERT_TRUE(list.save(registry));
        }
        panel.InitValues();
        panel.show();
        calls.clear();
    }
    void openThree() { open({{u"A"_qs, u"*.a"_qs}, {u"B"_qs, u"*.b"_qs}, {u"C"_qs, u"*.c"_qs}}); }
    template <typename Widget>
    Widget& part(const char* name) {
        return *panel.findChild<Widget*>(QLatin1String(name));
    }
    QTreeWidget& list() { return part<QTreeWidget>("ListView1"); }
    QLineEdit& description() { return part<QLineEdit>("txtDesc"); }
    QLineEdit& patterns() { return part<QLineEdit>("txtFilters"); }
    QPushButton& button(const char* name) { return part<QPushButton>(name); }
    void click(const char* name) { button(name).click(); }
    void select(int row) { list().setCurrentItem(list().topLevelItem(row)); }
    int selected() { return list().indexOfTopLevelItem(list().currentItem()); }
    QString texts() {
        QStringList texts;
        for (int i = 0; i < list().topLevelItemCount(); ++i)
            texts << list().topLevelItem(i)->text(0) + u'|' + list().topLevelItem(i)->text(1);
        return texts.join(u' ');
    }

    QStringList calls;
    RecordedRegistry registry{calls};
    ucFileFilter panel{registry};
    const QSignalSpy changed{&panel, &ucFileFilter::Changed};
};

}  // namespace

TEST_F(FilterPanel, ShowsTheDefaultListWhileNoneIsStoredAndSavesNothing) {
    open();
    EXPECT_EQ(list().topLevelItemCount(), 12);
    EXPECT_EQ(list().topLevelItem(4)->text(0), u"JSP Files (*.jsp)"_qs);
    EXPECT_EQ(list().topLevelItem(4)->text(1), u"*.asp"_qs);
    EXPECT_EQ(list().topLevelItem(5)->text(1), u"*.*"_qs);
    panel.SaveProp();
    EXPECT_EQ(calls, QStringList());
    EXPECT_EQ(GetFilterString(registry), builtinFilterString());
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(FilterPanel, ShowsTheStoredListAndItsFirstRow) {
    openThree();
    EXPECT_EQ(texts(), u"A|*.a B|*.b C|*.c"_qs);
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(description().text(), u"A"_qs);
    EXPECT_EQ(patterns().text(), u"*.a"_qs);
}

TEST_F(FilterPanel, BearsItsLabelsAndColumns) {
    open();
    QStringList labels;
    for (const QLabel* label : panel.findChildren<QLabel*>()) {
        labels << label->text().remove(u'&');
        EXPECT_NE(label->buddy(), nullptr);
    }
    EXPECT_EQ(labels, QStringList({u"File name filters:"_qs, u"Description:"_qs, u"Wild Cards:"_qs}));
    EXPECT_EQ(list().headerItem()->text(0), u"Description"_qs);
    EXPECT_EQ(list().headerItem()->text(1), u"Filter"_qs);
    const std::pair<const char*, const char*> captions[] = {{"cmdNew", "New"},
                                                            {"cmdDelete", "Delete"},
                                                            {"cmdUp", "Move Up"},
                                                            {"cmdDown", "Move Down"},
                                                            {"cmdReset", "Reset"}};
    for (const auto& [name, caption] : captions) {
        EXPECT_EQ(button(name).text().remove(u'&'), QLatin1String(caption));
    }
}

TEST_F(FilterPanel, SelectingARowFillsTheFieldsAndChangesNothing) {
    openThree();
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_EQ(description().text(), u"B"_qs);
    EXPECT_EQ(patterns().text(), u"*.b"_qs);
    QTest::keyClick(&list(), Qt::Key_End);
    EXPECT_EQ(description().text(), u"C"_qs);
    EXPECT_EQ(changed.count(), 0);
    panel.SaveProp();
    EXPECT_EQ(calls, QStringList());
}

TEST_F(FilterPanel, TheSelectedRowFollowsTheFieldsAtOnce) {
    openThree();
    select(1);
    description().setText(u"B2"_qs);
    EXPECT_EQ(texts(), u"A|*.a B2|*.b C|*.c"_qs);
    patterns().setText(u"*.b2;*.b3"_qs);
    EXPECT_EQ(texts(), u"A|*.a B2|*.b2;*.b3 C|*.c"_qs);
    EXPECT_EQ(changed.count(), 2);
    panel.SaveProp();
    EXPECT_EQ(GetFilterString(registry), u"A|*.a|B2|*.b2;*.b3|C|*.c"_qs);
}

TEST_F(FilterPanel, ANewRowIsSelectedAtTheEndWithTheCaretInItsDescription) {
    openThree();
    click("cmdNew");
    EXPECT_EQ(texts(), u"A|*.a B|*.b C|*.c New|"_qs);
    EXPECT_EQ(selected(), 3);
    EXPECT_EQ(panel.focusWidget(), &description());
    EXPECT_EQ(changed.count(), 1);
    QTest::keyClicks(&description(), u"D"_qs);
    EXPECT_EQ(texts(), u"A|*.a B|*.b C|*.c D|"_qs) << "typing replaces the word";
    panel.SaveProp();
    EXPECT_EQ(GetFilterString(registry), u"A|*.a|B|*.b|C|*.c|D|"_qs) << "no patterns: stored as it is";
}

TEST_F(FilterPanel, DeletingSelectsTheNeighbour) {
    openThree();
    select(1);
    click("cmdDelete");
    EXPECT_EQ(texts(), u"A|*.a C|*.c"_qs);
    EXPECT_EQ(selected(), 1);
    EXPECT_EQ(description().text(), u"C"_qs);
    click("cmdDelete");
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(description().text(), u"A"_qs);
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(FilterPanel, TheDeleteKeyOfTheListDeletes) {
    openThree();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&panel));
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(texts(), u"B|*.b C|*.c"_qs);
    description().setFocus();
    QTest::keyClick(&description(), Qt::Key_Delete);
    EXPECT_EQ(list().topLevelItemCount(), 2) << "not that of a field";
}

TEST_F(FilterPanel, WithoutARowTheFieldsAreEmptyAndDisabled) {
    openThree();
    for (int i = 0; i < 3; ++i)
        click("cmdDelete");
    EXPECT_EQ(list().topLevelItemCount(), 0);
    EXPECT_EQ(description().text() + patterns().text(), QString());
    for (const char* name : {"txtDesc", "txtFilters", "cmdDelete", "cmdUp", "cmdDown"}) {
        EXPECT_FALSE(part<QWidget>(name).isEnabled()) << name;
    }
    panel.SaveProp();
    EXPECT_EQ(registry.openKey(HKEY_CURRENT_USER, u"Software/Quillmark/FilenameFilters"_qs), RegistryCode::Ok);
    EXPECT_EQ(GetFilterString(registry), builtinFilterString());
    click("cmdNew");
    for (const char* name : {"txtDesc", "txtFilters", "cmdDelete"}) {
        EXPECT_TRUE(part<QWidget>(name).isEnabled()) << name;
    }
    EXPECT_EQ(description().text(), u"New"_qs);
}

TEST_F(FilterPanel, RowsMoveUpAndDown) {
    openThree();
    select(1);
    click("cmdUp");
    EXPECT_EQ(texts(), u"B|*.b A|*.a C|*.c"_qs);
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(description().text(), u"B"_qs);
    click("cmdDown");
    click("cmdDown");
    EXPECT_EQ(texts(), u"A|*.a C|*.c B|*.b"_qs);
    EXPECT_EQ(selected(), 2);
    EXPECT_EQ(description().text(), u"B"_qs);
    EXPECT_EQ(changed.count(), 3);
    panel.SaveProp();
    EXPECT_EQ(GetFilterString(registry), u"A|*.a|C|*.c|B|*.b"_qs);
}

TEST_F(FilterPanel, TheFirstRowCannotMoveUpNorTheLastDown) {
    openThree();
    EXPECT_FALSE(button("cmdUp").isEnabled());
    EXPECT_TRUE(button("cmdDown").isEnabled());
    select(1);
    EXPECT_TRUE(button("cmdUp").isEnabled());
    EXPECT_TRUE(button("cmdDown").isEnabled());
    select(2);
    EXPECT_TRUE(button("cmdUp").isEnabled());
    EXPECT_FALSE(button("cmdDown").isEnabled());
    click("cmdUp");
    EXPECT_TRUE(button("cmdDown").isEnabled());
    click("cmdDelete");
    EXPECT_FALSE(button("cmdDown").isEnabled()) << "now the last";
    click("cmdNew");
    select(1);
    EXPECT_TRUE(button("cmdDown").isEnabled()) << "there is one below";
}

TEST_F(FilterPanel, ResetPutsTheDefaultListAndIsSaved) {
    openThree();
    click("cmdReset");
    EXPECT_EQ(list().topLevelItemCount(), 12);
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(description().text(), u"All Files (*.*)"_qs);
    EXPECT_EQ(changed.count(), 1);
    panel.SaveProp();
    EXPECT_TRUE(GetFilterString(registry).contains(u"|JSP Files (*.jsp)|*.asp|ASP Files (*.asp)|*.*|"_qs));
}

TEST_F(FilterPanel, ResetOfTheDefaultListIsSavedToo) {
    open();
    click("cmdReset");
    panel.SaveProp();
    EXPECT_TRUE(GetFilterString(registry).contains(u"|JSP Files (*.jsp)|*.asp|"_qs));
}

TEST_F(FilterPanel, SavesOnlyWhatWasChangedSince) {
    openThree();
    click("cmdDelete");
    panel.SaveProp();
    EXPECT_EQ(calls.size(), 4 + 4) << "three rows and their key are deleted, two rows written";
    calls.clear();
    panel.SaveProp();
    EXPECT_EQ(calls, QStringList());
    click("cmdDelete");
    panel.InitValues();
    panel.SaveProp();
    EXPECT_EQ(calls, QStringList());
    EXPECT_EQ(texts(), u"B|*.b C|*.c"_qs);
}

TEST_F(FilterPanel, WhatCouldNotBeWrittenCanBeSavedLater) {
    openThree();
    click("cmdDelete");
    registry.writeResult = RegistryCode::DiskFull;
    panel.SaveProp();
    registry.writeResult.reset();
    panel.SaveProp();
    EXPECT_EQ(GetFilterString(registry), u"B|*.b|C|*.c"_qs);
}
