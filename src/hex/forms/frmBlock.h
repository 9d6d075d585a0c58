#pragma once

#include "hex/bytes/BlockExport.h"
#include "hex/bytes/FilePosition.h"
#include "hex/forms/HexDialog.h"

#include <array>
#include <optional>

class KeyFilterEdit;
class QGroupBox;
class QRadioButton;

/// Asks for a block of bytes by its two offsets, and whether to copy it to the clipboard or to fill it with a byte.
class frmBlock : public HexDialog {
    Q_OBJECT

 public:
    /// In a locked view a block can only be copied.
    explicit frmBlock(bool locked = false, QWidget* parent = nullptr);

    /// Of a confirmed form; in the order they were typed. Too large for an offset: a number that no file has.
    Offset first() const;
    Offset last() const;
    bool fills() const;
    /// Nothing when it is no byte.
    std::optional<quint8> fillByte() const;
    BlockForm form() const;

 protected:
    bool checkInput() override;

 private:
    QWidget* makeFillFrame();
    QWidget* makeCopyFrame();
    void applyMode();
    QPalette byteColours(bool isFill) const;

    KeyFilterEdit* m_first;
    KeyFilterEdit* m_last;
    KeyFilterEdit* m_byte;
    std::array<QRadioButton*, 3> m_mode{};
    std::array<QRadioButton*, 3> m_form{};
    QGroupBox* m_fillFrame;
};
