#include "document/frmCountAll.h"

#include "document/NumberText.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int captionColumn = 0;
constexpr int totalColumn = 1;
constexpr int selectedColumn = 2;
constexpr int columnGap = 24;

struct Row {
    const char* caption;
    const char* total;     ///< name of the label
    const char* selected;  ///< name of the label
    qint64 CountedText::*count;
};

constexpr Row rows[] = {
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
    setObjectName(QStringLiteral("frmCountAll"));
    setWindowTitle(QStringLiteral("Quillmark"));

    auto* frame = new QGroupBox(QStringLiteral(" Statistics "));
    auto* grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(columnGap);
    grid->addWidget(heading(QStringLiteral("Total")), 0, totalColumn);
    grid->addWidget(heading(QStringLiteral("Selected")), 0, selectedColumn);
    for (const Row& row : rows)
        addRow(*grid, QString::fromLatin1(row.caption), QString::fromLatin1(row.total),
               QString::fromLatin1(row.selected));

    auto* close = new QPushButton(QStringLiteral("Close"));
    close->setObjectName(QStringLiteral("cmdClose"));
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
    grid.addWidget(new QLabel(caption), row, captionColumn);
    for (const auto& [name, column] : {std::pair(total, totalColumn), std::pair(selected, selectedColumn)}) {
        auto* label = new QLabel;
        label->setObjectName(name);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        grid.addWidget(label, row, column);
    }
}

void frmCountAll::setCounts(const CountedText& total, const CountedText& selected) {
    for (const Row& row : rows) {
        put(row.total, total.*row.count);
        put(row.selected, selected.*row.count);
    }
}

void frmCountAll::put(const char* label, qint64 number) {
    auto* shown = findChild<QLabel*>(QString::fromLatin1(label));
    shown->setText(groupedNumber(number));
}
