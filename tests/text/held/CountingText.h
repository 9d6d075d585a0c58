#pragma once

#include "text/held/StringText.h"

/// A held text that counts how many of its bytes were read.
class CountingText : public StringText {
 public:
    using StringText::StringText;

    std::string_view range(qint64 from, qint64 length) const override {
        m_read += length;
        return StringText::range(from, length);
    }
    qint64 bytesRead() const { return m_read; }
    void countAnew() { m_read = 0; }

 private:
    mutable qint64 m_read = 0;
};
