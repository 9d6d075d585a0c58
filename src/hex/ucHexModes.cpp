// The modes that the labels of the view switch: the base of the offsets, the mode of editing.

#include "hex/grid/GridPane.h"
#include "hex/ucHex.h"

#include <QEvent>

void ucHex::toggleOffsetMode() {
    if (m_fileOpen)
        m_panes.toggleOffsets();
}

void ucHex::toggleEditMode() {
    if (!m_fileOpen)
        return;
    m_editMode.toggle();
    GridPane* const pane = m_panes.pane(m_editMode.isHex() ? 1 : 2);
    if (pane->isEnabled())
        pane->setFocus();
}

void ucHex::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        m_editMode.paint();
}
