#pragma once

#include <QDialog>

class QGridLayout;
class QLabel;

/// The counts of a text or a selection.
struct CountedText {
    qint64 words = 0;
    qint64 lines = 0;
    qint64 characters = 0;
    qint64 charactersNoSpace = 0;
};

/// The statistics box: one text counted as a whole and in its selected part. Owned by the code that shows it.
class frmCountAll : public QDialog {
    Q_OBJECT

 public:
    explicit frmCountAll(QWidget* parent = nullptr);

    void setCounts(const CountedText& total, const CountedText& selected);

 private:
    void addRow(QGridLayout& grid, const QString& caption, const QString& total, const QString& selected);
    void put(const char* label, qint64 number);
};
