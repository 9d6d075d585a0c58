#pragma once

#include "hex/forms/HexDialog.h"

class KeyFilterEdit;
class Prompts;

/// Asks for a page.
class frmGotoPage : public HexDialog {
    Q_OBJECT

 public:
    /// Prompts outlive it. `pages` is how many the view counts.
    frmGotoPage(Prompts& prompts, qint64 pages, QWidget* parent = nullptr);

    /// Of a confirmed form; 1 or more.
    qint64 value() const { return m_value; }

 protected:
    bool checkInput() override;

 private:
    Prompts& m_prompts;
    KeyFilterEdit* m_text;
    qint64 m_value = 1;
};
