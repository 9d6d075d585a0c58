#include "HexFormFixture.h"
#include "hex/KeyFilterEdit.h"
#include "hex/frmAnsiTable.h"
#include "hex/frmBlock.h"
#include "hex/frmConvert.h"
#include "hex/frmGotoOffSet.h"
#include "hex/frmGotoPage.h"

#include <QClipboard>
#include <QGroupBox>
#include <QGuiApplication>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>

namespace {

using HexForms = HexFormFixture;

}  // namespace

TEST_F(HexForms, LetOnlyTheirKeysPass) {
    const auto typed = [](const QString& allowed, const QString& text) {
        KeyFilterEdit edit(allowed);
        QTest::keyClicks(&edit, text);
        return edit.text();
    };
    EXPECT_EQ(typed(KeyFilterEdit::hexKeys(), u"0aFg -9"_qs), u"0AF9"_qs);
    EXPECT_EQ(typed(KeyFilterEdit::decimalKeys(), u"1a2 3-"_qs), u"123"_qs);
    KeyFilterEdit edit(KeyFilterEdit::hexKeys());
    QTest::keyClicks(&edit, u"12"_qs);
    QTest::keyClick(&edit, Qt::Key_Backspace);
    EXPECT_EQ(edit.text(), u"1"_qs);
}

TEST_F(HexForms, GoToADecimalOrHexadecimalOffset) {
    open(someBytes(1000));
    whileOpen([](const QDialog* form) {
        set(form, u"Text1"_qs, u"500"_qs);
        click(form, u"Command1"_qs);
    });
    m_hex->cmdGoOffset();
    EXPECT_EQ(m_caption, u"Go to Offset"_qs);
    EXPECT_EQ(cursor(), 502);
    whileOpen([](const QDialog* form) {
        set(form, u"Text1"_qs, u"1f"_qs);
        click(form, u"Option1(1)"_qs);
        QTest::keyClick(form->findChild<QLineEdit*>(u"Text1"_qs), Qt::Key_Return);
    });
    m_hex->cmdGoOffset();
    EXPECT_EQ(cursor(), 33);
    whileOpen([](const QDialog* form) {
        set(form, u"Text1"_qs, u"500"_qs);
        QTest::keyClick(form->findChild<QLineEdit*>(u"Text1"_qs), Qt::Key_Escape);
    });
    m_hex->cmdGoOffset();
    EXPECT_EQ(cursor(), 33);
}

TEST_F(HexForms, KeepTheMarkOfARefusedHexadecimalOffset) {
    open(someBytes(1000));
    whileOpen([](const QDialog* form) {
        click(form, u"Option1(1)"_qs);
        click(form, u"Command1"_qs);
        EXPECT_EQ(textOf(form, u"Text1"_qs), u"&H"_qs);
        click(form, u"Command1"_qs);
        EXPECT_EQ(textOf(form, u"Text1"_qs), u"&H&H"_qs);
    });
    m_hex->cmdGoOffset();
    EXPECT_EQ(m_prompts.messages, QStringList({u"Please enter numeric value"_qs, u"Please enter numeric value"_qs}));
    EXPECT_EQ(cursor(), 1);
}

TEST_F(HexForms, GoToAPageWithinTheCount) {
    open(someBytes(1000));
    const std::pair<QString, int> pages[] = {{u"2"_qs, 321}, {u"0"_qs, 1}, {u"99"_qs, 961}};
    for (const auto& [text, expected] : pages) {
        whileOpen([typed = text](const QDialog* form) {
            EXPECT_EQ(form->findChild<QLabel*>(u"Label2"_qs)->text(), u"1  -  4"_qs);
            set(form, u"Text1"_qs, typed);
            QTest::keyClick(form->findChild<QLineEdit*>(u"Text1"_qs), Qt::Key_Return);
        });
        m_hex->cmdGoPage();
        EXPECT_EQ(pointer(), expected);
    }
    EXPECT_EQ(m_caption, u"Go to Page"_qs);
    whileOpen([](const QDialog* form) { click(form, u"Command1"_qs); });
    m_hex->cmdGoPage();
    EXPECT_EQ(m_prompts.messages, QStringList(u"Please enter numeric value"_qs));
    EXPECT_EQ(pointer(), 961);
}

TEST_F(HexForms, CopyABlock) {
    open(someBytes(400));
    whileOpen([](const QDialog* form) {
        EXPECT_FALSE(form->findChild<QGroupBox*>(u"Frame1"_qs)->isEnabled());
        EXPECT_EQ(form->findChild<QAbstractButton*>(u"Option1(0)"_qs)->text(), u"Copi&ar para o Clipboard"_qs);
        click(form, u"Command1"_qs);
        EXPECT_TRUE(form->isVisible());
        set(form, u"Text1"_qs, u"12"_qs);
        click(form, u"Command1"_qs);
        EXPECT_TRUE(form->isVisible());
        set(form, u"Text2"_qs, u"10"_qs);
        click(form, u"Option2(2)"_qs);
        click(form, u"Command1"_qs);
    });
    m_hex->SelectBlock();
    EXPECT_EQ(m_caption, u"Select Block"_qs);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"data: array[0..2] of byte = (\r\n\t$0A, $0B, $0C\r\n);"_qs);
}

TEST_F(HexForms, FillABlockWithAByte) {
    open(someBytes(400));
    whileOpen([](const QDialog* form) {
        click(form, u"Option1(1)"_qs);
        EXPECT_TRUE(form->findChild<QGroupBox*>(u"Frame1"_qs)->isEnabled());
        EXPECT_FALSE(form->findChild<QAbstractButton*>(u"Option2(0)"_qs)->isEnabled());
        set(form, u"Text1"_qs, u"390"_qs);
        set(form, u"Text2"_qs, u"999"_qs);
        click(form, u"Command1"_qs);
        EXPECT_TRUE(form->isVisible());
        set(form, u"Text3"_qs, u"ee"_qs);
        click(form, u"Command1"_qs);
    });
    m_hex->SelectBlock();
    EXPECT_EQ(workingBytes(), someBytes(390) + QByteArray(10, '\xEE'));
    EXPECT_FALSE(m_hex->Modified());
    whileOpen([](const QDialog* form) {
        click(form, u"Option1(1)"_qs);
        set(form, u"Text3"_qs, u"ee"_qs);
        click(form, u"Option1(0)"_qs);
        EXPECT_EQ(textOf(form, u"Text3"_qs), QString());
        click(form, u"Option1(1)"_qs);
        set(form, u"Text1"_qs, u"0"_qs);
        set(form, u"Text2"_qs, u"5"_qs);
        set(form, u"Text3"_qs, u"1FF"_qs);
        click(form, u"Command1"_qs);
    });
    m_hex->SelectBlock();
    EXPECT_EQ(workingBytes().left(10), someBytes(10));
}

TEST_F(HexForms, CarryTheirAnswerOnTheirFirstLabel) {
    struct Case {
        void (ucHex::*open)();
        const char* label;
        QStringList filled;
    };
    open(someBytes(400));
    const Case cases[] = {{&ucHex::cmdGoOffset, "Label1", {u"Text1"_qs}},
                          {&ucHex::cmdGoPage, "Label1", {u"Text1"_qs}},
                          {&ucHex::SelectBlock, "Label1(0)", {u"Text1"_qs, u"Text2"_qs}}};
    for (const Case& one : cases) {
        for (const auto& [button, answer] :
             {std::pair(u"Command1"_qs, u"OK"_qs), std::pair(u"Command2"_qs, u"CANCEL"_qs)}) {
            whileOpen([&, pressed = button, expected = answer](const QDialog* form) {
                for (const QString& name : one.filled)
                    set(form, name, u"1"_qs);
                const auto* label = form->findChild<QLabel*>(QString::fromLatin1(one.label));
                ASSERT_NE(label, nullptr) << one.label;
                EXPECT_FALSE(label->property("Tag").isValid());
                click(form, pressed);
                EXPECT_EQ(label->property("Tag").toString(), expected);
                EXPECT_EQ(form->property("Tag").toString(), expected);
            });
            (m_hex.get()->*one.open)();
        }
    }
}

TEST_F(HexForms, OpenNothingWithoutAFile) {
    m_hex->cmdGoOffset();
    m_hex->cmdGoPage();
    m_hex->SelectBlock();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(HexForms, ConvertANumberFromTheBoxInUse) {
    frmConvert form;
    form.show();
    form.activateWindow();
    QApplication::processEvents();
    EXPECT_EQ(form.windowTitle(), u"Data Convertor"_qs);
    const auto type = [&](const QString& name, const QString& text) {
        form.findChild<QLineEdit*>(name)->setFocus();
        set(&form, name, text);
        return QStringList({textOf(&form, u"Text1"_qs), textOf(&form, u"Text2"_qs), textOf(&form, u"Text3"_qs),
                            textOf(&form, u"Text4"_qs)});
    };
    const QStringList full({u"255"_qs, u"FF"_qs, u"11111111"_qs, u"377"_qs});
    EXPECT_EQ(type(u"Text2"_qs, u"ff"_qs), full);
    EXPECT_EQ(type(u"Text4"_qs, u"3877"_qs), full);
    EXPECT_EQ(type(u"Text1"_qs, u"255"_qs), full);
    EXPECT_EQ(type(u"Text3"_qs, u"100000000"_qs), QStringList({u"256"_qs, u"100"_qs, u"100000000"_qs, u"400"_qs}));
    EXPECT_EQ(type(u"Text1"_qs, u"-"_qs), QStringList({u"-"_qs, QString(), QString(), QString()}));
    EXPECT_EQ(type(u"Text1"_qs, u"-1"_qs)[1], u"FFFFFFFF"_qs);
    EXPECT_EQ(type(u"Text2"_qs, QString()), QStringList({QString(), QString(), QString(), QString()}));
}

TEST_F(HexForms, ListTheCharactersOfAHalf) {
    frmAnsiTable form;
    form.show();
    QApplication::processEvents();
    EXPECT_EQ(form.windowTitle(), u"ANSI Table"_qs);
    auto* table = form.findChild<QWidget*>(u"Picture1"_qs);
    const auto cell = [&](int column, int row) {
        return table->grab()
            .toImage()
            .convertToFormat(QImage::Format_RGB32)
            .copy(column * 133 + 5 + 70, row * 24, 40, 18);
    };
    QImage empty(40, 18, QImage::Format_RGB32);
    empty.fill(Qt::white);
    EXPECT_EQ(cell(0, 0), empty);
    EXPECT_NE(cell(2, 2), empty);
    const QImage letter = cell(2, 2);
    click(&form, u"Option1(1)"_qs);
    EXPECT_NE(cell(2, 2), letter);
    click(&form, u"Option1(0)"_qs);
    EXPECT_EQ(cell(2, 2), letter);
    EXPECT_EQ(form.findChild<QScrollArea*>(u"Picture2"_qs)->widget(), table);
}
