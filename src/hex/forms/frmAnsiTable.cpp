#include "hex/forms/frmAnsiTable.h"

#include "hex/bytes/HexText.h"
#include "hex/grid/GridPane.h"
#include "text/codec/Windows1252.h"
#include "widgets/StoredColour.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

constexpr int Columns = 4;
constexpr int RowsOfAColumn = 32;
constexpr int ColumnWidth = 133;
constexpr int RowHeight = 24;
constexpr int Left = 5;
constexpr int StripeRise = 4;
constexpr int HalfOfCodes = 128;
constexpr int ShownRows = 16;
constexpr qint32 StripeColour = 12891829;
constexpr qint32 HexColour = 128;
constexpr qint32 DecimalColour = 16384;
constexpr qint32 CharacterColour = 0xC00000;

}  // namespace

QWidget* frmAnsiTable::makeHeading(const char* name, const char* text) {
    auto* heading = new QLabel(QString::fromLatin1(text), this);
    heading->setObjectName(QString::fromLatin1(name));
    return heading;
}

/// `Picture1`. On white in every palette, as its colours are fixed.
class frmAnsiTable::Table : public QWidget {
 public:
    explicit Table(QWidget* parent) : QWidget(parent) {
        setObjectName(u"Picture1"_qs);
        setAccessibleName(u"Characters"_qs);
        setFont(GridPane::paneFont());
        setFixedSize(Columns * ColumnWidth + Left, RowsOfAColumn * RowHeight);
        setFocusPolicy(Qt::StrongFocus);
    }

    void show(int firstCode) {
        m_firstCode = firstCode;
        update();
    }

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setFont(font());
        painter.fillRect(rect(), Qt::white);
        for (int row = 1; row < RowsOfAColumn; row += 2)
            painter.fillRect(0, RowHeight * row - StripeRise, width(), RowHeight, StoredColour::colourOf(StripeColour));
        for (int index = 0; index < Columns * RowsOfAColumn; ++index) {
            paintCode(painter, {index / RowsOfAColumn * ColumnWidth + Left, index % RowsOfAColumn * RowHeight},
                      m_firstCode + index);
        }
    }

 private:
    static void paintCode(QPainter& painter, QPoint at, int code) {
        const QChar one(Windows1252::characterOf(static_cast<quint8>(code)));
        const QString character = one.category() == QChar::Other_Control ? QString() : QString(one);
        const std::pair<qint32, QString> parts[] = {{HexColour, HexText::ByteToHexCell(code) + u"  "_qs},
                                                    {DecimalColour, u"%1  "_qs.arg(code, 3, 10, QLatin1Char('0'))},
                                                    {CharacterColour, character}};
        const QFontMetrics metrics = painter.fontMetrics();
        for (const auto& [number, text] : parts) {
            painter.setPen(StoredColour::colourOf(number));
            painter.drawText(at + QPoint(0, metrics.ascent()), text);
            at.rx() += metrics.horizontalAdvance(text);
        }
    }

    int m_firstCode = 0;
};

frmAnsiTable::frmAnsiTable(QWidget* parent) : QDialog(parent), m_table(new Table(this)), m_view(new QScrollArea(this)) {
    setObjectName(u"frmAnsiTable"_qs);
    setWindowTitle(u"ANSI Table"_qs);
    auto* halves = new QHBoxLayout;
    halves->addWidget(makeHeading("Label1", "Codes:"));
    const std::pair<const char*, int> options[] = {{"0 - 127", 0}, {"128 - 255", HalfOfCodes}};
    for (int i = 0; i < 2; ++i) {
        auto* option = new QRadioButton(QString::fromLatin1(options[i].first), this);
        option->setObjectName(u"Option1(%1)"_qs.arg(i));
        option->setChecked(i == 0);
        connect(option, &QRadioButton::clicked, this, [this, first = options[i].second] {
            DrawCharTable(first);
            m_table->setFocus();
        });
        halves->addWidget(option);
    }
    halves->addStretch();
    halves->addWidget(makeHeading("Label2", "Hex, decimal, character"));
    m_view->setObjectName(u"Picture2"_qs);
    m_view->setWidget(m_table);
    m_view->verticalScrollBar()->setObjectName(u"VScroll1"_qs);
    m_view->verticalScrollBar()->setSingleStep(RowHeight);
    m_view->setMinimumSize(
        m_table->width() + m_view->verticalScrollBar()->sizeHint().width() + 2 * m_view->frameWidth(),
        ShownRows * RowHeight);
    auto* close = new QPushButton(u"Close"_qs, this);
    close->setObjectName(u"Command1"_qs);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(halves);
    layout->addWidget(m_view);
    layout->addWidget(close, 0, Qt::AlignRight);
    DrawCharTable(0);
}

void frmAnsiTable::DrawCharTable(int firstCode) {
    m_table->show(firstCode);
    m_view->verticalScrollBar()->setValue(0);
}
