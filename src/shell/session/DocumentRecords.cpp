#include "shell/session/DocumentRecords.h"

#include "document/frmDocument.h"
#include "platform/Yield.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"
#include "shell/session/DocumentRecord.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Twips.h"

#include <QEvent>
#include <QMdiArea>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>

namespace {

constexpr int LockFlag = 1;
/// No window is farther away or larger.
constexpr float MostPixels = 32767;

float twips(int pixels) {
    return static_cast<float>(pixels * TwipsPerPixel);
}

int pixels(float twips) {
    return static_cast<int>(std::lround(std::clamp(twips / TwipsPerPixel, -MostPixels, MostPixels)));
}

constexpr QMdiArea::AreaOption MaximisedStays = QMdiArea::DontMaximizeSubWindowOnActivation;

/// Clears the option once the area has been shown, which activates a window. Owned by the area.
class UntilShown : public QObject {
 public:
    explicit UntilShown(QMdiArea& area) : QObject(&area), m_area(area) { area.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Show)
            QTimer::singleShot(0, this, [this] { end(); });
        return false;
    }

 private:
    void end() {
        m_area.setOption(MaximisedStays, false);
        deleteLater();
    }

    QMdiArea& m_area;
};

/// From its construction on, a maximised window stays so when another one is activated: until its destruction or, if
/// the area is hidden then, until the area has been shown.
class StatesKept {
 public:
    explicit StatesKept(QMdiArea& area) : m_area(area), m_sets(!area.testOption(MaximisedStays)) {
        area.setOption(MaximisedStays);
    }
    ~StatesKept() {
        if (!m_sets)
            return;
        if (m_area.isVisible())
            m_area.setOption(MaximisedStays, false);
        else
            new (std::nothrow) UntilShown(m_area);
    }
    Q_DISABLE_COPY_MOVE(StatesKept)

 private:
    QMdiArea& m_area;
    bool m_sets;
};

}  // namespace

DocumentRecords::DocumentRecords(MdiChildren& children, ActiveDocument& active, DocumentOpening& opening)
    : m_children(children), m_active(active), m_opening(opening) {}

QString DocumentRecords::WriteDocRecord(const frmDocument& pForm) const {
    const ChildPlace place = m_children.placeOf(&pForm);
    return DocumentRecord{.path = pForm.filename,
                          .textEdit = pForm.TextEdit(),
                          .locked = pForm.Locked(),
                          .windowState = place.state,
                          .left = twips(place.normal.x()),
                          .top = twips(place.normal.y()),
                          .width = twips(place.normal.width()),
                          .height = twips(place.normal.height())}
        .toLine();
}

QStringList DocumentRecords::writeAll() const {
    QStringList lines;
    for (const frmDocument* document : m_children.documents())
        lines << WriteDocRecord(*document);
    lines.removeAll(QString());
    return lines;
}

void DocumentRecords::RestoreDocRecord(const QString& line) {
    const DocumentRecord record = DocumentRecord::fromLine(line);
    if (!record.path.isEmpty())
        m_opening.whenIdle([this, record] { restore(record); });
}

void DocumentRecords::restore(const DocumentRecord& record) {
    openAndPlace(record);
    yieldOnce();
}

/// A window without a state in its record takes over that of the active one, as any new window does.
void DocumentRecords::openAndPlace(const DocumentRecord& record) {
    std::optional<StatesKept> kept;
    if (record.windowState)
        kept.emplace(m_children.area());
    m_opening.OpenFile(record.path, record.locked ? LockFlag : 0, false, record.textEdit);
    if (const frmDocument* document = m_active.get())
        ignoringErrors("RestoreDocRecord", [&] { place(*document, record); });
}

void DocumentRecords::place(const frmDocument& document, const DocumentRecord& record) {
    const ChildState state = record.windowState.value_or(m_children.placeOf(&document).state);
    const QRect normal(pixels(record.left), pixels(record.top), pixels(record.width), pixels(record.height));
    if (record.hasPlace())
        m_children.setPlace(&document, {state, normal});
    else
        m_children.setState(&document, state);
}
