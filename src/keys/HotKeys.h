#pragma once

#include "keys/HotKey.h"

#include <QList>

#include <optional>

class RegistryStore;

/// The table of hot keys and their commands (CommandNumbers.h). A plain value; the one that the program uses is owned
/// by the shell, and KeysPage edits a copy.
class HotKeys {
 public:
    struct Binding {
        int command = 0;
        HotKey hotKey;

        bool operator==(const Binding&) const = default;
    };

    explicit HotKeys(QList<Binding> defaults = {});

    const QList<Binding>& bindings() const { return m_bindings; }
    bool operator==(const HotKeys&) const = default;
    /// Returns the hot keys of a command, oldest first.
    QList<HotKey> hotKeysOf(int command) const;
    /// Returns the bindings that bind() would remove for a new hot key.
    QList<Binding> collisionsOf(const HotKey& hotKey) const;

    /// Adds a hot key and removes those that collide with it. Returns false, and changes nothing, if its first stroke
    /// has no key.
    bool bind(int command, const HotKey& hotKey);
    void remove(const HotKey& hotKey);
    void reset();
    /// Restores the default hot keys of one command, and removes those that collide with them.
    void reset(int command);
    /// Whether a hot key begins with this stroke.
    bool hasFirst(const HotKeyStroke& stroke) const;

    /// Returns the first hot key of macro `n` ("1" to "10") as text; empty if it has none, or there is no such macro.
    QString HotKeyText(const QString& n) const;

    /// Reads what save() wrote; if nothing was saved, the defaults are used. An entry that cannot be read, or whose
    /// first stroke is needed for typing, is skipped, and its command has its default hot keys, unless others have them
    /// by now. If even its command is unknown, that holds for all commands; an empty list counts as such an entry.
    void load(RegistryStore& store);
    /// Returns false if it could not be stored.
    bool save(RegistryStore& store) const;

 private:
    bool isUsable(const Binding& stored) const;

    QList<Binding> m_defaults;
    QList<Binding> m_bindings;
};

/// Recognises hot keys in the sequence of pressed keys. Owned by the object that receives the keys; the table outlives
/// it.
class HotKeyStrokes {
 public:
    struct Answer {
        bool taken = false;          ///< the key belongs to a hot key, which may still be incomplete
        std::optional<int> command;  ///< the command to run
    };

    explicit HotKeyStrokes(const HotKeys& hotKeys) : m_hotKeys(hotKeys) {}

    /// If the stroke does not complete the hot key that was begun, it is treated as a first stroke.
    Answer press(const HotKeyStroke& stroke);
    /// Whether the second stroke of a hot key is expected.
    bool isWaiting() const { return !m_first.isEmpty(); }
    /// The first stroke of that hot key; empty if no second one is expected.
    const HotKeyStroke& first() const { return m_first; }
    /// Whether the stroke would complete the hot key that was begun.
    bool ends(const HotKeyStroke& second) const;
    /// Discards the first stroke, because the focus changed or the mouse was used.
    void forget() { m_first = {}; }

 private:
    const HotKeys& m_hotKeys;
    HotKeyStroke m_first;
};
