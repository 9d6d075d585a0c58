#include "hex/HexFixture.h"
#include "hex/bytes/BlockExport.h"

#include <QClipboard>
#include <QGuiApplication>

#include <unistd.h>

#include <cerrno>

namespace {

using HexPlaces = HexFixture;

}  // namespace

TEST_F(HexPlaces, OfATypedOffsetAreOneByteBehindIt) {
    open(someBytes(1000));
    press(Qt::Key_Tab);
    m_hex->gotoOffset(0);
    EXPECT_EQ(cursor(), 2);
    EXPECT_TRUE(pane(1)->hasFocus());
    m_hex->gotoOffset(15);
    EXPECT_EQ(cursor(), 17);
}

TEST_F(HexPlaces, BehindTheEndShowTheLastRowAndLeaveTheCursorOnAByte) {
    open(someBytes(1000));
    select(0, 3);
    m_hex->gotoOffset(99999);
    EXPECT_EQ(pointer(), 993);
    EXPECT_EQ(grid(1)->cell(), (HexCell{0, 3}));
    m_hex->MoveFirstPage();
    select(9, 12);
    m_hex->gotoOffset(99999);
    EXPECT_EQ(cursor(), 1000);
}

TEST_F(HexPlaces, OfAPageBeginIt) {
    open(someBytes(640));
    m_hex->gotoPage(2);
    EXPECT_EQ(pointer(), 321);
    m_hex->gotoPage(99);
    EXPECT_EQ(pointer(), 641);
    EXPECT_EQ(info(4), u"3/2"_qs);
    for (int col = 0; col < 16; ++col) {
        EXPECT_EQ(grid(1)->Value(0, col), u"-1"_qs);
    }
    type(u"ff"_qs);
    EXPECT_EQ(workingBytes(), someBytes(640));
    m_hex->MovePreviousLine();
    EXPECT_EQ(pointer(), 625);
    expectShown(someBytes(640));
}

TEST_F(HexPlaces, OfABlockAreCopiedAsText) {
    open(someBytes(40));
    m_hex->copyBlock(Offset(2), Offset(1), BlockForm::HexValues);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"01 02 "_qs);
    m_hex->copyBlock(Offset(39), Offset(90), BlockForm::CSource);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"unsigned char data[1] = {\r\n\t0x27\r\n};"_qs);
}

TEST_F(HexPlaces, OfABlockTooLargeForTheClipboardAreRefused) {
    const QString path = file({});
    ASSERT_EQ(::truncate(path.toUtf8().constData(), 2147483647), 0);
    ASSERT_TRUE(m_hex->OpenFile(path));
    QGuiApplication::clipboard()->setText(u"before"_qs);
    m_hex->copyBlock(Offset(0), Offset(2147483646), BlockForm::CSource);
    EXPECT_EQ(m_prompts.messages, QStringList(SystemError::fromErrno(ENOMEM).description));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"before"_qs);
}

TEST_F(HexPlaces, BehindTheEndLoseNoByteThatIsTypedAfterwards) {
    for (const int key : {Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Down, Qt::Key_Right, Qt::Key_End}) {
        open(QByteArray(640, '\0'));
        m_hex->gotoPage(3);
        press(key);
        while (pointer() > 321)
            scroll(u"MovePreviousPage"_qs);
        pane(1)->setFocus();
        type(u"a"_qs);
        const qint64 typedAt = cursor();
        select(7, 8);
        EXPECT_TRUE(m_hex->Modified()) << key;
        EXPECT_EQ(workingBytes().at(typedAt - 1), '\x0A') << key;
    }
}

TEST_F(HexPlaces, OfABlockAreNotFilledInALockedView) {
    open("abcdef");
    m_hex->setLocked(true);
    m_hex->fillBlock(Offset(0), Offset(3), 0x20);
    EXPECT_EQ(workingBytes(), "abcdef");
    m_hex->copyBlock(Offset(0), Offset(0), BlockForm::HexValues);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"61 "_qs);
    m_hex->setLocked(false);
    m_hex->fillBlock(Offset(0), Offset(3), 0x20);
    EXPECT_EQ(workingBytes(), "    ef");
}

TEST_F(HexPlaces, LeaveTheKeyboardAloneWhileTheViewIsHidden) {
    QWidget window;
    auto* view = new ucHex(m_prompts, m_options, m_findState, &window);
    auto* other = new QWidget(&window);
    other->setFocusPolicy(Qt::StrongFocus);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(view->OpenFile(file(someBytes(400))));
    view->hide();
    other->setFocus();
    view->gotoOffset(5);
    view->gotoPage(1);
    view->cmdBookmark();
    view->FindDown(u"20 "_qs, 0);
    EXPECT_EQ(window.focusWidget(), other);
}
