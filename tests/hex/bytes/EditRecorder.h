#pragma once

#include "hex/bytes/HexBlock.h"
#include "hex/bytes/HexEditObserver.h"
#include "hex/bytes/HexReplay.h"
#include "hex/bytes/HexUndoLog.h"

#include <functional>
#include <string>
#include <vector>

/// Keeps what an observer of edits was notified of, to be made again.
class EditRecorder : public HexEditObserver {
 public:
    void unloaded() override { names.emplace_back("unloaded"); }
    void halfTyped(FilePosition, HexCell, quint8) override { names.emplace_back("half"); }
    void typed(FilePosition page, HexCell cell, quint8 byte) override {
        keep("typed", [=](HexReplay& replay) { replay.type(page, cell, byte); });
    }
    void tookBack(const HexUndoEntry& entry) override {
        keep("took back", [](HexReplay& replay) { replay.takeBack(); });
        lastUndone = entry;
    }
    void wrote(FilePosition at, std::string_view bytes) override {
        keep("wrote", [at, held = std::string(bytes)](HexReplay& replay) { replay.write(at, held); });
    }
    void filled(const HexBlock& block, quint8 byte) override {
        keep("filled", [=](HexReplay& replay) { replay.fill(block, byte); });
    }

    void repeatIn(HexReplay& replay) const {
        for (const auto& edit : m_edits)
            edit(replay);
    }

    std::vector<std::string> names;
    HexUndoEntry lastUndone;

 private:
    void keep(const char* name, std::function<void(HexReplay&)> edit) {
        names.emplace_back(name);
        m_edits.push_back(std::move(edit));
    }

    std::vector<std::function<void(HexReplay&)>> m_edits;
};
