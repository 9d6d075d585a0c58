#include "shell/bars/CoolBar.h"

#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr std::array<const char*, 2> BandNames = {"CoolBar1.Tool", "CoolBar1.Tab"};

QVBoxLayout* tightLayout(QWidget* owner) {
    auto* layout = new QVBoxLayout(owner);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

}  // namespace

CoolBar::CoolBar(QWidget* parent) : QWidget(parent) {
    setObjectName(u"CoolBar1"_qs);
    QVBoxLayout* rows = tightLayout(this);
    for (size_t i = 0; i < m_bands.size(); ++i) {
        m_bands[i] = new QWidget(this);
        m_bands[i]->setObjectName(QLatin1String(BandNames[i]));
        tightLayout(m_bands[i]);
        rows->addWidget(m_bands[i]);
    }
}

void CoolBar::setBand(Band band, QWidget* content) {
    m_bands[band]->layout()->addWidget(content);
}

bool CoolBar::isBandVisible(Band band) const {
    return !m_bands[band]->isHidden();
}

void CoolBar::setBandVisible(Band band, bool visible) {
    m_bands[band]->setVisible(visible);
    setVisible(std::ranges::any_of(m_bands, [](const QWidget* each) { return !each->isHidden(); }));
}
