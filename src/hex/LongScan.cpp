#include "hex/LongScan.h"

#include "platform/Yield.h"
#include "widgets/InputStop.h"

#include <utility>

namespace {

constexpr qint64 PatienceMilliseconds = 200;

}  // namespace

LongScan::LongScan(QProgressBar* bar, Notice notice, QString text)
    : m_bar(bar), m_notice(std::move(notice)), m_text(std::move(text)) {
    m_since.start();
}

LongScan::~LongScan() {
    if (!m_input || !m_bar.isThere())
        return;
    m_bar.hide();
    m_notice({});
}

void LongScan::show() {
    m_input = std::make_unique<InputStop>();
    m_bar.show();
    m_notice(m_text);
}

bool LongScan::goesOn(int percent) {
    if (!m_pace.due() || m_since.elapsed() < PatienceMilliseconds)
        return true;
    if (!m_input)
        show();
    m_bar.setValue(percent);
    yieldOnce();
    m_wasStopped = m_input->escaped();
    return m_bar.isThere() && !m_wasStopped;
}
