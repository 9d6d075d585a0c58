#include "workspace/project/ProjectFile.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using namespace ProjectFile;

/// The sections that the reader gives to the lines, in their order.
std::vector<Section> sectionsOf(const QStringList& lines) {
    Reader reader;
    std::vector<Section> sections;
    for (const QString& line : lines)
        sections.push_back(reader.take(line));
    return sections;
}

Section sectionBehind(const QString& marker) {
    return sectionsOf({marker, u"text"_qs}).back();
}

}  // namespace

TEST(ProjectFileReading, EachMarkerOpensItsSection) {
    EXPECT_EQ(sectionBehind(u"<<EXPLORER STATUS>>"_qs), Section::ExplorerStatus);
    EXPECT_EQ(sectionBehind(u"<<PROJECT FILE>>"_qs), Section::ProjectItems);
    EXPECT_EQ(sectionBehind(u"<<EXPLORER>>"_qs), Section::Explorer);
    EXPECT_EQ(sectionBehind(u"<<TAB POSITION>>"_qs), Section::TabPosition);
    EXPECT_EQ(sectionBehind(u"<<OPEN FILE>>"_qs), Section::OpenFiles);
}

TEST(ProjectFileReading, LinesBeforeTheFirstMarkerAreDropped) {
    EXPECT_EQ(sectionsOf({u"FILE\t/a"_qs}).back(), Section::None);
}

TEST(ProjectFileReading, AMarkerIsComparedExactlyAndAnUnknownOneDropsItsLines) {
    for (const QString& marker :
         {u"<<open file>>"_qs, u"<<OPEN FILE>> "_qs, u"<<OPEN FILE"_qs, u"<<"_qs, u"<<NEWER>>"_qs}) {
        EXPECT_EQ(sectionsOf({u"<<PROJECT FILE>>"_qs, marker, u"FILE\t/a"_qs}).back(), Section::None)
            << marker.toStdString();
    }
}

TEST(ProjectFileReading, AnIndentedMarkerIsALineOfItsSection) {
    EXPECT_EQ(sectionsOf({u"<<PROJECT FILE>>"_qs, u" <<OPEN FILE>>"_qs}).back(), Section::ProjectItems);
}

TEST(ProjectFileReading, BlankLinesAreSkippedAnywhereAndEndNothing) {
    const std::vector<Section> sections = sectionsOf({u"<<PROJECT FILE>>"_qs, u""_qs, u" \t "_qs, u"FILE\t/a"_qs});
    EXPECT_EQ(sections, (std::vector{Section::None, Section::None, Section::None, Section::ProjectItems}));
}

TEST(ProjectFileReading, AnItemNeedsATabAndTakesTwoFields) {
    EXPECT_FALSE(readItem(u"FILE /a"_qs));
    EXPECT_EQ(readItem(u"FILE\t/a\t/b"_qs), (ProjectItem{u"FILE"_qs, u"/a"_qs}));
    EXPECT_EQ(readItem(u"\t"_qs), (ProjectItem{}));
    const QString withNul = u"/a"_qs + QChar(0) + u'b';
    EXPECT_EQ(readItem(u"FILE\t"_qs + withNul), (ProjectItem{u"FILE"_qs, withNul}));
}

TEST(ProjectFileReading, TheStatusNeedsATab) {
    EXPECT_FALSE(readStatus(u"True"_qs));
    EXPECT_EQ(readStatus(u"True\t3000"_qs), (PanelStatus{true, 3000}));
    EXPECT_EQ(readStatus(u"False\t3000"_qs), (PanelStatus{false, 3000}));
    EXPECT_EQ(readStatus(u"true\t3000.6"_qs), (PanelStatus{true, 3001}));
}

TEST(ProjectFileReading, TheStatusIsABooleanInAnyForm) {
    for (const char* shown : {"True", "TRUE", "tRue", " True ", "-1", "1", "2.5"}) {
        EXPECT_EQ(readStatus(QString::fromLatin1(shown) + u"\t15"_qs), (PanelStatus{true, 15})) << shown;
    }
    for (const char* hidden : {"False", "FALSE", " false", "0", "0.0"}) {
        EXPECT_EQ(readStatus(QString::fromLatin1(hidden) + u"\t15"_qs), (PanelStatus{false, 15})) << hidden;
    }
    for (const char* neither : {"", "Tru", "yes", "True False", "nan"}) {
        EXPECT_FALSE(readStatus(QString::fromLatin1(neither) + u"\t15"_qs)) << neither;
    }
}

TEST(ProjectFileReading, AWidthThatIsNoNumberIsNoWidth) {
    const QStringList widths{u""_qs, u"wide"_qs, u"nan"_qs, u"inf"_qs, u"1e300"_qs, u"99999999999999999999"_qs};
    for (const QString& width : widths) {
        EXPECT_EQ(readStatus(u"True\t"_qs + width), (PanelStatus{true, {}})) << width.toStdString();
    }
}

TEST(ProjectFileWriting, TheSectionsStandInTheirOrder) {
    const ProjectContent content{
        {true, 3000}, {u"<<PROJECT FILE>>"_qs, u"FILE\t/a"_qs, u"<<EXPLORER>>"_qs, u""_qs}, {u"/a\tTrue"_qs}};
    EXPECT_EQ(lines(content),
              (QStringList{u"<<EXPLORER STATUS>>"_qs, u"True\t3000"_qs, u"<<PROJECT FILE>>"_qs, u"FILE\t/a"_qs,
                           u"<<EXPLORER>>"_qs, u""_qs, u"<<OPEN FILE>>"_qs, u"/a\tTrue"_qs}));
}

TEST(ProjectFileWriting, AKeyThatWouldBreakItsLineIsLeftOut) {
    EXPECT_EQ(itemLine({u"FILE"_qs, u"/a b"_qs}), u"FILE\t/a b"_qs);
    const QStringList keys{u"/a\tb"_qs, u"/a\nb"_qs, u"/a\rb"_qs};
    for (const QString& key : keys) {
        EXPECT_FALSE(itemLine({u"FILE"_qs, key}));
    }
}

TEST(ProjectFileWriting, WhatIsWrittenIsReadBack) {
    std::mt19937 random(11);
    const QString letters = u"abcÄß語 <>\"'./-_\U0001F600"_qs;
    for (int round = 0; round < 2000; ++round) {
        const PanelStatus status{random() % 2 == 0, static_cast<int>(random() % 40000)};
        EXPECT_EQ(readStatus(statusLine(status)), status);
        QString key = u"/"_qs;
        for (unsigned length = random() % 20; length > 0; --length)
            key += letters[static_cast<qsizetype>(random() % static_cast<unsigned>(letters.size()))];
        const ProjectItem item{random() % 2 == 0 ? u"FILE"_qs : u"FOLDER"_qs, key};
        EXPECT_EQ(readItem(*itemLine(item)), item);
    }
}
