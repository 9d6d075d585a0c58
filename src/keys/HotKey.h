#pragma once

#include <QMetaType>
#include <QString>

/// One key press of a hot key, with its modifier keys.
struct HotKeyStroke {
    static constexpr int Shift = 1;
    static constexpr int Ctrl = 2;
    static constexpr int Alt = 4;

    int modifiers = 0;  ///< a combination of the constants above
    QString key;        ///< one character, whose code is the number of the key; empty: no key

    bool operator==(const HotKeyStroke&) const = default;
    bool isEmpty() const { return modifiers == 0 && key.isEmpty(); }
};

/// The keys that run a command: one stroke, or two in a row.
struct HotKey {
    HotKeyStroke first;
    HotKeyStroke second;

    bool operator==(const HotKey&) const = default;

    /// Whether both can't exist at the same time: they are equal, or one is the first stroke of the other.
    bool collidesWith(const HotKey& other) const {
        return first == other.first && (second == other.second || second.isEmpty() || other.second.isEmpty());
    }
};

Q_DECLARE_METATYPE(HotKey)
