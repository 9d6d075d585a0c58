#include "hex/find/frmFindReplace.h"

#include "hex/find/ucFindHEx.h"
#include "hex/find/ucFindText.h"
#include "hex/find/ucReplaceHex.h"
#include "hex/find/ucReplaceText.h"

#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

struct Tab {
    const char* key;
    const char* caption;
};

/// In the order of the pages.
constexpr std::array<Tab, 4> Tabs{{{"ReplaceHex", "Replace Hex"},
                                   {"ReplaceText", "Replace Text"},
                                   {"FindText", "Find Text"},
                                   {"FindHex", "Find Hex"}}};

}  // namespace

frmFindReplace::frmFindReplace(const HexFindDesk& desk, QWidget* parent)
    : QDialog(parent),
      m_tabs(new QTabWidget(this)),
      m_pages{new ucReplaceHex(desk), new ucReplaceText(desk), new ucFindText(desk), new ucFindHEx(desk)} {
    setObjectName(u"frmFindReplace"_qs);
    setModal(true);
    m_tabs->tabBar()->setObjectName(u"TabStrip1"_qs);
    for (std::size_t i = 0; i < m_pages.size(); ++i) {
        const int index = m_tabs->addTab(m_pages[i], QString::fromLatin1(Tabs[i].caption));
        m_tabs->tabBar()->setTabData(index, QString::fromLatin1(Tabs[i].key));
    }
    connect(m_tabs, &QTabWidget::currentChanged, this, &frmFindReplace::showPage);
    auto* close = new QPushButton(u"Close"_qs, this);
    close->setObjectName(u"cmdClose"_qs);
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addWidget(close, 0, Qt::AlignRight);
    showPage(0);
}

void frmFindReplace::InitControl(HexFindTarget* target, const QString& key, const QString& caption, bool locked) {
    setWindowTitle(caption);
    for (HexFindPanel* page : m_pages)
        page->InitControl(target, locked);
    const auto* tab =
        std::find_if(Tabs.begin(), Tabs.end(), [&](const Tab& one) { return key == QLatin1String(one.key); });
    if (tab == Tabs.end())
        return;
    const auto index = static_cast<std::size_t>(tab - Tabs.begin());
    m_tabs->setCurrentIndex(static_cast<int>(index));
    m_pages[index]->focusTerm();
}

/// Enter presses the button of the visible page.
void frmFindReplace::showPage(int index) {
    m_pages[static_cast<std::size_t>(index)]->findButton()->setDefault(true);
}

void frmFindReplace::done(int result) {
    for (HexFindPanel* page : m_pages)
        page->letGoOfTarget();
    QDialog::done(result);
}
