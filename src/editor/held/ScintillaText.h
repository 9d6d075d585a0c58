#pragma once

#include "text/held/HeldText.h"

#include <Qsci/qsciscintillabase.h>

/// The text that a Scintilla view holds, read in place.
class ScintillaText : public HeldText {
 public:
    /// The view outlives this object.
    explicit ScintillaText(const QsciScintillaBase& view) : m_view(view) {}

    qint64 length() const override;
    qint64 gap() const override;
    std::string_view range(qint64 from, qint64 length) const override;
    qint64 lineCount() const override;
    qint64 lineOf(qint64 byte) const override;
    qint64 lineStart(qint64 line) const override;

 private:
    qint64 ask(unsigned message, qint64 first = 0, qint64 second = 0) const;

    const QsciScintillaBase& m_view;
};
