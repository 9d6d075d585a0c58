#pragma once

#include <QDialog>

class QScrollArea;

/// The 256 characters of a byte with their codes, half of them at a time.
class frmAnsiTable : public QDialog {
    Q_OBJECT

 public:
    explicit frmAnsiTable(QWidget* parent = nullptr);

 private:
    class Table;

    QWidget* makeHeading(const char* name, const char* text);
    void DrawCharTable(int firstCode);

    Table* m_table;
    QScrollArea* m_view;
};
