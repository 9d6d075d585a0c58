#pragma once

#include "hex/forms/HexDialog.h"

class KeyFilterEdit;
class Prompts;
class QRadioButton;

/// Asks for an offset, in decimal or hexadecimal.
class frmGotoOffSet : public HexDialog {
    Q_OBJECT

 public:
    /// Prompts outlive it.
    explicit frmGotoOffSet(Prompts& prompts, QWidget* parent = nullptr);

    /// Of a confirmed form.
    qint64 value() const { return m_value; }

 protected:
    bool checkInput() override;

 private:
    Prompts& m_prompts;
    KeyFilterEdit* m_text;
    QRadioButton* m_hex;
    qint64 m_value = 0;
};
