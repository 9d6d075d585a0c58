#pragma once

#include "hex/find/HexFindPanel.h"

/// A page that finds a byte sequence.
class ucFindHEx : public HexFindPanel {
    Q_OBJECT

 public:
    explicit ucFindHEx(const HexFindDesk& desk, QWidget* parent = nullptr);
};
