#pragma once

#include <QMetaType>
#include <QString>

/// One stroke of a hot key.
struct HotKeyStroke {
    static constexpr int Shift = 1;
    static constexpr int Ctrl = 2;
    static constexpr int Alt = 4;

    int modifiers = 0;  ///< the bits above
    QString key;        ///< the character whose code is the key's; empty: no key

    bool operator==(const HotKeyStroke&) const = default;
    bool isEmpty() const { return modifiers == 0 && key.isEmpty(); }
};

/// What is pressed for a command: a stroke, or two one after the other.
struct HotKey {
    HotKeyStroke first;
    HotKeyStroke second;

    bool operator==(const HotKey&) const = default;

    /// Whether both can't be had at once: they are the same, or one is the beginning of the other.
    bool collidesWith(const HotKey& other) const {
        return first == other.first && (second == other.second || second.isEmpty() || other.second.isEmpty());
    }
};

Q_DECLARE_METATYPE(HotKey)
