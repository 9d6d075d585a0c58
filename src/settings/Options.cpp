#include "settings/Options.h"

#include "settings/SettingText.h"
#include "settings/Settings.h"

namespace {

/// Parses a text into its variable; false when it is not valid.
using Take = bool (*)(Options&, const QString&);

struct Reading {
    const char* key;
    Take take;
};

template <auto Member, auto Parse>
bool takeParsed(Options& options, const QString& text) {
    const auto value = Parse(text);
    if (value)
        options.*Member = *value;
    return value.has_value();
}

template <bool Options::*Member>
bool takeOne(Options& options, const QString& text) {
    options.*Member = text == QLatin1String("1");
    return true;
}

template <bool Options::*Member>
bool takeNumberOne(Options& options, const QString& text) {
    const std::optional<double> number = SettingText::toNumber(text);
    if (number)
        options.*Member = *number == 1;
    return number.has_value();
}

bool takeFontName(Options& options, const QString& text) {
    options.FontName = text;
    return true;
}

/// A size below one point shows no letter, so it is not valid.
bool takeFontSize(Options& options, const QString& text) {
    const std::optional<qint16> points = SettingText::toShort(text);
    if (!points || *points < 1)
        return false;
    options.FontSize = *points;
    return true;
}

constexpr Reading FirstGroup[] = {
    {"FontName", takeFontName},
    {"FontSize", takeFontSize},
    {"FileModifyNotice", takeParsed<&Options::FileModifyNotice, SettingText::toBoolean>},
    {"CheckHexModeWhenOpen", takeParsed<&Options::CheckHexModeWhenOpen, SettingText::toBoolean>},
    {"ClearRedoAfterSave", takeOne<&Options::ClearRedoAfterSave>},
    {"ToolbarWholeWord", takeOne<&Options::WholeWord>},
    {"ToolbarRegExp", takeOne<&Options::RegExpOn>},
    {"ToolbarCase", takeOne<&Options::CaseSensitiveOn>},
    {"ContinueSearch", takeOne<&Options::ContinueSearch>},
};

constexpr Reading SecondGroup[] = {
    {"LoadLastFolder", takeOne<&Options::LoadLastFolder>},
    {"DocumentWorkingFolder", takeOne<&Options::DocumentWorkingFolder>},
    {"ShowFullPath", takeOne<&Options::ShowFullPath>},
    {"UseFileIcon", takeOne<&Options::UseFileIcon>},
    {"RowHighlightColor", takeParsed<&Options::RowHighlightColor, SettingText::toLong>},
    {"RowHighlight", takeNumberOne<&Options::RowHighlight>},
};

/// A missing setting without a default in the table leaves its variable unchanged.
bool read(Settings& settings, const Reading& reading, Options& options) {
    const QString text = settings.forFrame(QLatin1String(reading.key));
    return text.isEmpty() || reading.take(options, text);
}

}  // namespace

void loadFirstOptions(Settings& settings, Options& options) {
    for (const Reading& reading : FirstGroup)
        read(settings, reading, options);
}

void LoadOptions(Settings& settings, Options& options) {
    for (const Reading& reading : SecondGroup) {
        if (!read(settings, reading, options))
            return;
    }
}
