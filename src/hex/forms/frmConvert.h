#pragma once

#include <QDialog>

#include <array>

class KeyFilterEdit;

/// Converts one number between decimal, hexadecimal, binary and octal as it is typed. The box in use is the source;
/// changes of the others by the conversion start no further one.
class frmConvert : public QDialog {
    Q_OBJECT

 public:
    explicit frmConvert(QWidget* parent = nullptr);

 private:
    void convertFrom(int box);

    std::array<KeyFilterEdit*, 4> m_boxes{};
    int m_boxInUse = 0;
};
