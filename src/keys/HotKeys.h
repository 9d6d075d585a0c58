#pragma once

#include "keys/HotKey.h"

#include <QList>

#include <optional>

class RegistryStore;

/// Which hot key stands for which command: the one table of the program, owned by the shell. Macro n, from 1 to 10, is
/// the command 213 + n.
class HotKeys {
 public:
    struct Binding {
        int command = 0;
        HotKey hotKey;

        bool operator==(const Binding&) const = default;
    };

    static constexpr int MacroCommandBase = 213;
    static constexpr int Macros = 10;

    explicit HotKeys(QList<Binding> defaults = {});

    const QList<Binding>& bindings() const { return m_bindings; }
    bool operator==(const HotKeys&) const = default;
    /// The hot keys of a command, oldest first.
    QList<HotKey> hotKeysOf(int command) const;
    /// The bindings that a new hot key would push out.
    QList<Binding> collisionsOf(const HotKey& hotKey) const;

    /// Adds a hot key, in place of those it collides with. One without a first key is not taken.
    bool bind(int command, const HotKey& hotKey);
    void remove(const HotKey& hotKey);
    void reset();
    /// The hot keys of one command as they were from the start; they push out what they collide with.
    void reset(int command);
    /// Whether a hot key begins with the stroke.
    bool hasFirst(const HotKeyStroke& stroke) const;

    /// The text of the first hot key of macro `n`, "1" to "10"; empty: it has none, or there is no such macro.
    QString HotKeyText(const QString& n) const;

    /// Takes what save() left; what can't be read is passed over, and without anything saved the defaults stand.
    void load(RegistryStore& store);
    void save(RegistryStore& store) const;

 private:
    QList<Binding> m_defaults;
    QList<Binding> m_bindings;
};

/// Follows the strokes of a person through the hot keys. Owned by whoever gets the keys; the table outlives it.
class HotKeyStrokes {
 public:
    struct Answer {
        bool taken = false;          ///< the key is spent, whether or not it ended a hot key
        std::optional<int> command;  ///< what is to be run
    };

    explicit HotKeyStrokes(const HotKeys& hotKeys) : m_hotKeys(hotKeys) {}

    /// A stroke that goes on with no hot key begins anew, so that it may be the first of another.
    Answer press(const HotKeyStroke& stroke);
    /// Whether a second stroke is waited for.
    bool isWaiting() const { return !m_first.isEmpty(); }
    /// The stroke behind which it is to come; empty: none.
    const HotKeyStroke& first() const { return m_first; }
    /// Whether the stroke, as the second one, ends a hot key.
    bool ends(const HotKeyStroke& second) const;
    /// Forgets a first stroke: the focus went elsewhere, or the mouse was used.
    void forget() { m_first = {}; }

 private:
    const HotKeys& m_hotKeys;
    HotKeyStroke m_first;
};
