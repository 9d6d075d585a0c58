#include "hex/grid/GridPane.h"

#include "hex/grid/Grid.h"
#include "hex/grid/HexColours.h"
#include "widgets/Contrast.h"

#include <QContextMenuEvent>
#include <QFontMetricsF>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int FontPixels = 14;
constexpr int CellMargin = 3;
constexpr int EighthsOfANotch = 120;
constexpr int PassiveShadePercent = 20;
constexpr int PassiveEdgePercent = 60;
constexpr int DividerPercent = 15;
constexpr int BorderWidth = 2;

}  // namespace

/// The rectangle over the current cell, with the cell's text in its own colours.
class GridPane::Cursor : public QWidget {
 public:
    explicit Cursor(GridPane* pane) : QWidget(pane), m_pane(*pane) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setFont(m_pane.font());
        const QColor text = palette().color(QPalette::Text);
        const QColor base = palette().color(QPalette::Base);
        const HexCell cell = m_pane.m_grid.cell();
        const bool marked = m_pane.isMarked(cell);
        const bool found = m_pane.isFound(cell);
        if (m_pane.m_grid.HasFocus()) {
            painter.fillRect(rect(), marked ? HexColours::changedText(palette()) : text);
            painter.setPen(base);
        } else {
            const HexColours::Cell look = HexColours::cell(palette(), marked, found);
            const QColor shade = found ? look.ground : Contrast::blended(base, text, PassiveShadePercent);
            painter.fillRect(rect(), shade);
            painter.setPen(found ? look.text : Contrast::blended(base, text, PassiveEdgePercent));
            painter.drawRect(rect().adjusted(0, 0, -1, -1));
            painter.setPen(Contrast::readableOn(shade, look.text));
        }
        m_pane.DrawCell(painter, rect(), cell);
    }

 private:
    GridPane& m_pane;
};

GridPane::GridPane(Grid& grid, const QString& widest, QWidget* parent)
    : QWidget(parent), m_grid(grid), m_cursor(new Cursor(this)) {
    setFont(paneFont());
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_InputMethodEnabled);
    setBackgroundRole(QPalette::Base);
    InitializeGrid(static_cast<int>(QFontMetricsF(font()).horizontalAdvance(widest)) + 2 * CellMargin);
}

void GridPane::InitializeGrid(int cellWidth) {
    setFixedSize(cellWidth * Grid::Columns, Height);
    connect(&m_grid, &Grid::valueChanged, this, [this](int row, int col) { updateCell({row, col}); });
    connect(&m_grid, &Grid::rowsChanged, this, qOverload<>(&QWidget::update));
    connect(&m_grid, &Grid::cursorChanged, this, &GridPane::moveCursor);
    moveCursor();
}

QFont GridPane::paneFont() {
    QFont font(u"Courier New"_qs);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPixelSize(FontPixels);
    return font;
}

void GridPane::setCursorName(const QString& name) {
    m_cursor->setObjectName(name);
}

void GridPane::setCursorShown(bool shown) {
    m_cursor->setVisible(shown);
}

void GridPane::setBorder(bool hasBorder) {
    m_hasBorder = hasBorder;
    update();
}

QRect GridPane::cellRect(HexCell cell) const {
    return {cell.col * CellWidth(), cell.row * CellHeight, CellWidth(), CellHeight};
}

std::optional<HexCell> GridPane::cellAt(const QPoint& point) const {
    const HexCell cell{point.y() / CellHeight, point.x() / CellWidth()};
    return rect().contains(point) && cell.row < m_grid.Rows() ? std::optional(cell) : std::nullopt;
}

void GridPane::beginFill() {
    setUpdatesEnabled(false);
}

void GridPane::endFill() {
    setUpdatesEnabled(true);
    Q_EMIT pageChanged();
}

void GridPane::updateCell(HexCell cell) {
    if (!updatesEnabled())
        return;
    update(cellRect(cell));
    Q_EMIT cellChanged(cell.row, cell.col);
    if (cell == m_grid.cell())
        m_cursor->update();
}

void GridPane::moveCursor() {
    m_cursor->setGeometry(cellRect(m_grid.cell()));
    m_cursor->update();
    Q_EMIT cursorMoved();
}

/// All rows have the same height, whatever their letters. Control characters have no picture.
void GridPane::DrawCell(QPainter& painter, const QRect& rect, HexCell cell) const {
    if (m_grid.IsBeyondData(cell.row, cell.col))
        return;
    const QString text = m_grid.Value(cell.row, cell.col);
    if (text.isEmpty() || text.at(0).category() == QChar::Other_Control)
        return;
    const QStaticText& picture = laidOut(text);
    const double x = rect.x() + (rect.width() - picture.size().width()) / 2;
    const double y = rect.y() + (rect.height() - QFontMetricsF(font()).height()) / 2;
    painter.drawStaticText(QPoint(qRound(x), qRound(y)), picture);
}

const QStaticText& GridPane::laidOut(const QString& text) const {
    QStaticText& picture = m_laidOut[text];
    if (picture.text().isEmpty()) {
        picture = QStaticText(text);
        picture.setTextFormat(Qt::PlainText);
        picture.prepare({}, font());
    }
    return picture;
}

void GridPane::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setFont(font());
    const HexColours::Cells looks(palette());
    for (const QRect& part : event->region()) {
        painter.fillRect(part, palette().color(QPalette::Base));
        const int lastRow = std::min(part.bottom() / CellHeight, m_grid.Rows() - 1);
        const int lastCol = std::min(part.right() / CellWidth(), Grid::Columns - 1);
        for (int row = part.top() / CellHeight; row <= lastRow; ++row) {
            for (int col = part.left() / CellWidth(); col <= lastCol; ++col) {
                const QRect cell = cellRect({row, col});
                const HexColours::Cell& look = looks.of(isMarked({row, col}), isFound({row, col}));
                painter.fillRect(cell, look.ground);
                painter.setPen(look.text);
                DrawCell(painter, cell, {row, col});
            }
        }
    }
    paintDivider(painter);
    if (m_hasBorder)
        paintBorder(painter);
}

void GridPane::paintBorder(QPainter& painter) const {
    painter.setPen(HexColours::border(palette()));
    for (int inset = 0; inset < BorderWidth; ++inset)
        painter.drawRect(rect().adjusted(inset, inset, -1 - inset, -1 - inset));
}

/// Between the halves of the rows, so that a column is found at a glance.
void GridPane::paintDivider(QPainter& painter) const {
    const int x = cellRect({0, Grid::Columns / 2}).left();
    painter.setPen(Contrast::blended(palette().color(QPalette::Base), palette().color(QPalette::Text), DividerPercent));
    painter.drawLine(x, 0, x, height() - 1);
}

void GridPane::keyPressEvent(QKeyEvent* event) {
    bool taken = false;
    Q_EMIT keyPressed(event, &taken);
    if (taken || m_grid.pressKey(event->key(), event->modifiers()))
        return;
    // Keys with Alt are the menu's, and Del types nothing.
    const bool types = !event->modifiers().testAnyFlags(Qt::AltModifier | Qt::MetaModifier);
    if (types && event->key() != Qt::Key_Delete && !event->text().isEmpty())
        Q_EMIT typed(event->text(), &taken);
    if (!taken)
        QWidget::keyPressEvent(event);
}

void GridPane::inputMethodEvent(QInputMethodEvent* event) {
    QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, event->commitString());
    if (!event->commitString().isEmpty())
        keyPressEvent(&key);
    event->accept();
}

void GridPane::mousePressEvent(QMouseEvent* event) {
    m_grid.setHasFocus(true);
    const QPoint at = event->position().toPoint();
    m_grid.pressMouse(at.y() / CellHeight, at.x() / CellWidth());
}

void GridPane::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton)
        Q_EMIT rightReleased(event->position().toPoint());
}

void GridPane::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard)
        Q_EMIT rightReleased(cellRect(m_grid.cell()).center());
    event->accept();
}

/// Smooth wheels send parts of a notch; turning the other way starts again from 0.
void GridPane::wheelEvent(QWheelEvent* event) {
    const int delta = event->angleDelta().y();
    m_wheel = (m_wheel < 0) == (delta < 0) ? m_wheel + delta : delta;
    const int notches = m_wheel / EighthsOfANotch;
    m_wheel -= notches * EighthsOfANotch;
    if (notches != 0)
        Q_EMIT wheelTurned(notches);
    event->accept();
}

void GridPane::focusInEvent(QFocusEvent*) {
    m_grid.setHasFocus(true);
    Q_EMIT focusGained();
}

void GridPane::focusOutEvent(QFocusEvent*) {
    m_grid.setHasFocus(false);
    Q_EMIT focusLost();
}

/// Tab moves between the two panes, by the view's own rule.
bool GridPane::focusNextPrevChild(bool) {
    return false;
}

void GridPane::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange)
        m_laidOut.clear();
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange)
        m_cursor->update();
    QWidget::changeEvent(event);
}
