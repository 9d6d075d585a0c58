#pragma once

#include <QtGlobal>

#include <limits>
#include <string>
#include <string_view>

/// Appends numbers and bytes to a payload; see JournalFormat.
class PayloadWriter {
 public:
    explicit PayloadWriter(std::string& payload) : m_payload(payload) {}

    void number(quint64 value);
    void number(qint64 value) { number(static_cast<quint64>(value)); }
    void byte(quint8 value) { m_payload.push_back(static_cast<char>(value)); }
    void bytes(std::string_view bytes);

 private:
    std::string& m_payload;
};

/// Reads them again. Nothing of the payload is trusted: after the first failure every further part fails, and nothing
/// is reserved for more than what is there.
class PayloadReader {
 public:
    explicit PayloadReader(std::string_view payload) : m_rest(payload) {}

    bool isValid() const { return m_valid; }
    bool atEnd() const { return m_rest.empty(); }

    quint64 number();
    /// A number of at most `largest`.
    qint64 numberUpTo(qint64 largest);
    qint64 offset() { return numberUpTo(std::numeric_limits<qint64>::max()); }
    quint8 byte();
    /// They lie in the payload.
    std::string_view bytes();

 private:
    void fail();

    std::string_view m_rest;
    bool m_valid = true;
};
