#include "RecordedServices.h"
#include "properties/ucPropFindReplace.h"
#include "settings/Settings.h"

#include <QCheckBox>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

class FindPanel : public testing::Test {
 protected:
    FindPanel() { panel.LoadProp(); }
    QCheckBox& box(const char* name) { return *panel.findChild<QCheckBox*>(QLatin1String(name)); }
    QStringList saved() {
        calls.clear();
        panel.SaveProp();
        return calls;
    }

    QStringList calls;
    RecordedRegistry registry{calls};
    Settings settings{registry};
    ucPropFindReplace panel{settings};
};

struct Row {
    const char* name;
    const char* caption;
    const char* key;
    bool missing;  ///< what a missing setting counts as
};

constexpr Row Rows[] = {
    {"chkReg", "Enable Regular Expression when searching in Toolbar", "ToolbarRegExp", false},
    {"chkCase", "Enable Case Sensitive when searching in Toolbar", "ToolbarCase", false},
    {"chkContinue", "Enable Continue to search at End/Start of the file", "ContinueSearch", true},
    {"chkWholeWord", "Enable Match Whole Word Only when searching in Toolbar", "ToolbarWholeWord", true},
};

}  // namespace

TEST_F(FindPanel, ShowsTheDefaultsOfTheDialog) {
    for (const Row& row : Rows) {
        EXPECT_EQ(box(row.name).text().remove(u'&'), QLatin1String(row.caption));
        EXPECT_EQ(box(row.name).isChecked(), row.missing) << row.name;
    }
    EXPECT_EQ(calls, QStringList()) << "reading writes nothing";
}

TEST_F(FindPanel, ShowsWhatIsStored) {
    for (const Row& row : Rows) {
        for (const bool on : {true, false}) {
            settings.write(QLatin1String(row.key), on ? u"1"_qs : u"True"_qs);
            panel.LoadProp();
            EXPECT_EQ(box(row.name).isChecked(), on) << row.name;
        }
    }
}

TEST_F(FindPanel, SavesAllFourInTheirOrderWhenAnyWasChanged) {
    const QSignalSpy changed(&panel, &ucPropFindReplace::Changed);
    EXPECT_EQ(saved(), QStringList());
    box("chkCase").click();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(saved(), QStringList({u"search/ToolbarRegExp=0"_qs, u"search/ToolbarCase=1"_qs,
                                    u"search/ContinueSearch=1"_qs, u"search/ToolbarWholeWord=1"_qs}));
    EXPECT_EQ(saved(), QStringList());
    panel.LoadProp();
    EXPECT_EQ(changed.count(), 1);
    for (const Row& row : Rows)
        box(row.name).click();
    EXPECT_EQ(saved(), QStringList({u"search/ToolbarRegExp=1"_qs, u"search/ToolbarCase=0"_qs,
                                    u"search/ContinueSearch=0"_qs, u"search/ToolbarWholeWord=0"_qs}));
}
