#include "hex/GridPane.h"

#include "hex/Grid.h"

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
constexpr double ShadeOfPassive = 0.25;

QColor blended(const QColor& over, const QColor& under, double share) {
    const auto part = [&](float a, float b) { return static_cast<float>(a * share + b * (1 - share)); };
    return QColor::fromRgbF(part(over.redF(), under.redF()), part(over.greenF(), under.greenF()),
                            part(over.blueF(), under.blueF()));
}

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
        const QColor text = palette().color(QPalette::Text);
        const QColor base = palette().color(QPalette::Base);
        const bool isActive = m_pane.m_grid.HasFocus();
        painter.fillRect(rect(), isActive ? text : blended(text, base, ShadeOfPassive));
        painter.setPen(isActive ? base : text);
        painter.setFont(m_pane.font());
        m_pane.paintCell(painter, rect(), m_pane.m_grid.cell());
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
    const int cellWidth = static_cast<int>(QFontMetricsF(font()).horizontalAdvance(widest)) + 2 * CellMargin;
    setFixedSize(cellWidth * Grid::Columns, Height);
    connect(&grid, &Grid::valueChanged, this, [this](int row, int col) { updateCell({row, col}); });
    connect(&grid, &Grid::rowsChanged, this, qOverload<>(&QWidget::update));
    connect(&grid, &Grid::cursorChanged, this, &GridPane::moveCursor);
    moveCursor();
}

QFont GridPane::paneFont() {
    QFont font(QStringLiteral("Courier New"));
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
    const int cellWidth = width() / Grid::Columns;
    return {cell.col * cellWidth, cell.row * RowHeight, cellWidth, RowHeight};
}

void GridPane::updateCell(HexCell cell) {
    update(cellRect(cell));
    if (cell == m_grid.cell())
        m_cursor->update();
}

void GridPane::moveCursor() {
    m_cursor->setGeometry(cellRect(m_grid.cell()));
    m_cursor->update();
}

/// Every row is placed by one same height, whatever its letters.
void GridPane::paintCell(QPainter& painter, const QRect& rect, HexCell cell) const {
    if (m_grid.IsBeyondData(cell.row, cell.col))
        return;
    const QString text = m_grid.Value(cell.row, cell.col);
    if (text.isEmpty())
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
    painter.setPen(palette().color(QPalette::Text));
    for (const QRect& part : event->region()) {
        painter.fillRect(part, palette().color(QPalette::Base));
        const int cellWidth = width() / Grid::Columns;
        const int lastRow = std::min(part.bottom() / RowHeight, m_grid.Rows() - 1);
        const int lastCol = std::min(part.right() / cellWidth, Grid::Columns - 1);
        for (int row = part.top() / RowHeight; row <= lastRow; ++row) {
            for (int col = part.left() / cellWidth; col <= lastCol; ++col)
                paintCell(painter, cellRect({row, col}), {row, col});
        }
    }
    if (m_hasBorder) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void GridPane::keyPressEvent(QKeyEvent* event) {
    bool taken = false;
    Q_EMIT keyPressed(event, &taken);
    if (taken || m_grid.pressKey(event->key(), event->modifiers()))
        return;
    // Keys with Alt are the menu's, and Del types nothing.
    const bool types = !event->modifiers().testAnyFlags(Qt::AltModifier | Qt::MetaModifier);
    if (types && event->key() != Qt::Key_Delete && !event->text().isEmpty()) {
        Q_EMIT typed(event->text());
        return;
    }
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
    m_grid.pressMouse(at.y() / RowHeight, at.x() / (width() / Grid::Columns));
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

/// Smooth wheels send parts of a notch; a turn the other way begins anew.
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

/// Tab goes between the two panes, by the view's own rule.
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
