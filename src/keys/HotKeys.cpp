#include "keys/HotKeys.h"

#include "editor/control/CommandNumbers.h"
#include "keys/KeyNames.h"
#include "settings/registry/RegistryData.h"

#include <algorithm>
#include <utility>

namespace {

const QString Section = u"Software/Quillmark/Languages"_qs;
const QString Value = u"HotKeys"_qs;
constexpr int Fields = 5;
constexpr int AllModifiers = HotKeyStroke::Shift | HotKeyStroke::Ctrl | HotKeyStroke::Alt;

int codeOf(const HotKeyStroke& stroke) {
    return stroke.key.isEmpty() ? 0 : stroke.key.front().unicode();
}

QString lineOf(const HotKeys::Binding& binding) {
    const auto& [first, second] = binding.hotKey;
    return u"%1 %2 %3 %4 %5"_qs.arg(binding.command)
        .arg(first.modifiers)
        .arg(codeOf(first))
        .arg(second.modifiers)
        .arg(codeOf(second));
}

std::optional<HotKeyStroke> strokeOf(const QString& modifiers, const QString& code) {
    bool hasModifiers = false;
    bool hasCode = false;
    HotKeyStroke stroke;
    stroke.modifiers = modifiers.toUShort(&hasModifiers);
    const char16_t character = code.toUShort(&hasCode);
    if (!hasModifiers || !hasCode || stroke.modifiers > AllModifiers)
        return std::nullopt;
    if (character != 0)
        stroke.key = QChar(character);
    return stroke;
}

/// Returns the command of a stored line; 0 if there is no such command.
int commandOf(const QString& line) {
    const int command = line.section(u' ', 0, 0).toInt();
    return Command::infoOf(command) == nullptr ? 0 : command;
}

std::optional<HotKeys::Binding> bindingOf(const QString& line) {
    const QStringList fields = line.split(u' ');
    const int command = commandOf(line);
    if (fields.size() != Fields || command == 0)
        return std::nullopt;
    const auto first = strokeOf(fields[1], fields[2]);
    const auto second = strokeOf(fields[3], fields[4]);
    if (!first || !second)
        return std::nullopt;
    return HotKeys::Binding{command, {*first, *second}};
}

}  // namespace

HotKeys::HotKeys(QList<Binding> defaults) : m_defaults(std::move(defaults)), m_bindings(m_defaults) {}

QList<HotKey> HotKeys::hotKeysOf(int command) const {
    QList<HotKey> found;
    for (const Binding& binding : m_bindings) {
        if (binding.command == command)
            found.append(binding.hotKey);
    }
    return found;
}

QList<HotKeys::Binding> HotKeys::collisionsOf(const HotKey& hotKey) const {
    QList<Binding> found;
    for (const Binding& binding : m_bindings) {
        if (binding.hotKey.collidesWith(hotKey))
            found.append(binding);
    }
    return found;
}

bool HotKeys::bind(int command, const HotKey& hotKey) {
    if (hotKey.first.key.isEmpty())
        return false;
    m_bindings.removeIf([&](const Binding& binding) { return binding.hotKey.collidesWith(hotKey); });
    m_bindings.append({command, hotKey});
    return true;
}

void HotKeys::remove(const HotKey& hotKey) {
    m_bindings.removeIf([&](const Binding& binding) { return binding.hotKey == hotKey; });
}

void HotKeys::reset() {
    m_bindings = m_defaults;
}

void HotKeys::reset(int command) {
    m_bindings.removeIf([command](const Binding& binding) { return binding.command == command; });
    for (const Binding& binding : m_defaults) {
        if (binding.command == command)
            bind(command, binding.hotKey);
    }
}

bool HotKeys::hasFirst(const HotKeyStroke& stroke) const {
    return std::ranges::any_of(m_bindings, [&](const Binding& binding) { return binding.hotKey.first == stroke; });
}

QString HotKeys::HotKeyText(const QString& n) const {
    for (int macro = 1; macro <= Command::Macros; ++macro) {
        if (n != QString::number(macro))
            continue;
        const QList<HotKey> hotKeys = hotKeysOf(Command::MacroBase + macro);
        return hotKeys.isEmpty() ? QString() : KeyNames::text(hotKeys.front());
    }
    return {};
}

void HotKeys::load(RegistryStore& store) {
    reset();
    RegistryValue value;
    if (store.readValue(HKEY_CURRENT_USER, Section, Value, value) != RegistryCode::Ok ||
        value.type != RegistryType::StringList)
        return;
    m_bindings.clear();
    const QStringList lines = RegistryData::units(value).split(QChar(u'\0'), Qt::SkipEmptyParts);
    QList<int> damaged;
    for (const QString& line : lines) {
        if (const auto binding = bindingOf(line); binding && isUsable(*binding))
            bind(binding->command, binding->hotKey);
        else
            damaged.append(commandOf(line));
    }
    const bool concernsAll = lines.isEmpty() || damaged.contains(0);
    for (const Binding& binding : m_defaults) {
        if ((concernsAll || damaged.contains(binding.command)) && collisionsOf(binding.hotKey).isEmpty())
            m_bindings.append(binding);
    }
}

/// Tab and Backspace are needed for typing, but the commands that type them have them.
bool HotKeys::isUsable(const Binding& stored) const {
    return !stored.hotKey.first.key.isEmpty() &&
           (!KeyNames::isTyped(stored.hotKey.first) || m_defaults.contains(stored));
}

bool HotKeys::save(RegistryStore& store) const {
    QStringList lines;
    for (const Binding& binding : m_bindings)
        lines.append(lineOf(binding));
    return store.writeValue(HKEY_CURRENT_USER, Section, Value, RegistryData::fromTexts(lines)) == RegistryCode::Ok;
}

bool HotKeyStrokes::ends(const HotKeyStroke& second) const {
    const HotKey pressed{m_first, second};
    return isWaiting() && std::ranges::any_of(m_hotKeys.bindings(), [&](const HotKeys::Binding& binding) {
               return binding.hotKey == pressed;
           });
}

HotKeyStrokes::Answer HotKeyStrokes::press(const HotKeyStroke& stroke) {
    const bool waited = isWaiting();
    const HotKey pressed = waited ? HotKey{m_first, stroke} : HotKey{stroke, {}};
    forget();
    for (const HotKeys::Binding& binding : m_hotKeys.bindings()) {
        if (binding.hotKey == pressed)
            return {true, binding.command};
    }
    if (waited)
        return press(stroke);
    for (const HotKeys::Binding& binding : m_hotKeys.bindings()) {
        if (binding.hotKey.first == stroke) {
            m_first = stroke;
            return {true, std::nullopt};
        }
    }
    return {};
}
