#include "platform/Folders.h"
#include "platform/Product.h"
#include "shell/outside/SystemInformation.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QScreen>

#include <gtest/gtest.h>

namespace {

/// The value that stands behind the name.
QString fact(const QString& name) {
    static const QString text = SystemInformation(u"/own folder"_qs, u"/share folder"_qs).text();
    const QRegularExpression row(u"^  %1: +(.+)$"_qs.arg(name), QRegularExpression::MultilineOption);
    return row.match(text).captured(1);
}

}  // namespace

TEST(SystemInformation, NamesTheVersionsOfProgramAndLibraries) {
    EXPECT_EQ(fact(u"Quillmark"_qs), u"%1 (%2)"_qs.arg(Product::version(), Product::buildNumber()));
    EXPECT_TRUE(fact(u"Qt"_qs).startsWith(QLatin1String(qVersion())));
    const QRegularExpression version(u"^\\d+\\.\\d+"_qs);
    for (const char* library : {"QScintilla", "SQLite", "PCRE2"}) {
        EXPECT_TRUE(version.match(fact(QString::fromLatin1(library))).hasMatch()) << library;
    }
    EXPECT_FALSE(fact(u"Compiler"_qs).isEmpty());
}

TEST(SystemInformation, NamesSystemKernelPlatformAndScreens) {
    EXPECT_FALSE(fact(u"System"_qs).isEmpty());
    EXPECT_TRUE(fact(u"Kernel"_qs).contains(QSysInfo::kernelVersion()));
    EXPECT_TRUE(fact(u"Platform"_qs).contains(QGuiApplication::platformName()));
    const QString screen = fact(u"Screen 1"_qs);
    const QSize size = QGuiApplication::primaryScreen()->size();
    EXPECT_TRUE(screen.startsWith(u"%1 x %2 "_qs.arg(size.width()).arg(size.height()))) << screen.toStdString();
    EXPECT_TRUE(screen.contains(u"scale %1"_qs.arg(QGuiApplication::primaryScreen()->devicePixelRatio())));
}

TEST(SystemInformation, NamesTheFolders) {
    EXPECT_EQ(fact(u"Program"_qs), executableFolder());
    EXPECT_EQ(fact(u"Own files"_qs), u"/own folder"_qs);
    EXPECT_EQ(fact(u"Installed files"_qs), u"/share folder"_qs);
    EXPECT_EQ(fact(u"Settings"_qs), configFolder());
    EXPECT_EQ(fact(u"Temporary files"_qs), temporaryFolder());
}

TEST(SystemInformation, LeavesOutWhatTheSystemDoesNotSay) {
    qunsetenv("XDG_CURRENT_DESKTOP");
    qputenv("QT_FONT_DPI", "\n");
    const QString text = SystemInformation({}, {}).text();
    EXPECT_FALSE(text.contains(u"Desktop:"_qs));
    EXPECT_FALSE(text.contains(u"Own files:"_qs));
    EXPECT_FALSE(text.contains(QRegularExpression(u":[ ]*\n  "_qs)));
    EXPECT_FALSE(text.contains(u"\n\n\n"_qs));
    qputenv("XDG_CURRENT_DESKTOP", "KDE\nof mine");
    EXPECT_TRUE(SystemInformation({}, {}).text().contains(QRegularExpression(u"Desktop: +KDE of mine\n"_qs)));
}
