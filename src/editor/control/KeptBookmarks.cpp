#include "editor/control/KeptBookmarks.h"

#include "editor/control/ControlBookmarks.h"
#include "editor/control/EditView.h"

KeptBookmarks::KeptBookmarks(EditView& view)
    : m_view(view), m_lineCount(view.TotalLines()), m_lines(ControlBookmarks(view).markedLines(0, m_lineCount - 1)) {}

KeptBookmarks::~KeptBookmarks() {
    if (!m_lines.empty() && m_view.TotalLines() == m_lineCount)
        ControlBookmarks(m_view).setMarkedLines(0, m_lineCount - 1, m_lines);
}
