#pragma once

#include "hex/find/HexFindPanel.h"

/// A page that finds a text.
class ucFindText : public HexFindPanel {
    Q_OBJECT

 public:
    explicit ucFindText(const HexFindDesk& desk, QWidget* parent = nullptr);
};
