#include "shell/outside/SystemInformation.h"

#include "platform/Folders.h"
#include "platform/Product.h"

#include <QApplication>
#include <QFont>
#include <QLocale>
#include <QScreen>
#include <QStyle>
#include <QSysInfo>
#include <Qsci/qsciglobal.h>

#include <sqlite3.h>

#include <array>
#include <vector>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace {

/// Letters before the second column.
constexpr int NameWidth = 18;

struct Fact {
    QString name;
    QString value;  ///< empty: not known
};

using Facts = std::vector<Fact>;

QString environment(const char* name) {
    return QString::fromLocal8Bit(qgetenv(name));
}

QString compiler() {
#if defined(__clang__)
    return u"Clang "_qs + QLatin1String(__clang_version__);
#elif defined(__GNUC__)
    return u"GCC "_qs + QLatin1String(__VERSION__);
#else
    return {};
#endif
}

QString pcre2Version() {
    std::array<char, 64> version{};  // the library asks for 24
    return pcre2_config(PCRE2_CONFIG_VERSION, version.data()) > 0 ? QString::fromLatin1(version.data()) : QString();
}

/// The library in use may be newer than the one the program was built with.
QString qtVersion() {
    const QString used = QString::fromLatin1(qVersion());
    const QString built = QString::fromLatin1(QT_VERSION_STR);
    return used == built ? used : used + u" (built with %1)"_qs.arg(built);
}

QString platformName() {
    const QString name = QGuiApplication::platformName();
    if (name.startsWith(QLatin1String("wayland")))
        return u"Wayland (%1)"_qs.arg(name);
    return name == QLatin1String("xcb") ? u"X11 (xcb)"_qs : name;
}

/// Set by a person or a desktop to change the scale, and a frequent cause of what looks wrong.
QString scaleVariables() {
    QStringList set;
    for (const char* name :
         {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_ENABLE_HIGHDPI_SCALING", "QT_FONT_DPI"}) {
        if (qEnvironmentVariableIsSet(name))
            set << QLatin1String(name) + u'=' + environment(name);
    }
    return set.join(u' ');
}

Facts programFacts() {
    return {{u"Quillmark"_qs, u"%1 (%2)"_qs.arg(Product::version(), Product::buildNumber())},
            {u"Compiler"_qs, compiler()},
            {u"Built for"_qs, QSysInfo::buildAbi()}};
}

Facts libraryFacts() {
    return {{u"Qt"_qs, qtVersion()},
            {u"QScintilla"_qs, QString::fromLatin1(QSCINTILLA_VERSION_STR)},
            {u"SQLite"_qs, QString::fromLatin1(sqlite3_libversion())},
            {u"PCRE2"_qs, pcre2Version()}};
}

Facts systemFacts() {
    return {{u"System"_qs, QSysInfo::prettyProductName()},
            {u"Kernel"_qs, QSysInfo::kernelType() + u' ' + QSysInfo::kernelVersion()},
            {u"Processor"_qs, QSysInfo::currentCpuArchitecture()},
            {u"Desktop"_qs, environment("XDG_CURRENT_DESKTOP")},
            {u"Session"_qs, environment("XDG_SESSION_TYPE")},
            {u"Locale"_qs, QLocale::system().name()}};
}

QString describe(const QScreen& screen) {
    const QRect place = screen.geometry();
    return u"%1 x %2 at %3, %4, scale %5, %6 dots an inch"_qs.arg(place.width())
        .arg(place.height())
        .arg(place.x())
        .arg(place.y())
        .arg(screen.devicePixelRatio())
        .arg(qRound(screen.logicalDotsPerInch()));
}

Facts displayFacts() {
    Facts facts = {{u"Platform"_qs, platformName()},
                   {u"Style"_qs, QApplication::style()->objectName()},
                   {u"Font"_qs, QApplication::font().toString().section(u',', 0, 1)},
                   {u"Scale variables"_qs, scaleVariables()}};
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (qsizetype i = 0; i < screens.size(); ++i)
        facts.push_back({u"Screen %1"_qs.arg(i + 1), describe(*screens[i])});
    return facts;
}

Facts folderFacts(const QString& programFolder, const QString& shareFolder) {
    return {{u"Program"_qs, executableFolder()},        {u"Installed files"_qs, shareFolder},
            {u"Own files"_qs, programFolder},           {u"Settings"_qs, configFolder()},
            {u"Temporary files"_qs, temporaryFolder()}, {u"Locks"_qs, runtimeFolder()}};
}

/// Empty without facts. A value never has a second line.
QString groupText(const QString& title, const Facts& facts) {
    QString rows;
    for (const Fact& fact : facts) {
        if (const QString value = fact.value.simplified(); !value.isEmpty())
            rows += u"  "_qs + (fact.name + u':').leftJustified(NameWidth) + value + u'\n';
    }
    return rows.isEmpty() ? QString() : title + u'\n' + rows;
}

}  // namespace

SystemInformation::SystemInformation(const QString& programFolder, const QString& shareFolder)
    : m_programFolder(programFolder), m_shareFolder(shareFolder) {}

QString SystemInformation::text() const {
    QStringList groups;
    groups << groupText(u"Program"_qs, programFacts()) << groupText(u"Libraries"_qs, libraryFacts())
           << groupText(u"System"_qs, systemFacts()) << groupText(u"Display"_qs, displayFacts())
           << groupText(u"Folders"_qs, folderFacts(m_programFolder, m_shareFolder));
    groups.removeAll(QString());
    return groups.join(u'\n');
}
