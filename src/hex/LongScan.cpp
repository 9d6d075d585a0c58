#include "hex/LongScan.h"

#include "platform/Yield.h"
#include "widgets/InputStop.h"

#include <QProgressBar>

#include <utility>

namespace {

constexpr qint64 PatienceMilliseconds = 200;

}  // namespace

LongScan::LongScan(QProgressBar* bar, Notice notice) : m_bar(bar), m_notice(std::move(notice)) {
    m_since.start();
}

LongScan::~LongScan() {
    if (!m_input || !m_bar)
        return;
    m_bar->hide();
    m_notice({});
}

void LongScan::show() {
    m_input = std::make_unique<InputStop>();
    m_bar->show();
    m_notice(u"Searching. Esc stops it."_qs);
}

bool LongScan::goesOn(int percent) {
    if (!m_pace.due() || m_since.elapsed() < PatienceMilliseconds)
        return true;
    m_bar->setValue(percent);
    if (!m_input)
        show();
    yieldOnce();
    m_wasStopped = m_input->escaped();
    return m_bar && !m_wasStopped;
}
