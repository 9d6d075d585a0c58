#include "keys/GlobalObject.h"

#include "editor/control/EditView.h"
#include "editor/control/EditorKeys.h"
#include "editor/windows/ControlPrompts.h"
#include "keys/KeyNames.h"
#include "keys/KeysPage.h"
#include "keys/MacroDialog.h"
#include "keys/MacroStore.h"

#include <QEventLoop>
#include <QKeyEvent>

#include <algorithm>

namespace {

bool isPlainEscape(const HotKeyStroke& stroke) {
    return stroke.modifiers == 0 && stroke.key == QChar(u'\x1b');
}

}  // namespace

GlobalObject::GlobalObject(Prompts& prompts, RegistryStore& registry, HotKeys& hotKeys, MacroStore& macros)
    : m_prompts(prompts), m_registry(registry), m_hotKeys(hotKeys), m_macros(macros), m_strokes(hotKeys) {}

/// Keys that can't be hot keys, such as Return, are not in the table; their commands can't be changed.
QList<HotKeys::Binding> GlobalObject::defaultHotKeys() {
    QList<HotKeys::Binding> defaults;
    for (const EditorKeys::Row& row : EditorKeys::all()) {
        const auto stroke = KeyNames::strokeOf(row.key, Qt::KeyboardModifiers(row.modifiers));
        const auto isIt = [&](const HotKeys::Binding& binding) { return binding.hotKey.first == *stroke; };
        if (stroke && std::ranges::none_of(defaults, isIt))
            defaults.append({row.command, {*stroke, {}}});
    }
    return defaults;
}

ControlGlobals::KeyAnswer GlobalObject::press(const QKeyEvent& key) {
    if (EditorKeys::isModifier(key))
        return {};
    const auto stroke = KeyNames::strokeOf(key);
    if (!stroke) {
        m_strokes.forget();
        return {};
    }
    if (m_strokes.isWaiting() && isPlainEscape(*stroke) && !m_strokes.ends(*stroke)) {
        m_strokes.forget();
        return {KeyAnswer::Taken, std::nullopt};
    }
    const HotKeyStrokes::Answer answer = m_strokes.press(*stroke);
    return {answer.taken ? KeyAnswer::Taken : KeyAnswer::Free, answer.command};
}

bool GlobalObject::isAwaited(const QKeyEvent& key) const {
    const auto stroke = KeyNames::strokeOf(key);
    return stroke && m_strokes.isWaiting() && (isPlainEscape(*stroke) || m_strokes.ends(*stroke));
}

bool GlobalObject::isBound(const QKeyEvent& key) const {
    const auto stroke = KeyNames::strokeOf(key);
    return isAwaited(key) || (stroke && m_hotKeys.hasFirst(*stroke));
}

QString GlobalObject::begunHotKey() const {
    return m_strokes.isWaiting() ? KeyNames::text(m_strokes.first()) : QString();
}

bool GlobalObject::mayRecord(QWidget& control) {
    if (m_macros.freeSlot())
        return true;
    ControlPrompts::tell(control,
                         tr("There are ten macros already. Delete one of them (Macro, Organize Marco) before you "
                            "record another."));
    return false;
}

void GlobalObject::keepMacro(QWidget& control, const QList<MacroStep>& steps) {
    auto* dialog = new MacroDialog(m_prompts, m_hotKeys, m_macros, steps, m_recorder.missedCount(), control);
    connect(dialog, &MacroDialog::kept, this, &GlobalObject::macrosChanged);
    dialog->open();
}

void GlobalObject::finishRecording(EditView& control) {
    if (m_recorder.follows(control)) {
        if (const QList<MacroStep> steps = m_recorder.finish(); !steps.isEmpty())
            keepMacro(control, steps);
    }
    const auto* dialog = control.findChild<MacroDialog*>(QString(), Qt::FindDirectChildrenOnly);
    if (dialog == nullptr || !dialog->isVisible())
        return;
    QEventLoop decision;
    connect(dialog, &QDialog::finished, &decision, &QEventLoop::quit);
    connect(dialog, &QObject::destroyed, &decision, &QEventLoop::quit);
    decision.exec();
}

QList<MacroStep> GlobalObject::macro(int n) const {
    const auto& macro = m_macros.macro(n - 1);
    return macro ? macro->steps() : QList<MacroStep>();
}

QList<ControlPage*> GlobalObject::propertyPages(QWidget& control) {
    auto* page = new KeysPage(m_registry, m_hotKeys, m_macros, control);
    connect(page, &KeysPage::applied, this, &GlobalObject::macrosChanged);
    return {page};
}
