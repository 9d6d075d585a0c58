#include "workspace/project/ProjectFile.h"

#include "settings/SettingText.h"
#include "settings/files/OwnTextFile.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ProjectFile {

namespace {

struct MarkerRow {
    Section section;
    QStringView marker;
};

constexpr std::array Markers = {
    MarkerRow{Section::ExplorerStatus, u"<<EXPLORER STATUS>>"},
    MarkerRow{Section::ProjectItems, u"<<PROJECT FILE>>"},
    MarkerRow{Section::Explorer, u"<<EXPLORER>>"},
    MarkerRow{Section::TabPosition, u"<<TAB POSITION>>"},
    MarkerRow{Section::OpenFiles, u"<<OPEN FILE>>"},
};

constexpr QStringView MarkerStart = u"<<";
constexpr QChar Tab = u'\t';

Section sectionOf(const QString& line) {
    const auto found = std::ranges::find(Markers, QStringView(line), &MarkerRow::marker);
    return found == Markers.end() ? Section::None : found->section;
}

std::optional<int> readTwips(const QString& text) {
    bool isNumber = false;
    const double number = text.trimmed().toDouble(&isNumber);
    // Far beyond any screen, and well inside the range of the type.
    constexpr double Farthest = 1'000'000;
    if (!isNumber || !(std::abs(number) <= Farthest))
        return std::nullopt;
    return static_cast<int>(std::lround(number));
}

}  // namespace

QString marker(Section section) {
    const auto found = std::ranges::find(Markers, section, &MarkerRow::section);
    return found == Markers.end() ? QString() : found->marker.toString();
}

Section Reader::take(const QString& line) {
    if (line.trimmed().isEmpty())
        return Section::None;
    if (line.startsWith(MarkerStart)) {
        m_section = sectionOf(line);
        return Section::None;
    }
    return m_section;
}

std::optional<QString> itemLine(const ProjectItem& item) {
    if (!OwnTextFile::isOneField(item.key))
        return std::nullopt;
    return item.type + Tab + item.key;
}

std::optional<ProjectItem> readItem(const QString& line) {
    const QStringList fields = line.split(Tab);
    if (fields.size() < 2)
        return std::nullopt;
    return ProjectItem{fields[0], fields[1]};
}

QString statusLine(const PanelStatus& status) {
    return (status.visible ? u"True"_qs : u"False"_qs) + Tab + QString::number(status.left.value_or(0));
}

std::optional<PanelStatus> readStatus(const QString& line) {
    const QStringList fields = line.split(Tab);
    if (fields.size() < 2)
        return std::nullopt;
    const auto visible = SettingText::toBoolean(fields[0]);
    return visible ? std::optional<PanelStatus>({*visible, readTwips(fields[1])}) : std::nullopt;
}

QStringList lines(const ProjectContent& content) {
    return QStringList{marker(Section::ExplorerStatus), statusLine(content.status)} + content.panel +
           QStringList{marker(Section::OpenFiles)} + content.openFiles;
}

}  // namespace ProjectFile
