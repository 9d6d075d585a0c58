#include "workspace/panel/ExplorerBand.h"

#include "widgets/Twips.h"
#include "workspace/panel/BandTitle.h"

#include <QVBoxLayout>

ExplorerBand::ExplorerBand(int number, const QIcon& picture, QWidget* parent)
    : QWidget(parent), m_title(*new BandTitle(number, picture, this)) {
    setObjectName(u"picTitle(%1)"_qs.arg(number));
    setCursor(Qt::ArrowCursor);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->setSizeConstraint(QLayout::SetNoConstraint);  // a band may be as low as its title
    rows->addWidget(&m_title);
    hide();
}

void ExplorerBand::setContent(QWidget* content) {
    m_content = content;
    content->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    content->setMinimumSize(0, 0);
    static_cast<QVBoxLayout*>(layout())->addWidget(content, 1);
}

// Not by a focus proxy: the Tab key would then come to the content before the title.
void ExplorerBand::focusInEvent(QFocusEvent*) {
    if (m_content != nullptr)
        m_content->setFocus(Qt::TabFocusReason);
}

int ExplorerBand::titleHeight() const {
    return m_title.sizeHint().height();
}

void ExplorerBand::place(int top, int height) {
    m_top = top;
    const int first = top / TwipsPerPixel;
    setGeometry(0, first, parentWidget()->width(), (top + height) / TwipsPerPixel - first);
}
