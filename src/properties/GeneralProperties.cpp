#include "properties/GeneralProperties.h"

#include "properties/ShellServices.h"
#include "settings/Options.h"
#include "settings/SettingText.h"
#include "settings/Settings.h"

#include <optional>

namespace {

std::optional<bool> isOne(const QString& text) {
    return text == QLatin1String("1");
}

std::optional<bool> isNumberOne(const QString& text) {
    const std::optional<double> number = SettingText::toNumber(text);
    return number ? std::optional(*number == 1) : std::nullopt;
}

/// A setting that is on or off. It is read as the start of the program reads it.
struct BoxRow {
    const char* key;
    std::optional<bool> (*read)(const QString& text) = isOne;
    bool Options::*option = nullptr;  ///< used when the text is not valid
};

constexpr BoxRow Boxes[] = {
    {"LoadLastFiles"},
    {"DocumentWorkingFolder"},
    {"StartNewDocument"},
    {"ShowFullPath"},
    {"UseFileIcon"},
    {"LoadLastFolder"},
    {"RowHighlight", isNumberOne, &Options::RowHighlight},
    {"CheckHexModeWhenOpen", SettingText::toBoolean, &Options::CheckHexModeWhenOpen},
    {"ClearRedoAfterSave"},
    {"XPSkin"},
};
static_assert(std::size(Boxes) == GeneralValues::Boxes);

constexpr const char* Places[] = {"startup", "desktop", "program"};
static_assert(std::size(Places) == GeneralValues::Shortcuts);

QString placeOf(std::size_t shortcut) {
    return QString::fromLatin1(Places[shortcut]);
}

QString booleanText(bool on) {
    return on ? u"True"_qs : u"False"_qs;
}

}  // namespace

GeneralProperties::GeneralProperties(Settings& settings, Options& options, ShellServices& shell)
    : m_settings(settings), m_options(options), m_shell(shell) {}

GeneralValues GeneralProperties::load() {
    GeneralValues values;
    for (std::size_t i = 0; i < values.boxes.size(); ++i) {
        const std::optional<bool> on = Boxes[i].read(m_settings.forDialog(QLatin1String(Boxes[i].key)));
        values.boxes.at(i) = on ? *on : m_options.*Boxes[i].option;
    }
    const QString notice =
        m_settings.PropertyValue(u"FileModifyNotice"_qs, booleanText(m_options.FileModifyNotice), false);
    values.modifyNotice = SettingText::toBoolean(notice).value_or(m_options.FileModifyNotice);
    const QString colour =
        m_settings.PropertyValue(u"RowHighlightColor"_qs, QString::number(m_options.RowHighlightColor), false);
    values.highlightColour = SettingText::toLong(colour).value_or(m_options.RowHighlightColor);
    readDesktop(values);
    return values;
}

void GeneralProperties::readDesktop(GeneralValues& values) {
    for (std::size_t i = 0; i < values.shortcuts.size(); ++i)
        values.shortcuts.at(i) = m_shell.ShortcutExists(placeOf(i));
    m_contextMenu = m_settings.PropertyValue(u"register_handle"_qs, {}, false) == QLatin1String("Registered");
    values.contextMenu = m_contextMenu;
}

void GeneralProperties::save(const GeneralValues& values) {
    saveBoxes(values);
    m_shell.setThemeManifest(values.boxes[GeneralValues::XPSkin]);
    m_options.ClearRedoAfterSave = values.boxes[GeneralValues::ClearRedo];
    m_options.CheckHexModeWhenOpen = values.boxes[GeneralValues::CheckHex];
    m_settings.write(u"FileModifyNotice"_qs, booleanText(values.modifyNotice));
    m_options.FileModifyNotice = values.modifyNotice;
    saveHighlight(values);
    if (!values.boxes[GeneralValues::LoadLastFolder])
        m_settings.write(u"LastFolderName"_qs, {});
    saveShortcuts(values);
    if (values.contextMenu == m_contextMenu)
        return;
    m_contextMenu = values.contextMenu;
    if (values.contextMenu)
        m_shell.RegisterShellExtension();
    else
        m_shell.UnregisterShellExtension();
}

void GeneralProperties::saveBoxes(const GeneralValues& values) {
    for (std::size_t i = 0; i < values.boxes.size(); ++i)
        m_settings.write(QLatin1String(Boxes[i].key), values.boxes.at(i) ? u"1"_qs : u"0"_qs);
}

void GeneralProperties::saveHighlight(const GeneralValues& values) {
    const bool on = values.boxes[GeneralValues::RowHighlight];
    if (on) {
        m_settings.write(u"RowHighlightColor"_qs, QString::number(values.highlightColour));
        m_options.RowHighlightColor = values.highlightColour;
    }
    m_options.RowHighlight = on;
}

void GeneralProperties::saveShortcuts(const GeneralValues& values) {
    for (std::size_t i = 0; i < values.shortcuts.size(); ++i) {
        const QString place = placeOf(i);
        if (values.shortcuts.at(i) == m_shell.ShortcutExists(place))
            continue;
        if (values.shortcuts.at(i))
            m_shell.CreateAppShortcut(place);
        else
            m_shell.DeleteAppShortcut(place);
    }
}
