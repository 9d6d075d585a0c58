#include "settings/desktop/DesktopEntry.h"
#include "settings/desktop/DesktopFixture.h"

#include <random>

namespace {

/// The value of a key, read as any desktop reads it.
QString valueOf(const QByteArray& entry, const QByteArray& key) {
    QString value;
    for (const QByteArray& line : entry.split('\n')) {
        if (line.startsWith(key + '='))
            value = QString::fromUtf8(line.mid(key.size() + 1));
    }
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != u'\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        const QString letters = u"sntr\\"_qs;
        const QString meanings = u" \n\t\r\\"_qs;
        const qsizetype found = letters.indexOf(value[++i]);
        text += found < 0 ? QString(value[i]) : QString(meanings[found]);
    }
    return text;
}

/// The arguments of a command line: quotes, escapes in them, and "%%" for a percent sign.
QStringList argumentsOf(const QString& command) {
    QStringList arguments{QString()};
    bool isQuoted = false;
    for (qsizetype i = 0; i < command.size(); ++i) {
        QChar each = command[i];
        if (each == u'"') {
            isQuoted = !isQuoted;
            continue;
        }
        if (each == u' ' && !isQuoted) {
            arguments.append(QString());
            continue;
        }
        if (each == u'\\' && isQuoted)
            each = command[++i];
        else if (each == u'%' && command.mid(i + 1, 1) == u"%")
            ++i;
        arguments.last() += each;
    }
    return arguments;
}

DesktopEntry entryOf(const QString& program) {
    DesktopEntry entry = DesktopEntry::ofProgram(program);
    entry.types = {u"text/plain"_qs, u"text/x-c"_qs};
    return entry;
}

}  // namespace

TEST(DesktopEntryText, HasEveryKey) {
    DesktopEntry entry = entryOf(u"/opt/my/quillmark"_qs);
    EXPECT_EQ(entry.bytes(),
              "[Desktop Entry]\nType=Application\nName=Quillmark\nComment=Quillmark Access Shortcut\n"
              "Exec=/opt/my/quillmark %f\nTryExec=/opt/my/quillmark\nPath=/opt/my\nIcon=quillmark\nTerminal=false\n"
              "StartupNotify=true\nStartupWMClass=quillmark\nCategories=Utility;TextEditor;\n"
              "MimeType=text/plain;text/x-c;\n");
    entry.types.clear();
    entry.workingFolder.clear();
    entry.hidden = true;
    EXPECT_TRUE(entry.bytes().endsWith("TextEditor;\nNoDisplay=true\n"));
    EXPECT_FALSE(entry.bytes().contains("Path="));
}

TEST(DesktopEntryText, TheIconIsTheOneThatWasInstalled) {
    const QTemporaryDir prefix;
    const QString icon = prefix.filePath(u"share/quillmark/icons/quillmark.svg"_qs);
    QDir().mkpath(QFileInfo(icon).path());
    QFile file(icon);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(DesktopEntry::ofProgram(prefix.filePath(u"bin/quillmark"_qs)).icon, icon);
}

TEST(DesktopEntryText, AnyPathIsReadBackUnchanged) {
    const QString pieces = u"ab/ \"'`$\\%fu;=~#&|<>()*?\t\n\rä日-_."_qs;
    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round) {
        QString program = u"/"_qs;
        for (auto count = random() % 12; count > 0; --count)
            program += pieces[static_cast<qsizetype>(random() % static_cast<unsigned>(pieces.size()))];
        program += u"/quillmark"_qs;
        const QByteArray bytes = entryOf(program).bytes();
        ASSERT_EQ(argumentsOf(valueOf(bytes, "Exec")), (QStringList{program, u"%f"_qs})) << bytes.constData();
        ASSERT_EQ(valueOf(bytes, "TryExec"), program) << bytes.constData();
        ASSERT_EQ(valueOf(bytes, "Path"), QFileInfo(program).path()) << bytes.constData();
    }
}

TEST_F(DesktopFixture, EntriesForOddPathsAreValid) {
    for (const char* name : {"plain", "with blank", "quo\"te", "dollar$", "back\\slash", "percent%f", "tick`"}) {
        const QString file = path(u"check.desktop"_qs);
        put(file, entryOf(u"/opt/"_qs + QString::fromLatin1(name) + u"/quillmark"_qs).bytes());
        EXPECT_EQ(run(u"desktop-file-validate"_qs, {file}), QString()) << name;
    }
}
