#include "editor/profile/ControlProfile.h"

#include "editor/control/ControlBraces.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlMouse.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "settings/registry/RegistryData.h"
#include "settings/registry/RegistryStore.h"
#include "settings/registry/modRegistry.h"
#include "widgets/StoredColour.h"

#include <iterator>

namespace {

constexpr qint32 LargestColour = 0xFFFFFF;

/// A property: its name in the store, the numbers it may have, and where a control keeps it.
struct Row {
    const char* name;
    qint32 smallest;
    qint32 largest;
    std::optional<qint32> (*ask)(const TextControl& control);
    void (*put)(TextControl& control, std::optional<qint32> value);
};

/// Held by a part of the control.
template <auto Part, auto Value, auto Set>
constexpr Row flag(const char* name) {
    return {name, 0, 1,
            [](const TextControl& control) -> std::optional<qint32> { return ((control.*Part)().*Value)() ? 1 : 0; },
            [](TextControl& control, std::optional<qint32> value) {
                auto& part = (control.*Part)();
                if (value && (*value != 0) != (part.*Value)())
                    (part.*Set)(*value != 0);
            }};
}

/// Without a value: the desktop's colour.
template <ControlLook::Element Element>
constexpr Row colour(const char* name) {
    return {name, 0, LargestColour,
            [](const TextControl& control) -> std::optional<qint32> {
                const QColor own = control.look().elementColour(Element);
                if (!own.isValid())
                    return std::nullopt;
                return StoredColour::numberOf(own);
            },
            [](TextControl& control, std::optional<qint32> value) {
                const QColor wanted = value ? StoredColour::colourOf(*value) : QColor();
                if (wanted != control.look().elementColour(Element))
                    control.look().setElementColour(Element, wanted);
            }};
}

constexpr Row Rows[] = {
    flag<&TextControl::look, &ControlLook::WordWrap, &ControlLook::setWordWrap>("WordWrap"),
    flag<&TextControl::look, &ControlLook::DisplayWhitespace, &ControlLook::setDisplayWhitespace>("DisplayWhitespace"),
    flag<&TextControl::lineNumbers, &ControlLineNumbers::LineNumbering, &ControlLineNumbers::setLineNumbering>(
        "LineNumbering"),
    flag<&TextControl::look, &ControlLook::DisplayLeftMargin, &ControlLook::setDisplayLeftMargin>("DisplayLeftMargin"),
    flag<&TextControl::braces, &ControlBraces::BraceMatching, &ControlBraces::setBraceMatching>("BraceMatching"),
    flag<&TextControl::typing, &ControlTyping::BlanksForTabs, &ControlTyping::setBlanksForTabs>("BlanksForTabs"),
    flag<&TextControl::typing, &ControlTyping::AutoIndent, &ControlTyping::setAutoIndent>("AutoIndent"),
    flag<&TextControl::mouse, &ControlMouse::DragDrop, &ControlMouse::setDragDrop>("DragDrop"),
    {"TabWidth", 1, ControlTyping::LargestTabWidth,
     [](const TextControl& control) -> std::optional<qint32> { return control.typing().TabWidth(); },
     [](TextControl& control, std::optional<qint32> value) {
         control.typing().setTabWidth(value.value_or(control.typing().TabWidth()));
     }},
    colour<ControlLook::BackgroundElement>("BackgroundColor"),
    colour<ControlLook::LeftMarginElement>("LeftMarginColor"),
    colour<ControlLook::RowHighlightElement>("RowHighlightColor"),
};

QString storedUnder() {
    return programKey() + u"/Languages"_qs;
}

std::optional<qint32> stored(RegistryStore& store, const Row& row) {
    RegistryValue value;
    const int code = store.readValue(HKEY_CURRENT_USER, storedUnder(), QString::fromLatin1(row.name), value);
    if (code != RegistryCode::Ok || value.type != RegistryType::Integer || value.data.size() != sizeof(qint32))
        return std::nullopt;
    const qint32 number = RegistryData::littleEndian(value);
    return number >= row.smallest && number <= row.largest ? std::optional(number) : std::nullopt;
}

int store(RegistryStore& store, const Row& row, std::optional<qint32> value) {
    const QString name = QString::fromLatin1(row.name);
    if (value)
        return store.writeValue(HKEY_CURRENT_USER, storedUnder(), name, RegistryData::fromInteger(*value));
    const int code = store.deleteValue(HKEY_CURRENT_USER, storedUnder(), name);
    return code == RegistryCode::NotFound ? RegistryCode::Ok : code;
}

}  // namespace

ControlProfile ControlProfile::of(const TextControl& control) {
    static_assert(std::size(Rows) == Count);
    ControlProfile profile;
    for (std::size_t row = 0; row < Count; ++row)
        profile.m_values[row] = Rows[row].ask(control);
    return profile;
}

void ControlProfile::applyTo(TextControl& control) const {
    for (std::size_t row = 0; row < Count; ++row)
        Rows[row].put(control, m_values[row]);
}

void ControlProfile::load(RegistryStore& store) {
    for (std::size_t row = 0; row < Count; ++row)
        m_values[row] = stored(store, Rows[row]);
}

int ControlProfile::save(RegistryStore& store) const {
    return store.runBatch([&] {
        for (std::size_t row = 0; row < Count; ++row) {
            if (const int code = ::store(store, Rows[row], m_values[row]); code != RegistryCode::Ok)
                return code;
        }
        return RegistryCode::Ok;
    });
}

void ControlProfile::takeChanges(const ControlProfile& before, const ControlProfile& after) {
    for (std::size_t row = 0; row < Count; ++row) {
        if (before.m_values[row] != after.m_values[row])
            m_values[row] = after.m_values[row];
    }
}
