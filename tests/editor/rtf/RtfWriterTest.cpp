#include "editor/rtf/RtfWriter.h"

#include <QTextDocument>

#include <gtest/gtest.h>

namespace {

std::string bodyOf(const char* text) {
    RtfWriter writer(u"Mono"_qs, 10);
    writer.append(QString::fromUtf8(text), {});
    const std::string rtf = writer.finished().toStdString();
    const std::string begin = "{\\cf1 ";
    const std::size_t from = rtf.find(begin) + begin.size();
    return rtf.substr(from, rtf.rfind("}}") - from);
}

}  // namespace

TEST(RtfWriter, NamesFontAndSize) {
    const RtfWriter writer(QString::fromUtf8("Mö{n}o;\\"), 12);
    EXPECT_EQ(writer.finished(),
              "{\\rtf1\\ansi\\uc1\\deff0{\\fonttbl{\\f0\\fmodern M\\u246?no;}}{\\colortbl;}\n\\f0\\fs24 }\n");
}

TEST(RtfWriter, EscapesWhatItsFormUses) {
    EXPECT_EQ(bodyOf("a\\b{c}"), "a\\\\b\\{c\\}");
    EXPECT_EQ(bodyOf("a\tb"), "a\\tab b");
}

TEST(RtfWriter, EachLineEndIsOneParagraph) {
    EXPECT_EQ(bodyOf("a\nb\r\nc\rd"), "a\\par\nb\\par\nc\\par\nd");
    RtfWriter writer(u"Mono"_qs, 10);
    writer.append(u"a\r", {});
    writer.append(u"\nb", {});
    EXPECT_EQ(writer.finished().count("\\par"), 1);
}

TEST(RtfWriter, WritesOtherCharactersByTheirUnits) {
    EXPECT_EQ(bodyOf("ä€"), "\\u228?\\u8364?");
    EXPECT_EQ(bodyOf("\U0001F600"), "\\u-10179?\\u-8704?");
}

TEST(RtfWriter, ListsEachColourOnce) {
    RtfWriter writer(u"Mono"_qs, 10);
    writer.append(u"a", {QColor(1, 2, 3), true, false});
    writer.append(u"b", {QColor(4, 5, 6), false, true});
    writer.append(u"c", {QColor(1, 2, 3), false, false});
    const QByteArray rtf = writer.finished();
    EXPECT_TRUE(rtf.contains("{\\colortbl;\\red1\\green2\\blue3;\\red4\\green5\\blue6;}"));
    EXPECT_TRUE(rtf.contains("{\\cf1\\b a}{\\cf2\\i b}{\\cf1 c}"));
}
