#pragma once

#include "hex/SomeBytes.h"
#include "hex/bytes/HexFindState.h"
#include "hex/bytes/HexText.h"
#include "hex/grid/Grid.h"
#include "hex/grid/GridPane.h"
#include "hex/grid/OffsetPane.h"
#include "hex/ucHex.h"
#include "settings/Options.h"
#include "support/FailingFileSystem.h"
#include "support/ScriptedPrompts.h"
#include "widgets/ClickLabel.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

/// A hex view on an offscreen display, with files of its own.
class HexFixture : public testing::Test {
 protected:
    void SetUp() override {
        m_hex->show();
        m_hex->activateWindow();
        QApplication::processEvents();
    }

    QString at(const QString& name) const { return m_folder.filePath(name); }

    QString file(const QByteArray& bytes, const QString& name = u"file"_qs) {
        QFile out(at(name));
        EXPECT_TRUE(out.open(QFile::WriteOnly) && out.write(bytes) == bytes.size());
        return out.fileName();
    }

    static QByteArray bytesOf(const QString& path) {
        QFile in(path);
        return in.open(QFile::ReadOnly) ? in.readAll() : QByteArray("(no such file)");
    }

    void open(const QByteArray& bytes) {
        ASSERT_TRUE(m_hex->OpenFile(file(bytes)));
        QApplication::processEvents();
        ASSERT_TRUE(pane(1)->hasFocus());
    }

    template <typename Part>
    Part* part(const QString& name) const {
        Part* found = m_hex->findChild<Part*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    Grid* grid(int number) const { return part<Grid>(u"grid%1"_qs.arg(number)); }
    GridPane* pane(int number) const { return part<GridPane>(number == 1 ? u"PicHex"_qs : u"PicText"_qs); }
    QString info(int number) const { return part<QLabel>(u"lblInfo(%1)"_qs.arg(number))->text(); }
    QScrollBar* scrollBar() const { return part<QScrollBar>(u"VScroll1"_qs); }
    QAbstractItemView* bookmarks() const { return part<QAbstractItemView>(u"lsBookmark"_qs); }
    QStringList bookmarkTexts() const {
        QStringList texts;
        for (int row = 0; row < bookmarks()->model()->rowCount(); ++row)
            texts += bookmarks()->model()->index(row, 0).data().toString();
        return texts;
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }
    void type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    void select(int row, int col) {
        QTest::mouseClick(pane(1), Qt::LeftButton, {}, pane(1)->cellRect({row, col}).center());
    }
    void scroll(const QString& key) { QTest::mouseClick(part<QWidget>(u"tbScroll."_qs + key), Qt::LeftButton); }
    int pointer() const { return m_hex->property("FilePointer").toInt(); }
    /// Position of the byte under the cursor.
    qint64 cursor() const { return (grid(1)->Pointer() + grid(1)->Row() * 16 + grid(1)->Col()).number(); }
    QByteArray workingBytes() const { return bytesOf(m_hex->TempFileName()); }

    /// Whether the screen shows these bytes and both panes agree.
    void expectShown(const QByteArray& bytes) {
        for (const int number : {1, 2}) {
            ASSERT_EQ(grid(number)->Pointer(), m_hex->FilePointer());
        }
        ASSERT_EQ(grid(1)->Rows(), grid(2)->Rows());
        for (int row = 0; row < grid(1)->Rows(); ++row) {
            for (int col = 0; col < 16; ++col) {
                const qsizetype index = pointer() - 1 + row * 16 + col;
                if (index >= bytes.size()) {
                    ASSERT_EQ(grid(1)->Value(row, col), u"-1"_qs);
                    continue;
                }
                const int byte = static_cast<quint8>(bytes[index]);
                ASSERT_EQ(grid(1)->Value(row, col), HexText::ByteToHexCell(byte)) << index;
                ASSERT_EQ(grid(2)->Value(row, col), HexText::ByteToTextCell(byte)) << index;
            }
        }
    }

    QTemporaryDir m_folder;
    ScriptedPrompts m_prompts;
    Options m_options;
    HexFindState m_findState;
    FailingFileSystem m_calls;
    std::unique_ptr<ucHex> m_hex =
        std::make_unique<ucHex>(m_prompts, m_options, m_findState, nullptr, HexStorage{.calls = m_calls});
};
