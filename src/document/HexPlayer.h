#pragma once

#include "hex/bytes/HexBlock.h"
#include "hex/bytes/HexReplay.h"
#include "recovery/journals/HexEntryVisitor.h"

/// Makes the edits of a journal again. Made for one visit, on the stack.
class HexPlayer : public HexEntryVisitor {
 public:
    explicit HexPlayer(HexReplay& replay) : m_replay(replay) {}

    bool typed(qint64 page, int row, int col, quint8 byte) override {
        m_replay.type(FilePosition(page), {row, col}, byte);
        return m_replay.goesOn();
    }
    bool tookBack() override {
        m_replay.takeBack();
        return m_replay.goesOn();
    }
    bool overwrote(qint64 at, std::string_view bytes) override {
        m_replay.write(Offset(at).position(), bytes);
        return m_replay.goesOn();
    }
    bool filled(qint64 at, qint64 length, quint8 byte) override {
        const FilePosition first = Offset(at).position();
        m_replay.fill({first, first + length - 1}, byte);
        return m_replay.goesOn();
    }

 private:
    HexReplay& m_replay;
};
