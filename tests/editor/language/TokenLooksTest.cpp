#include "editor/language/TokenTheme.h"
#include "settings/registry/MemoryRegistry.h"
#include "settings/registry/RegistryData.h"
#include "settings/registry/modRegistry.h"
#include "widgets/Contrast.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

const QColor LightGround = Qt::white;
const QColor DarkGround = QColor(0x1E, 0x1E, 0x1E);

QString key() {
    return programKey() + u"/Languages"_qs;
}

QStringList storedNames(MemoryRegistry& registry) {
    QStringList names;
    registry.valueNames(HKEY_CURRENT_USER, key(), names);
    return names;
}

}  // namespace

TEST(TokenLooks, BeginAsTheThemeOfTheProgram) {
    const TokenLooks looks;
    for (const TokenClasses::Row& row : TokenClasses::table()) {
        EXPECT_EQ(looks.on(LightGround, row.token), (TokenLook{QColor::fromRgb(row.onLight), row.bold, row.italic}));
        EXPECT_EQ(looks.on(DarkGround, row.token), (TokenLook{QColor::fromRgb(row.onDark), row.bold, row.italic}));
        EXPECT_FALSE(looks.ownColour(TokenLooks::Light, row.token).isValid());
    }
}

TEST(TokenLooks, AColourIsChosenForOneGround) {
    TokenLooks looks;
    looks.setOwnColour(TokenLooks::Dark, TokenClass::String, QColor(255, 200, 100));
    EXPECT_EQ(looks.on(DarkGround, TokenClass::String).colour, QColor(255, 200, 100));
    EXPECT_EQ(looks.on(LightGround, TokenClass::String), TokenLooks().on(LightGround, TokenClass::String));
    looks.setOwnColour(TokenLooks::Dark, TokenClass::String, QColor());
    EXPECT_EQ(looks, TokenLooks());
}

TEST(TokenLooks, AColourThatCouldNotBeReadIsMadeReadable) {
    TokenLooks looks;
    looks.setOwnColour(TokenLooks::Light, TokenClass::Comment, QColor(240, 240, 200));
    const QColor shown = looks.on(LightGround, TokenClass::Comment).colour;
    EXPECT_GE(Contrast::between(shown, LightGround), Contrast::Enough);
    EXPECT_EQ(looks.ownColour(TokenLooks::Light, TokenClass::Comment), QColor(240, 240, 200));
}

TEST(TokenLooks, OutlastTheStore) {
    MemoryRegistry registry;
    TokenLooks looks;
    looks.setOwnColour(TokenLooks::Light, TokenClass::Keyword, QColor(1, 2, 3));
    looks.setOwnColour(TokenLooks::Dark, TokenClass::Error, Qt::white);
    looks.setBold(TokenClass::Keyword, false);
    looks.setItalic(TokenClass::Type, true);
    ASSERT_EQ(looks.save(registry), RegistryCode::Ok);
    TokenLooks again;
    again.load(registry);
    EXPECT_EQ(again, looks);
    EXPECT_EQ(storedNames(registry).size(), 4);
    ASSERT_EQ(TokenLooks().save(registry), RegistryCode::Ok);
    EXPECT_EQ(storedNames(registry), QStringList());
}

TEST(TokenLooks, WhatCanNotBeReadIsTheThemes) {
    MemoryRegistry registry;
    const auto put = [&](const char* name, const RegistryValue& value) {
        registry.writeValue(HKEY_CURRENT_USER, key(), QString::fromLatin1(name), value);
    };
    put("ColorOnLight.keyword", RegistryData::fromText(u"red"_qs));
    put("ColorOnLight.type", RegistryData::fromInteger(-1));
    put("ColorOnLight.string", RegistryData::fromInteger(0x1000000));
    put("Bold.keyword", RegistryData::fromInteger(2));
    put("ColorOnDark.name", {RegistryType::Integer, "abc"});
    TokenLooks looks;
    looks.setBold(TokenClass::Name, true);
    looks.load(registry);
    EXPECT_EQ(looks, TokenLooks());
}

TEST(TokenLooks, LeaveOtherValuesOfTheirKeyAlone) {
    MemoryRegistry registry;
    registry.writeValue(HKEY_CURRENT_USER, key(), u"TabWidth"_qs, RegistryData::fromInteger(3));
    ASSERT_EQ(TokenLooks().save(registry), RegistryCode::Ok);
    EXPECT_EQ(storedNames(registry), QStringList(u"TabWidth"_qs));
}

TEST(TokenTheme, IsKeptAndTellsOfEachChangeOnce) {
    MemoryRegistry registry;
    TokenTheme theme(registry);
    const QSignalSpy changed(&theme, &TokenTheme::Changed);
    TokenLooks looks;
    looks.setBold(TokenClass::Text, true);
    EXPECT_TRUE(theme.setLooks(looks));
    EXPECT_TRUE(theme.setLooks(looks));
    theme.load();
    EXPECT_EQ(changed.count(), 1);
    TokenTheme next(registry);
    next.load();
    EXPECT_EQ(next.looks(), looks);
}
