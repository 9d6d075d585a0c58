#pragma once

#include "hex/find/HexReplacePanel.h"

/// A page that lays a text over another.
class ucReplaceText : public HexReplacePanel {
    Q_OBJECT

 public:
    explicit ucReplaceText(const HexFindDesk& desk, QWidget* parent = nullptr);
};
