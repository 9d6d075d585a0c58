#include "shell/recovery/Comparisons.h"
#include "shell/recovery/frmDifferences.h"
#include "widgets/Contrast.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <thread>
#include <utility>

namespace {

const std::atomic<bool> running = false;

class frmDifferencesTest : public testing::Test {
 protected:
    void show(frmDifferences::Work work) {
        m_form = new frmDifferences(u"a.txt"_qs, std::move(work), nullptr);
        m_form->show();
    }
    void showDone(const QByteArray& file, const QByteArray& recovered) {
        show([path = fileOf(file), recovered](const std::atomic<bool>& cancelled) {
            return Comparisons::ofTexts(path, recovered, cancelled);
        });
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_form->isComplete(); }, 30'000));
    }
    QString fileOf(const QByteArray& bytes, const QString& name = u"a.txt"_qs) const {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    QPlainTextEdit& list() { return *m_form->findChild<QPlainTextEdit*>(u"txtDifferences"_qs); }
    QString summary() { return m_form->findChild<QLabel*>(u"lblSummary"_qs)->text(); }
    QColor groundOf(int row) { return list().document()->findBlockByNumber(row).blockFormat().background().color(); }

    QTemporaryDir m_folder;
    QPointer<frmDifferences> m_form;
};

}  // namespace

TEST_F(frmDifferencesTest, ShowsTheChangedLinesBySignAndColour) {
    showDone("a\nb\nc\n", "a\nx\nc\n");
    EXPECT_EQ(m_form->windowTitle(), u"Differences - a.txt"_qs);
    EXPECT_EQ(list().toPlainText(), u"1 1   a\n2   - b\n  2 + x\n3 3   c"_qs);
    EXPECT_EQ(summary(), u"- in the file as it is now: 1 line.  + recovered: 1 line."_qs);
    EXPECT_NE(groundOf(1), groundOf(2));
    EXPECT_TRUE(list().isReadOnly());
    EXPECT_EQ(list().textCursor().position(), 0);
    m_form->close();
}

TEST_F(frmDifferencesTest, IsReadableInLightAndDark) {
    showDone("b\n", "x\n");
    for (const bool dark : {false, true}) {
        QPalette palette;
        palette.setColor(QPalette::Base, dark ? QColor(0x20, 0x20, 0x20) : QColor(Qt::white));
        palette.setColor(QPalette::Text, dark ? QColor(0xe0, 0xe0, 0xe0) : QColor(Qt::black));
        m_form->setPalette(palette);
        for (int row = 0; row < 2; ++row) {
            const QTextBlock block = list().document()->findBlockByNumber(row);
            const QColor letters = block.begin().fragment().charFormat().foreground().color();
            EXPECT_GE(Contrast::between(groundOf(row), letters), Contrast::Enough) << dark << row;
            EXPECT_EQ(Contrast::isDark(groundOf(row)), dark);
        }
    }
    m_form->close();
}

TEST_F(frmDifferencesTest, SaysWhenThereAreNone) {
    showDone("same\r\n", "same\r\n");
    EXPECT_EQ(list().toPlainText(), QString());
    EXPECT_EQ(summary(), u"The recovered text is the same as that of the file."_qs);
    m_form->close();
}

TEST_F(frmDifferencesTest, IsClosedByEscapeAndDestroyed) {
    showDone("a", "b");
    EXPECT_FALSE(m_form->isModal());
    EXPECT_EQ(m_form->focusWidget(), &list());
    QTest::keyClick(&list(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_form.isNull(); }, 30'000));
}

TEST_F(frmDifferencesTest, CanBeClosedWhileItCompares) {
    const auto ended = std::make_shared<std::promise<void>>();
    show([ended](const std::atomic<bool>& cancelled) {
        while (!cancelled)
            std::this_thread::yield();
        ended->set_value();
        return DifferencesFound{};
    });
    EXPECT_EQ(summary(), u"Comparing..."_qs);
    m_form->close();
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_form.isNull(); }, 30'000));
    ended->get_future().wait();  // the work was cancelled
}

TEST_F(frmDifferencesTest, ComparesTheTextOfAFileWhateverItsEncoding) {
    const QByteArray utf16("\xff\xfe\xe4\0\n\0", 6);
    EXPECT_TRUE(Comparisons::ofTexts(fileOf(utf16), "ä\n", running).rows.areEqual());
    EXPECT_TRUE(Comparisons::ofTexts(fileOf("\xe4\n"), "ä\n", running).rows.areEqual());
    EXPECT_FALSE(Comparisons::ofTexts(fileOf("\xe4\n"), "ö\n", running).rows.areEqual());
}

TEST_F(frmDifferencesTest, SaysWhenThereIsNoFile) {
    const DifferencesFound gone = Comparisons::ofTexts(m_folder.filePath(u"no.txt"_qs), "a\n", running);
    EXPECT_EQ(gone.summary, u"The file is gone. - in the file as it is now: 0 lines.  + recovered: 1 line."_qs);
    EXPECT_EQ(gone.rows.toText(), u"  1 + a"_qs);
    EXPECT_TRUE(Comparisons::ofTexts({}, "a\n", running).summary.startsWith(u"The document has no file yet."_qs));
    const DifferencesFound folder = Comparisons::ofTexts(m_folder.path(), "a\n", running);
    EXPECT_TRUE(folder.rows.rows.empty());
    EXPECT_TRUE(folder.summary.contains(m_folder.path())) << folder.summary.toStdString();
}

TEST_F(frmDifferencesTest, CountsBytesThatDiffer) {
    QByteArray other(3'000'000, 'a');
    const QString path = fileOf(other, u"now"_qs);
    EXPECT_EQ(Comparisons::ofBytes(path, fileOf(other, u"recovered"_qs), running).summary,
              u"The recovered bytes are the same as those of the file."_qs);
    other[0] = 'b';
    other[0x100000 - 1] = 'b';
    other[0x100000] = 'b';
    other += "xyz";
    const DifferencesFound found = Comparisons::ofBytes(path, fileOf(other, u"recovered"_qs), running);
    EXPECT_EQ(found.summary, u"6 bytes differ from the file as it is now."_qs);
    EXPECT_EQ(found.text,
              u"00000000 - 00000000   1 byte\n"
              "000fffff - 00100000   2 bytes\n"
              "002dc6c0 - 002dc6c2   3 bytes"_qs);
    EXPECT_EQ(Comparisons::ofBytes(m_folder.filePath(u"no"_qs), path, running).summary, u"The file is gone."_qs);
}

TEST_F(frmDifferencesTest, ListsTheFirstRangesOfBytes) {
    QByteArray other;
    for (int i = 0; i < 1000; ++i)
        other += "ab";
    const DifferencesFound found =
        Comparisons::ofBytes(fileOf(QByteArray(2000, 'a'), u"now"_qs), fileOf(other, u"recovered"_qs), running);
    EXPECT_EQ(found.summary, u"1000 bytes differ from the file as it is now."_qs);
    EXPECT_EQ(found.text.count(u'\n'), 200);
    EXPECT_TRUE(found.text.endsWith(u'⋮'));
}
