#pragma once

#include "editor/control/MacroStep.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>
#include <utility>

/// A recorded run of keys and commands.
///
/// As bytes: "QMDEM" and a zero byte; the version of the form, 16 bits; the length of the steps in bytes, 32 bits;
/// their SHA-256, 32 bytes; the steps. A step is the byte 1 with the command (32 bits) and its argument, or the byte 2
/// with the text. A text is its length in bytes (32 bits) and as many bytes of UTF-8. Numbers stand with the lowest
/// byte first. What stands behind the last step is left alone: a shorter macro may lie over a longer one.
class Macro {
 public:
    /// The longest run of bytes that is read as a macro.
    static constexpr qsizetype MostBytes = 16 * 1024 * 1024;

    Macro() = default;
    explicit Macro(QList<MacroStep> steps) : m_steps(std::move(steps)) {}

    const QList<MacroStep>& steps() const { return m_steps; }
    bool isEmpty() const { return m_steps.isEmpty(); }

    void addCommand(qint32 command, const QString& argument = {});
    /// Goes on with the text that was typed just before.
    void addText(const QString& text);

    /// An empty macro has no bytes.
    QByteArray toBytes() const;
    /// Nothing when the bytes are damaged, of another form or version, or too many.
    static std::optional<Macro> fromBytes(QByteArrayView bytes);
    /// The steps alone, without what stands before them.
    static std::optional<Macro> fromSteps(QByteArrayView bytes);

    bool operator==(const Macro&) const = default;

 private:
    QList<MacroStep> m_steps;
};
