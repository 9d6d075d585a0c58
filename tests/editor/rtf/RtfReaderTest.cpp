#include "editor/Editor.h"
#include "editor/control/ControlFile.h"
#include "editor/control/RichText.h"
#include "editor/control/TextControl.h"
#include "editor/rtf/RtfReader.h"
#include "editor/rtf/RtfWriter.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace {

QString read(const char* rtf) {
    return plainTextOfRtf(QString::fromUtf8(rtf)).value_or(u"(none)"_qs);
}

}  // namespace

TEST(RtfReader, TakesTheTextAndLeavesItsLooks) {
    EXPECT_EQ(
        read("{\\rtf1\\ansi{\\fonttbl{\\f0 Courier;}}{\\colortbl;\\red1\\green2\\blue3;}\\f0\\fs20 one {\\b two}}"),
        u"one two"_qs);
    EXPECT_EQ(read("{\\rtf1{\\*\\generator someone;}{\\info{\\title none}}one}"), u"one"_qs);
    EXPECT_EQ(read("{\\rtf1 a{\\pict\\bin3 }}}}b}"), u"ab"_qs);
}

TEST(RtfReader, EndsLinesAndParagraphs) {
    EXPECT_EQ(read("{\\rtf1 a\\par\r\nb\\line c\\\nd\r\ne}"), u"a\nb\nc\nde"_qs);
    EXPECT_EQ(read("{\\rtf1 a\\tab b\\pard c}"), u"a\tbc"_qs);
}

TEST(RtfReader, KnowsCharacters) {
    EXPECT_EQ(read("{\\rtf1 \\'e4\\'80\\{\\}\\\\\\~x}"), QString::fromUtf8("ä€{}\\\u00A0x"));
    EXPECT_EQ(read("{\\rtf1\\uc1 \\u228?\\u-10179?\\u-8704?}"), QString::fromUtf8("ä😀"));
    EXPECT_EQ(read("{\\rtf1\\uc2\\u228 ab{\\uc0\\u228}x}"), QString::fromUtf8("ääx"));
    EXPECT_EQ(read("{\\rtf1\\u228\\'e4b}"), QString::fromUtf8("äb"));
    EXPECT_EQ(read("{\\rtf1 \\emdash\\lquote x\\rquote}"), QString::fromUtf8("—‘x’"));
    EXPECT_EQ(read("{\\rtf1 größe}"), QString::fromUtf8("größe"));
}

TEST(RtfReader, GivesNothingForWhatIsNoneOrBreaksOff) {
    for (const char* bad :
         {"", "one", "{one}", "{\\rtf1 one", "{\\rtf1 one\\", "{\\rtf1 \\'g0}", "{\\rtf1 \\'e", "\\rtf1"}) {
        EXPECT_FALSE(plainTextOfRtf(QString::fromUtf8(bad))) << bad;
    }
    EXPECT_FALSE(plainTextOfRtf(u"{\\rtf1"_qs + QString(5000, u'{') + QString(5001, u'}')));
    EXPECT_EQ(read("{\\rtf1 one} and more"), u"one"_qs);
}

TEST(RtfReader, GetsBackWhatTheWriterWrote) {
    std::mt19937 random(5);
    static const char* const parts[] = {"a", " ", "\\", "{", "}", "\t", "ä", "漢", "😀", "\n", "1", "-", "?", "'"};
    for (int round = 0; round < 300; ++round) {
        RtfWriter writer(u"Some Font"_qs, 10);
        QString text;
        for (unsigned run = random() % 4; run > 0; --run) {
            QString piece;
            for (unsigned length = random() % 20; length > 0; --length)
                piece += QString::fromUtf8(parts[random() % 14]);
            writer.append(piece, {QColor(static_cast<int>(random() % 256), 0, 0), random() % 2 == 0, false});
            text += piece;
        }
        ASSERT_EQ(plainTextOfRtf(QString::fromLatin1(writer.finished())), text) << round;
    }
}

TEST(RtfReader, SurvivesAnyTextBehindItsBeginning) {
    std::mt19937 random(6);
    static const char* const parts[] = {"\\",          "{", "}", "u",  "bin", "-",  "9",
                                        "99999999999", "'", "*", "uc", " ",   "par"};
    int read = 0;
    for (int round = 0; round < 3000; ++round) {
        QString rtf = u"{\\rtf1"_qs;
        for (unsigned length = random() % 30; length > 0; --length)
            rtf += QLatin1String(parts[random() % 13]);
        read += plainTextOfRtf(rtf) ? 1 : 0;
    }
    EXPECT_GT(read, 0);
    EXPECT_LT(read, 3000);
}

TEST(RtfReader, GivesTheControlItsText) {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    QSignalSpy failures(&control, &TextControl::CommandFailed);
    QSignalSpy changes(&control, &TextControl::Change);
    control.file().convertLineEnds(TextControl::SC_EOL_CRLF);
    EXPECT_TRUE(RichText::setText(control, u"{\\rtf1 one\\par two}"_qs));
    EXPECT_EQ(control.Text(), u"one\r\ntwo"_qs);
    EXPECT_EQ(changes.count(), 1);
    control.setSelection(0, 3);
    EXPECT_TRUE(RichText::setSelection(control, u"{\\rtf1 1}"_qs));
    EXPECT_EQ(control.Text(), u"1\r\ntwo"_qs);
    EXPECT_EQ(failures.count(), 0);
    EXPECT_FALSE(RichText::setText(control, u"two"_qs));
    EXPECT_FALSE(RichText::setSelection(control, u"two"_qs));
    EXPECT_EQ(control.Text(), u"1\r\ntwo"_qs);
    EXPECT_EQ(failures.count(), 2);
    control.Undo();
    EXPECT_EQ(control.Text(), u"one\r\ntwo"_qs);
}
