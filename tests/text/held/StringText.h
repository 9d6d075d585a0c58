#pragma once

#include "text/held/HeldText.h"

#include <string>

/// A held text in a std::string; a test may set the gap. Lines end at LF, CR LF and CR, as in Scintilla.
class StringText : public HeldText {
 public:
    std::string bytes;
    qint64 gapAt = 0;

    StringText() = default;
    explicit StringText(std::string text) : bytes(std::move(text)) {}

    qint64 length() const override { return static_cast<qint64>(bytes.size()); }
    qint64 gap() const override { return gapAt; }
    std::string_view range(qint64 from, qint64 length) const override {
        return std::string_view(bytes).substr(static_cast<std::size_t>(from), static_cast<std::size_t>(length));
    }
    qint64 lineCount() const override { return lineOf(length()) + 1; }
    qint64 lineOf(qint64 byte) const override {
        qint64 line = 0;
        while (lineStart(line + 1) <= byte && lineStart(line + 1) > lineStart(line))
            ++line;
        return line;
    }
    qint64 lineStart(qint64 line) const override {
        std::size_t at = 0;
        for (qint64 passed = 0; passed < line; ++passed) {
            const std::size_t end = bytes.find_first_of("\r\n", at);
            if (end == std::string::npos)
                return static_cast<qint64>(at);
            at = end + (bytes.compare(end, 2, "\r\n") == 0 ? 2 : 1);
        }
        return static_cast<qint64>(at);
    }
};
