#pragma once

#include "search/forms/SearchDialog.h"

/// Asks what to find in many files.
class frmSearchInFiles : public SearchDialog {
    Q_OBJECT

 public:
    explicit frmSearchInFiles(Prompts& prompts, QWidget* parent = nullptr);
};
