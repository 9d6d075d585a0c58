#pragma once

#include "editor/control/MacroStep.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>
#include <utility>

/// A recorded sequence of typed texts and commands. A plain value.
///
/// Binary form: "QMDEM" and a zero byte; the format version, 16 bits; the length of the steps in bytes, 32 bits; their
/// SHA-256, 32 bytes; the steps. A step is the byte 1 with the command (32 bits) and its argument, or the byte 2 with
/// the typed text. A text is its length in bytes (32 bits) followed by UTF-8. Numbers are little-endian. Bytes after
/// the last step are ignored, because a shorter macro may have been written over a longer one.
class Macro {
 public:
    /// The maximum length in bytes of a macro that can be read.
    static constexpr qsizetype MostBytes = 16 * 1024 * 1024;

    Macro() = default;
    explicit Macro(QList<MacroStep> steps) : m_steps(std::move(steps)) {}

    const QList<MacroStep>& steps() const { return m_steps; }
    bool isEmpty() const { return m_steps.isEmpty(); }

    void addCommand(qint32 command, const QString& argument = {});
    /// Adds typed text; consecutive texts become one step.
    void addText(const QString& text);

    /// Returns the binary form; empty for a macro without steps.
    QByteArray toBytes() const;
    /// Reads the binary form. Nothing if the bytes are damaged, too many, or of another format or version.
    static std::optional<Macro> fromBytes(QByteArrayView bytes);
    /// Reads the steps alone, without the header.
    static std::optional<Macro> fromSteps(QByteArrayView bytes);

    bool operator==(const Macro&) const = default;

 private:
    QList<MacroStep> m_steps;
};
