#pragma once

#include "hex/bytes/ByteStore.h"

class HexEditObserver;
struct HexBlock;

/// Passes reads and writes on to the bytes of a working copy, and reports the writes to an observer, if there is one:
/// the way by which replacements and fills change the bytes. Owned by the view, like the bytes, which outlive it.
class ObservedBytes : public ByteStore {
 public:
    explicit ObservedBytes(ByteStore& bytes) : m_bytes(bytes) {}

    /// Null: none. It must outlive this object or be removed.
    void setObserver(HexEditObserver* observer) { m_observer = observer; }

    qint64 length() const override { return m_bytes.length(); }
    qint64 read(FilePosition from, char* buffer, qint64 count) const override {
        return m_bytes.read(from, buffer, count);
    }
    SystemError write(FilePosition from, std::string_view bytes) override;

    /// The bytes beneath, for a fill, which is reported as a whole once it has ended.
    ByteStore& unobserved() { return m_bytes; }
    /// The first `count` bytes of the block were filled, and those behind them as far as a write got that failed.
    void reportFill(const HexBlock& block, quint8 byte, qint64 count, bool hasFailed);

 private:
    void report(FilePosition from, std::string_view bytes);
    void reportPresent(FilePosition from, qint64 count);

    ByteStore& m_bytes;
    HexEditObserver* m_observer = nullptr;
};
