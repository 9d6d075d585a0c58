#pragma once

#include "hex/find/HexReplacePanel.h"

/// A page that lays a byte sequence over another.
class ucReplaceHex : public HexReplacePanel {
    Q_OBJECT

 public:
    explicit ucReplaceHex(const HexFindDesk& desk, QWidget* parent = nullptr);
};
