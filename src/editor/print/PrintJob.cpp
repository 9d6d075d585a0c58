#include "editor/print/PrintJob.h"

#include "editor/control/TextControl.h"

#include <QPagedPaintDevice>

#include <utility>

namespace {

constexpr int AllPercent = 100;
/// The part of the time in which pages are counted, in percent.
constexpr int CountingPercent = 10;

}  // namespace

PrintJob::PrintJob(TextControl& control, QPagedPaintDevice& device, PrintOrder order)
    : m_control(&control),
      m_device(device),
      m_order(order.pages),
      m_text(control, std::move(order.ranges)),
      m_layout(m_text, PaperLook::of(control, order.ink), device, std::move(order.name)),
      m_change(control.changeCount()) {}

PrintJob::Outcome PrintJob::run(const Watch& watch) {
    if (const Outcome counted = countPages(watch); counted != Outcome::Printed)
        return counted;
    const std::vector<int> pages = m_order.pagesOf(pageCount());
    return pages.empty() ? Outcome::NoSuchPage : paintPages(pages, watch);
}

PrintJob::Outcome PrintJob::askWatch(const Watch& watch, const PrintProgress& progress) {
    if (!watch(progress))
        return Outcome::Cancelled;
    return m_control && m_control->changeCount() == m_change ? Outcome::Printed : Outcome::TextChanged;
}

/// An empty text has one page.
PrintJob::Outcome PrintJob::countPages(const Watch& watch) {
    PrintPlace place = m_text.begin();
    do {
        const int percent = static_cast<int>(m_text.partBefore(place) * CountingPercent);
        if (const Outcome asked = askWatch(watch, {0, 0, percent}); asked != Outcome::Printed)
            return asked;
        m_starts.push_back(place);
        place = m_layout.fill(place, nullptr);
    } while (!m_text.isAtEnd(place));
    return Outcome::Printed;
}

PrintJob::Outcome PrintJob::paintPages(const std::vector<int>& pages, const Watch& watch) {
    const int count = static_cast<int>(pages.size());
    for (int i = 0; i < count; ++i) {
        const int percent = CountingPercent + static_cast<int>((AllPercent - CountingPercent) * qint64{i} / count);
        if (const Outcome asked = askWatch(watch, {i + 1, count, percent}); asked != Outcome::Printed)
            return asked;
        if (!(i == 0 ? m_painter.begin(&m_device) : m_device.newPage()))
            return Outcome::DeviceRefused;
        const int page = pages[static_cast<std::size_t>(i)];
        m_layout.paintHeader(m_painter, page, pageCount());
        m_layout.fill(m_starts[static_cast<std::size_t>(page) - 1], &m_painter);
    }
    return m_painter.end() ? Outcome::Printed : Outcome::DeviceRefused;
}
