#include "workspace/panel/ExplorerBand.h"

#include "widgets/Twips.h"
#include "workspace/panel/BandTitle.h"

#include <QVBoxLayout>

ExplorerBand::ExplorerBand(int number, const QIcon& picture, QWidget* content, QWidget* parent)
    : QWidget(parent), m_title(*new BandTitle(number, picture, this)) {
    setObjectName(u"picTitle(%1)"_qs.arg(number));
    setCursor(Qt::ArrowCursor);
    setFocusProxy(content);
    content->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    content->setMinimumSize(0, 0);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->setSizeConstraint(QLayout::SetNoConstraint);  // a band may be as low as its title
    rows->addWidget(&m_title);
    rows->addWidget(content, 1);
    hide();
}

int ExplorerBand::titleHeight() const {
    return m_title.sizeHint().height();
}

void ExplorerBand::place(int top, int height) {
    m_top = top;
    const int first = top / TwipsPerPixel;
    setGeometry(0, first, parentWidget()->width(), (top + height) / TwipsPerPixel - first);
}
