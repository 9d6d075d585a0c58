#include "hex/HexFormFixture.h"
#include "hex/forms/frmAnsiTable.h"
#include "hex/forms/frmBlock.h"
#include "hex/forms/frmConvert.h"
#include "hex/forms/frmGotoOffSet.h"
#include "hex/forms/frmGotoPage.h"
#include "widgets/KeyFilterEdit.h"

#include <QClipboard>
#include <QGroupBox>
#include <QGuiApplication>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>

#include <algorithm>
#include <utility>

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

TEST_F(HexForms, TakeNoLettersBeyondFAndNoSigns) {
    open(someBytes(1000));
    struct Case {
        void (ucHex::*open)();
        QString field;
        QString passed;
    };
    const Case cases[] = {{&ucHex::cmdGoOffset, u"Text1"_qs, u"12AF0"_qs},
                          {&ucHex::cmdGoPage, u"Text1"_qs, u"120"_qs},
                          {&ucHex::SelectBlock, u"Text1"_qs, u"120"_qs},
                          {&ucHex::SelectBlock, u"Text2"_qs, u"120"_qs},
                          {&ucHex::SelectBlock, u"Text3"_qs, u"12AF0"_qs}};
    for (const Case& one : cases) {
        whileOpen([&](const QDialog* form) {
            if (one.field == u"Text3"_qs)
                click(form, u"Option1(1)"_qs);
            set(form, one.field, u"1g-2 aF.z&0"_qs);
            EXPECT_EQ(textOf(form, one.field), one.passed);
            QTest::keyClick(form->findChild<QLineEdit*>(one.field), Qt::Key_Backspace);
            EXPECT_EQ(textOf(form, one.field), one.passed.chopped(1));
        });
        (m_hex.get()->*one.open)();
    }
}

TEST_F(HexForms, OfABlockHaveTheirCaptions) {
    open(someBytes(400));
    whileOpen([](const QDialog* form) {
        const std::pair<QString, QString> captions[] = {{u"Option1(0)"_qs, u"Copi&ar para o Clipboard"_qs},
                                                        {u"Option1(1)"_qs, u"P&reencher com:"_qs},
                                                        {u"Option1(2)"_qs, u" Fill Blocks With "_qs},
                                                        {u"Option2(0)"_qs, u"Hex Values"_qs},
                                                        {u"Option2(1)"_qs, u"C Source"_qs},
                                                        {u"Option2(2)"_qs, u"Pascal Source"_qs},
                                                        {u"Command2"_qs, u"Cancel"_qs}};
        for (const auto& [name, caption] : captions) {
            EXPECT_EQ(form->findChild<QAbstractButton*>(name)->text(), caption);
        }
        EXPECT_EQ(form->findChild<QLabel*>(u"Label1(0)"_qs)->text(), u"First Offset (Dec):"_qs);
        EXPECT_EQ(form->findChild<QLabel*>(u"Label1(1)"_qs)->text(), u"Last Offset (Dec):"_qs);
        EXPECT_EQ(form->findChild<QGroupBox*>(u"Frame2"_qs)->title(), u"Copy Block to Clipboard"_qs);
        const auto* byte = form->findChild<QLineEdit*>(u"Text3"_qs);
        EXPECT_EQ(byte->palette().color(QPalette::Base), QColor(0xC0, 0xC0, 0xC0));
        EXPECT_FALSE(byte->isEnabled());
        click(form, u"Option1(1)"_qs);
        EXPECT_EQ(byte->palette().color(QPalette::Base), form->palette().color(QPalette::Base));
        EXPECT_TRUE(byte->hasFocus());
    });
    m_hex->SelectBlock();
}

TEST_F(HexForms, CopyABlockByTheThirdChoiceToo) {
    open(someBytes(400));
    whileOpen([](const QDialog* form) {
        click(form, u"Option1(1)"_qs);
        click(form, u"Option1(2)"_qs);
        EXPECT_FALSE(form->findChild<QGroupBox*>(u"Frame1"_qs)->isEnabled());
        set(form, u"Text1"_qs, u"1"_qs);
        set(form, u"Text2"_qs, u"2"_qs);
        click(form, u"Command1"_qs);
    });
    m_hex->SelectBlock();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"01 02 "_qs);
    EXPECT_EQ(workingBytes(), someBytes(400));
}

namespace {

/// Texts that are no sensible number; a person can paste them where they can't be typed.
QStringList badTexts() {
    return {QString(),
            u" "_qs,
            u"-1"_qs,
            u"-0"_qs,
            u"-99999999999999999999"_qs,
            u"2147483646"_qs,
            u"2147483647"_qs,
            u"2147483648"_qs,
            u"4294967296"_qs,
            u"9223372036854775808"_qs,
            u"99999999999999999999999"_qs,
            u"1e400"_qs,
            u"1.5"_qs,
            u"nan"_qs,
            u"inf"_qs,
            u"-inf"_qs,
            u"0x10"_qs,
            u"&H"_qs,
            u"&HFFFFFFFF"_qs,
            u"&H1FFFFFFFF"_qs,
            u"abc"_qs,
            u"xyz"_qs,
            u"12 34"_qs,
            u"\u0661\u0662"_qs,
            u"\U0001F600"_qs,
            QString(QChar(0)),
            u"\xD800"_qs,
            QString(100'000, u'9'),
            QString(100'000, u'F'),
            QString(100'000, u'x')};
}

}  // namespace

/// Whatever the text of a field, the place is within the file and the bytes do not change.
TEST_F(HexForms, StandAnyTextInEveryField) {
    const QByteArray bytes = someBytes(1000);
    open(bytes);
    struct Case {
        void (ucHex::*open)();
        QString choice;  ///< clicked first
        QString field;
        QString other;  ///< filled with a number
    };
    const Case cases[] = {{&ucHex::cmdGoOffset, u"Option1(0)"_qs, u"Text1"_qs, {}},
                          {&ucHex::cmdGoOffset, u"Option1(1)"_qs, u"Text1"_qs, {}},
                          {&ucHex::cmdGoPage, {}, u"Text1"_qs, {}},
                          {&ucHex::SelectBlock, u"Option1(0)"_qs, u"Text1"_qs, u"Text2"_qs},
                          {&ucHex::SelectBlock, u"Option1(0)"_qs, u"Text2"_qs, u"Text1"_qs}};
    for (const QString& text : badTexts()) {
        for (const Case& one : cases) {
            whileOpen([&](const QDialog* form) {
                if (!one.choice.isEmpty())
                    click(form, one.choice);
                if (!one.other.isEmpty())
                    form->findChild<QLineEdit*>(one.other)->setText(u"3"_qs);
                form->findChild<QLineEdit*>(one.field)->setText(text);
                click(form, u"Command1"_qs);
            });
            (m_hex.get()->*one.open)();
            for (const QString& told : std::exchange(m_prompts.messages, {})) {
                EXPECT_EQ(told, u"Please enter numeric value"_qs);
            }
            ASSERT_NO_FATAL_FAILURE(expectShown(bytes)) << text.left(30).toStdString();
            EXPECT_GE(pointer(), 1);
            EXPECT_LE(pointer(), bytes.size() + 1);
        }
    }
    EXPECT_EQ(workingBytes(), bytes);
    EXPECT_FALSE(m_hex->Modified());
}

TEST_F(HexForms, FillWithNothingButAByte) {
    const QByteArray bytes = someBytes(1000);
    open(bytes);
    for (const QString& text : badTexts()) {
        for (const bool isByte : {true, false}) {
            whileOpen([&](const QDialog* form) {
                click(form, u"Option1(1)"_qs);
                form->findChild<QLineEdit*>(u"Text1"_qs)->setText(isByte ? u"3"_qs : text);
                form->findChild<QLineEdit*>(u"Text2"_qs)->setText(u"1"_qs);
                form->findChild<QLineEdit*>(u"Text3"_qs)->setText(isByte ? text : u"100"_qs);
                click(form, u"Command1"_qs);
            });
            m_hex->SelectBlock();
        }
    }
    EXPECT_EQ(workingBytes(), bytes);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(HexForms, ConvertAnyTextToNumbersOrToNothing) {
    frmConvert form;
    form.show();
    form.activateWindow();
    QApplication::processEvents();
    const QStringList names({u"Text1"_qs, u"Text2"_qs, u"Text3"_qs, u"Text4"_qs});
    for (const QString& name : names) {
        auto* box = form.findChild<QLineEdit*>(name);
        box->setFocus();
        for (const QString& text : badTexts()) {
            box->setText(u"1"_qs);
            box->setText(text);
            const QString left = box->text();  // a line has a longest text
            for (const QString& other : names) {
                const QString shown = textOf(&form, other);
                const bool isNumber = std::all_of(shown.begin(), shown.end(), [&](QChar c) {
                    return HexText::nibbleOf(c) >= 0 || (other == names.first() && u"-+.E"_qs.contains(c));
                });
                EXPECT_TRUE(other == name ? shown == left : isNumber)
                    << name.toStdString() << ' ' << text.left(30).toStdString() << ' ' << shown.toStdString();
            }
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

TEST_F(HexForms, StripeTheTableAndColourItsParts) {
    frmAnsiTable form;
    form.show();
    QApplication::processEvents();
    auto* table = form.findChild<QWidget*>(u"Picture1"_qs);
    const QImage picture = table->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QColor stripe(0xB5, 0xB6, 0xC4);
    const int right = table->width() - 2;
    for (int row = 0; row < 32; ++row) {
        const QColor ground = row % 2 == 1 ? stripe : QColor(Qt::white);
        EXPECT_EQ(picture.pixelColor(right, 24 * row), ground) << row;
        EXPECT_EQ(picture.pixelColor(right, 24 * row + 19), ground) << row;
    }
    EXPECT_EQ(picture.pixelColor(right, 19), QColor(Qt::white));
    EXPECT_EQ(picture.pixelColor(right, 20), stripe);
    EXPECT_EQ(picture.pixelColor(right, 43), stripe);
    EXPECT_EQ(picture.pixelColor(right, 44), QColor(Qt::white));
    // The darkest pixel of a part is that of its strokes.
    const auto ink = [&](int left, int width) {
        QColor darkest(Qt::white);
        for (int y = 24 * 2; y < 24 * 2 + 18; ++y) {
            for (int x = left; x < left + width; ++x) {
                if (picture.pixelColor(x, y).lightness() < darkest.lightness())
                    darkest = picture.pixelColor(x, y);
            }
        }
        return darkest;
    };
    const int cell = 2 * 133 + 5;
    const int letter = QFontMetrics(table->font()).horizontalAdvance(u'0');
    const QColor hexInk = ink(cell, 2 * letter);
    const QColor decimalInk = ink(cell + 4 * letter, 3 * letter);
    const QColor characterInk = ink(cell + 9 * letter, letter);
    EXPECT_TRUE(hexInk.red() > hexInk.green() && hexInk.red() > hexInk.blue()) << hexInk.name().toStdString();
    EXPECT_TRUE(decimalInk.green() > decimalInk.red() && decimalInk.green() > decimalInk.blue());
    EXPECT_TRUE(characterInk.blue() > characterInk.red() && characterInk.blue() > characterInk.green());
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
    auto* view = form.findChild<QScrollArea*>(u"Picture2"_qs);
    EXPECT_EQ(view->widget(), table);
    EXPECT_EQ(view->verticalScrollBar()->objectName(), u"VScroll1"_qs);
    EXPECT_EQ(view->verticalScrollBar()->singleStep(), 24);
    EXPECT_EQ(view->verticalScrollBar()->maximum(), table->height() - view->viewport()->height());
    view->verticalScrollBar()->setValue(100);
    EXPECT_EQ(table->y(), -100);
    click(&form, u"Option1(1)"_qs);
    EXPECT_EQ(view->verticalScrollBar()->value(), 0);
}

TEST_F(HexForms, OfABlockFillNothingInALockedView) {
    open(someBytes(400));
    m_hex->setLocked(true);
    whileOpen([](const QDialog* form) {
        const auto* fill = form->findChild<QAbstractButton*>(u"Option1(1)"_qs);
        EXPECT_FALSE(fill->isEnabled());
        click(form, u"Option1(1)"_qs);
        EXPECT_FALSE(fill->isChecked());
        set(form, u"Text1"_qs, u"0"_qs);
        set(form, u"Text2"_qs, u"5"_qs);
        click(form, u"Command1"_qs);
    });
    m_hex->SelectBlock();
    EXPECT_EQ(workingBytes(), someBytes(400));
    EXPECT_EQ(m_hex->limitations(), QString());
}

TEST_F(HexForms, OfABlockGreyNothingBrighterThanTheirWindowInADarkTheme) {
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(42, 46, 50));
    dark.setColor(QPalette::Base, QColor(27, 30, 32));
    QWidget window;
    window.setPalette(dark);
    frmBlock form(false, &window);
    form.setPalette(dark);
    click(&form, u"Option1(1)"_qs);
    const auto* byte = form.findChild<QLineEdit*>(u"Text3"_qs);
    EXPECT_EQ(byte->palette().color(QPalette::Base), QColor(27, 30, 32));
    click(&form, u"Option1(0)"_qs);
    EXPECT_EQ(byte->palette().color(QPalette::Base), QColor(42, 46, 50));
}

TEST_F(HexForms, AreCancelledWhenTheViewIsHidden) {
    open(someBytes(400));
    select(2, 3);
    for (void (ucHex::*command)() : {&ucHex::cmdGoOffset, &ucHex::cmdGoPage, &ucHex::SelectBlock, &ucHex::cmdFindHex}) {
        whileOpen([this](QDialog* form) {
            if (auto* text = form->findChild<QLineEdit*>(u"Text1"_qs))
                text->setText(u"1"_qs);
            m_hex->hide();
            EXPECT_FALSE(form->isVisible());
        });
        (m_hex.get()->*command)();
        EXPECT_EQ(cursor(), 36);
        EXPECT_EQ(workingBytes(), someBytes(400));
        m_hex->show();
        activateView();
    }
}
