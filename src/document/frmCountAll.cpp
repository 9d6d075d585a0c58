#include "document/frmCountAll.h"

#include "document/NumberText.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int CaptionColumn = 0;
constexpr int TotalColumn = 1;
constexpr int SelectedColumn = 2;
constexpr int ColumnGap = 24;

struct Row {
    const char* caption;
    const char* total;     ///< name of the label
    const char* selected;  ///< name of the label
    qint64 CountedText::*count;
};

constexpr Row Rows[] = {
    {"Words:", "lbW", "lbSelW", &CountedText::words},
    {"Lines:", "lbL", "lbSelL", &CountedText::lines},
    {"Characters(with spaces):", "lbC", "lbSelC", &CountedText::characters},
    {"Characters(no spaces):", "lbCN", "lbSelCN", &CountedText::charactersNoSpace},
};

QLabel* heading(const QString& text) {
    auto* label = new QLabel(text);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

}  // namespace

frmCountAll::frmCountAll(QWidget* parent) : QDialog(parent) {
    setObjectName(u"frmCountAll"_qs);
    setWindowTitle(u"Quillmark"_qs);

    auto* frame = new QGroupBox(u" Statistics "_qs);
    auto* grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(ColumnGap);
    grid->addWidget(heading(u"Total"_qs), 0, TotalColumn);
    grid->addWidget(heading(u"Selected"_qs), 0, SelectedColumn);
    for (const Row& row : Rows) {
        addRow(*grid, QString::fromLatin1(row.caption), QString::fromLatin1(row.total),
               QString::fromLatin1(row.selected));
    }

    auto* close = new QPushButton(u"Close"_qs);
    close->setObjectName(u"cmdClose"_qs);
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addWidget(close, 0, Qt::AlignRight);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    setCounts({}, {});
}

void frmCountAll::addRow(QGridLayout& grid, const QString& caption, const QString& total, const QString& selected) {
    const int row = grid.rowCount();
    grid.addWidget(new QLabel(caption), row, CaptionColumn);
    for (const auto& [name, column] : {std::pair(total, TotalColumn), std::pair(selected, SelectedColumn)}) {
        auto* label = new QLabel;
        label->setObjectName(name);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        grid.addWidget(label, row, column);
    }
}

void frmCountAll::setCounts(const CountedText& total, const CountedText& selected) {
    for (const Row& row : Rows) {
        put(row.total, total.*row.count);
        put(row.selected, selected.*row.count);
    }
}

void frmCountAll::put(const char* label, qint64 number) {
    auto* shown = findChild<QLabel*>(QString::fromLatin1(label));
    shown->setText(groupedNumber(number));
}
