// Every shipped sample is coloured as its golden file says. A golden file holds each line of the sample, and below it,
// led by "|", a letter for the class of each character. QUILLMARK_WRITE_GOLDEN=1 in the environment writes them again
// instead of comparing; check the changes before you keep them.

#include "editor/Editor.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlLook.h"
#include "editor/control/TextControl.h"
#include "editor/held/Colouring.h"
#include "lang/LanguageTable.h"
#include "platform/Folders.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <gtest/gtest.h>

#include <memory>

namespace {

/// By class; a blank of plain text is a blank.
constexpr QLatin1String Letters(".cdktns9+pm!");

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QDir goldenFolder() {
    return QDir(u"" QT_TESTCASE_SOURCEDIR "/lang/golden"_qs);
}

class GoldenColours : public testing::Test {
 protected:
    GoldenColours() { table.LoadLanguageIndex(); }

    /// The sample as a control colours it.
    QStringList coloured(const QString& name) {
        const std::unique_ptr<TextControl> controlOwner{makeEditor()};
        TextControl& control = *controlOwner;
        control.look().setLanguage(table.definition(name));
        EXPECT_FALSE(control.file().OpenFile(table.samplePath(name)));
        const qint64 length = control.heldText().length();
        control.colouring().completeTo(length);
        QStringList rows;
        qint64 byte = 0;
        for (qint64 line = 0; line < control.TotalLines(); ++line) {
            const QString text = control.GetLine(line);
            QString classes;
            for (const QChar unit : text) {
                const auto token = control.colouring().classAt(byte).value_or(TokenClass::Error);
                found.insert(token);
                const bool isBlank = token == TokenClass::Text && unit.isSpace();
                if (!unit.isLowSurrogate())
                    classes += isBlank ? u' ' : QChar(Letters[static_cast<qsizetype>(token)]);
                byte += QString(unit).toUtf8().size();
            }
            byte = line + 1 < control.TotalLines() ? control.map().lineBegin(line + 1) : length;
            if (line + 1 == control.TotalLines() && text.isEmpty())
                break;
            rows << text << u'|' + QStringView(classes.constData(), rightEnd(classes)).toString();
        }
        return rows;
    }

    static qsizetype rightEnd(const QString& text) {
        qsizetype end = text.size();
        while (end > 0 && text[end - 1] == u' ')
            --end;
        return end;
    }

    LanguageTable table{u"/nowhere"_qs, shareFolder()};
    QSet<TokenClass> found;
};

}  // namespace

TEST_F(GoldenColours, EverySampleIsColouredAsItsGoldenFileSays) {
    const bool writes = qEnvironmentVariableIsSet("QUILLMARK_WRITE_GOLDEN");
    ASSERT_GE(table.rows().size(), 45);
    for (const LanguageRow& row : table.rows()) {
        const QByteArrayList now = coloured(row.name).join(u'\n').toUtf8().split('\n');
        const QString path = goldenFolder().filePath(row.name + QLatin1String(".txt"));
        if (writes) {
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
            file.write(now.join('\n') + '\n');
            continue;
        }
        const QByteArrayList golden = bytesOf(path).split('\n');
        ASSERT_EQ(golden.size(), now.size() + 1) << path.toStdString();
        for (qsizetype line = 0; line < now.size(); ++line) {
            EXPECT_EQ(golden[line].toStdString(), now[line].toStdString())
                << path.toStdString() << ':' << line + 1 << ": " << now[line - line % 2].constData();
        }
    }
    EXPECT_FALSE(writes) << "the golden files were written, not compared";
}

TEST_F(GoldenColours, EveryGoldenFileBelongsToALanguage) {
    QStringList expected;
    for (const LanguageRow& row : table.rows())
        expected << row.name + QLatin1String(".txt");
    expected.sort();
    QStringList files = goldenFolder().entryList(QDir::Files);
    files.sort();
    EXPECT_EQ(files, expected);
}

TEST_F(GoldenColours, TheSamplesShowEveryClass) {
    for (const LanguageRow& row : table.rows())
        coloured(row.name);
    EXPECT_EQ(found.size(), TokenClasses::Count);
}
