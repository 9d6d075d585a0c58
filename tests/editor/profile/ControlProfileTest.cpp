#include "editor/Editor.h"
#include "editor/control/ControlBraces.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlMouse.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "editor/profile/ControlProfile.h"
#include "editor/profile/SharedProfile.h"
#include "editor/windows/ControlProperties.h"
#include "settings/registry/MemoryRegistry.h"
#include "settings/registry/RegistryData.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

const QString key = u"Software/Quillmark/Languages"_qs;

/// Refuses every write from the given one on.
class FullRegistry : public MemoryRegistry {
 public:
    int left = 3;
    int writeValue(RegistryRoot root, const QString& path, const QString& name, const RegistryValue& value) override {
        return left-- > 0 ? MemoryRegistry::writeValue(root, path, name, value) : RegistryCode::DiskFull;
    }
};

struct AProfile : testing::Test {
    MemoryRegistry registry;

    std::optional<qint32> stored(const char* name) {
        RegistryValue value;
        const int code = registry.readValue(HKEY_CURRENT_USER, key, QString::fromLatin1(name), value);
        EXPECT_TRUE(code != RegistryCode::Ok || value.type == RegistryType::Integer);
        return code == RegistryCode::Ok ? std::optional(RegistryData::littleEndian(value)) : std::nullopt;
    }
    void put(const char* name, const RegistryValue& value) {
        EXPECT_EQ(registry.writeValue(HKEY_CURRENT_USER, key, QString::fromLatin1(name), value), RegistryCode::Ok);
    }
    static void change(TextControl& control) {
        control.look().setWordWrap(true);
        control.look().setDisplayWhitespace(true);
        control.lineNumbers().setLineNumbering(true);
        control.look().setDisplayLeftMargin(false);
        control.braces().setBraceMatching(false);
        control.typing().setBlanksForTabs(true);
        control.typing().setAutoIndent(false);
        control.mouse().setDragDrop(false);
        control.typing().setTabWidth(7);
        control.look().setElementColour(ControlLook::BackgroundElement, QColor(1, 2, 3));
        control.look().setElementColour(ControlLook::LeftMarginElement, QColor(4, 5, 6));
        control.look().setElementColour(ControlLook::RowHighlightElement, QColor(0, 0, 0));
    }
};

/// Some controls with a profile in common, and the dialog of the first.
struct ASharedProfile : AProfile {
    SharedProfile shared{registry};
    const std::unique_ptr<TextControl> firstOwner{makeEditor()};
    TextControl& first = *firstOwner;
    const std::unique_ptr<TextControl> secondOwner{makeEditor()};
    TextControl& second = *secondOwner;

    ASharedProfile() {
        shared.connectTo(first);
        shared.connectTo(second);
    }
    template <typename Change>
    void inDialog(Change change) {
        first.ExecuteCmd(224);
        auto& dialog = *first.findChild<ControlProperties*>();
        change(dialog);
        dialog.findChild<QPushButton*>(u"cmdOK"_qs)->click();
    }
    static void tick(const ControlProperties& dialog, const char* name) {
        dialog.findChild<QCheckBox*>(QString::fromLatin1(name))->click();
    }
};

}  // namespace

TEST_F(AProfile, BringsAllOfItFromOneControlToAnotherThroughTheStore) {
    const std::unique_ptr<TextControl> oneOwner{makeEditor()};
    TextControl& one = *oneOwner;
    change(one);
    EXPECT_EQ(ControlProfile::of(one).save(registry), RegistryCode::Ok);
    const std::unique_ptr<TextControl> otherOwner{makeEditor()};
    TextControl& other = *otherOwner;
    ASSERT_NE(ControlProfile::of(other), ControlProfile::of(one));
    ControlProfile profile;
    profile.load(registry);
    profile.applyTo(other);
    EXPECT_EQ(ControlProfile::of(other), ControlProfile::of(one));
    EXPECT_TRUE(other.look().WordWrap());
    EXPECT_TRUE(other.look().DisplayWhitespace());
    EXPECT_TRUE(other.lineNumbers().LineNumbering());
    EXPECT_FALSE(other.look().DisplayLeftMargin());
    EXPECT_FALSE(other.braces().BraceMatching());
    EXPECT_TRUE(other.typing().BlanksForTabs());
    EXPECT_FALSE(other.typing().AutoIndent());
    EXPECT_FALSE(other.mouse().DragDrop());
    EXPECT_EQ(other.typing().TabWidth(), 7);
    EXPECT_EQ(other.look().elementColour(ControlLook::BackgroundElement), QColor(1, 2, 3));
    EXPECT_EQ(other.look().elementColour(ControlLook::LeftMarginElement), QColor(4, 5, 6));
    EXPECT_EQ(other.look().elementColour(ControlLook::RowHighlightElement), QColor(0, 0, 0));
}

TEST_F(AProfile, IsStoredAsNumbersUnderTheNamesOfTheProperties) {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    change(control);
    ControlProfile::of(control).save(registry);
    EXPECT_EQ(stored("WordWrap"), 1);
    EXPECT_EQ(stored("AutoIndent"), 0);
    EXPECT_EQ(stored("TabWidth"), 7);
    EXPECT_EQ(stored("BackgroundColor"), 1 | 2 << 8 | 3 << 16);
}

TEST_F(AProfile, OfAnEmptyStoreLeavesAControlAsItIs) {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    const ControlProfile fresh = ControlProfile::of(control);
    ControlProfile profile;
    profile.load(registry);
    EXPECT_EQ(profile, ControlProfile());
    profile.applyTo(control);
    EXPECT_EQ(ControlProfile::of(control), fresh);
}

TEST_F(AProfile, TakesNothingThatCannotBeRead) {
    put("WordWrap", RegistryData::fromInteger(2));
    put("AutoIndent", RegistryData::fromText(u"0"_qs));
    put("TabWidth", RegistryData::fromInteger(0));
    put("BackgroundColor", RegistryData::fromInteger(-1));
    put("LeftMarginColor", RegistryData::fromInteger(0x1000000));
    put("DragDrop", {RegistryType::Integer, QByteArray("\0\0", 2)});
    ControlProfile profile;
    profile.load(registry);
    EXPECT_EQ(profile, ControlProfile());
    put("TabWidth", RegistryData::fromInteger(65));
    put("BraceMatching", RegistryData::fromInteger(0));
    profile.load(registry);
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    profile.applyTo(control);
    EXPECT_EQ(control.typing().TabWidth(), 4);
    EXPECT_FALSE(control.braces().BraceMatching());
}

TEST_F(AProfile, ForgetsAColourThatWasReset) {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    control.look().setElementColour(ControlLook::BackgroundElement, QColor(1, 2, 3));
    ControlProfile::of(control).save(registry);
    ASSERT_TRUE(stored("BackgroundColor"));
    control.look().setElementColour(ControlLook::BackgroundElement, QColor());
    EXPECT_EQ(ControlProfile::of(control).save(registry), RegistryCode::Ok);
    EXPECT_FALSE(stored("BackgroundColor"));
}

TEST_F(AProfile, LeavesWhatElseIsStoredThere) {
    const RegistryValue other = RegistryData::fromText(u"Ctrl + 1"_qs);
    put("Other", other);
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    ControlProfile::of(control).save(registry);
    RegistryValue value;
    EXPECT_EQ(registry.readValue(HKEY_CURRENT_USER, key, u"Other"_qs, value), RegistryCode::Ok);
    EXPECT_EQ(value, other);
}

TEST_F(AProfile, SaysWhyItWasNotStored) {
    FullRegistry full;
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    EXPECT_EQ(ControlProfile::of(control).save(full), RegistryCode::DiskFull);
}

TEST_F(ASharedProfile, ChangesAllControlsAtOnceAndTheStore) {
    inDialog([](const ControlProperties& dialog) {
        tick(dialog, "chkWordWrap");
        dialog.findChild<QSpinBox*>(u"numTabWidth"_qs)->setValue(3);
    });
    EXPECT_TRUE(second.look().WordWrap());
    EXPECT_EQ(second.typing().TabWidth(), 3);
    EXPECT_EQ(stored("WordWrap"), 1);
    EXPECT_EQ(stored("TabWidth"), 3);
}

TEST_F(ASharedProfile, LeavesToEachControlWhatTheDialogLeftAlone) {
    first.braces().setBraceMatching(false);
    second.look().setDisplayWhitespace(true);
    inDialog([](const ControlProperties& dialog) { tick(dialog, "chkAutoIndent"); });
    EXPECT_FALSE(first.braces().BraceMatching());
    EXPECT_TRUE(second.braces().BraceMatching());
    EXPECT_TRUE(second.look().DisplayWhitespace());
    EXPECT_FALSE(second.typing().AutoIndent());
    EXPECT_FALSE(stored("BraceMatching"));
    EXPECT_EQ(stored("AutoIndent"), 0);
}

TEST_F(ASharedProfile, IsHowControlsToComeBegin) {
    inDialog([](const ControlProperties& dialog) { tick(dialog, "chkBlanksForTabs"); });
    const std::unique_ptr<TextControl> thirdOwner{makeEditor()};
    TextControl& third = *thirdOwner;
    shared.connectTo(third);
    shared.applyTo(third);
    EXPECT_TRUE(third.typing().BlanksForTabs());
    SharedProfile ofNextRun(registry);
    ofNextRun.load();
    const std::unique_ptr<TextControl> laterOwner{makeEditor()};
    TextControl& later = *laterOwner;
    ofNextRun.applyTo(later);
    EXPECT_TRUE(later.typing().BlanksForTabs());
}

TEST_F(ASharedProfile, TakesBackAColourEverywhere) {
    for (TextControl* control : {&first, &second})
        control->look().setElementColour(ControlLook::LeftMarginElement, QColor(9, 9, 9));
    inDialog(
        [](const ControlProperties& dialog) { dialog.findChild<QPushButton*>(u"cmdResetLeftMargin"_qs)->click(); });
    EXPECT_FALSE(second.look().elementColour(ControlLook::LeftMarginElement).isValid());
}

TEST(SharedProfile, KeepsForTheRunWhatTheStoreWouldNotTake) {
    FullRegistry full;
    full.left = 0;
    SharedProfile shared(full);
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    shared.connectTo(control);
    const ControlProfile before = ControlProfile::of(control);
    control.typing().setTabWidth(7);
    Q_EMIT control.PropertiesChanged(before, ControlProfile::of(control));
    shared.load();
    const std::unique_ptr<TextControl> otherOwner{makeEditor()};
    TextControl& other = *otherOwner;
    shared.applyTo(other);
    EXPECT_EQ(other.typing().TabWidth(), 7);
    full.left = 100;
    EXPECT_TRUE(shared.save());
    shared.load();
    other.typing().setTabWidth(2);
    shared.applyTo(other);
    EXPECT_EQ(other.typing().TabWidth(), 7);
}

TEST_F(ASharedProfile, HearsNothingOfADialogThatChangedNothing) {
    QSignalSpy changes(&shared, &SharedProfile::Changed);
    inDialog([](const ControlProperties&) {});
    EXPECT_EQ(changes.count(), 0);
    EXPECT_FALSE(stored("TabWidth"));
}
