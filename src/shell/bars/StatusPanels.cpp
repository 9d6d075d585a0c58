#include "shell/bars/StatusPanels.h"

#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "shell/bars/StatusPanel.h"
#include "widgets/Icons.h"

#include <QStatusBar>
#include <QTimer>

#include <algorithm>
#include <chrono>

namespace {

constexpr std::chrono::seconds PassingTime(30);

enum Panel { First = 1, Position = 2, LastUpdate = 3, Size = 4 };

/// Letters for which each panel has room; the first gets the remaining width.
constexpr std::array<int, 4> PanelRoom = {0, 48, 22, 16};

/// What a screen reader says beside the text.
constexpr std::array<const char*, 4> Descriptions = {QT_TRANSLATE_NOOP("StatusPanels", "Notice"),
                                                     QT_TRANSLATE_NOOP("StatusPanels", "Position of the cursor"),
                                                     QT_TRANSLATE_NOOP("StatusPanels", "Last update of the file"),
                                                     QT_TRANSLATE_NOOP("StatusPanels", "Size of the file in bytes")};

}  // namespace

StatusPanels::StatusPanels(QStatusBar& bar) : QObject(&bar) {
    bar.setObjectName(u"sbStatusBar"_qs);
    for (size_t i = 0; i < m_panels.size(); ++i) {
        auto* added = new StatusPanel(&bar);
        added->setObjectName(u"sbStatusBar(%1)"_qs.arg(i + 1));
        added->setRoomFor(PanelRoom.at(i));
        added->setAccessibleDescription(tr(Descriptions.at(i)));
        added->setAccessibleName(added->accessibleDescription());
        bar.addPermanentWidget(added, i == 0 ? 1 : 0);
        connect(added, &StatusPanel::doubleClicked, this, [this, added] { Q_EMIT textWanted(added->text()); });
        connect(added, &StatusPanel::left, this, &StatusPanels::left);
        m_panels.at(i) = added;
    }
}

void StatusPanels::putPictures() {
    panel(Size)->setPicture(Icons::named("countall"));
    panel(LastUpdate)->setPicture(Icons::named("save"));
}

void StatusPanels::ShowCursorPosition(const frmDocument* document) {
    panel(Position)->setText(document->GetCursorPos());
}

void StatusPanels::ShowDocumentInfo(const frmDocument* document) {
    QString lastUpdate;
    QString size;
    document->LastUpdateTime(lastUpdate, size);
    panel(LastUpdate)->setText(lastUpdate);
    panel(Size)->setText(size);
}

void StatusPanels::ShowLimitations(const frmDocument* document) {
    m_limitations = document->limitations();
    showFirst();
}

/// In hex mode no command is repeated.
void StatusPanels::ShowRepeatCount(const frmDocument* document) {
    const int times = document->TextEdit() ? document->GetEditor()->repeatCount() : 1;
    m_repeatCount =
        times == 1 ? QString() : tr("The next command or key is done %1 times. Esc cancels this.").arg(times);
    showFirst();
}

void StatusPanels::ShowNotice(const QString& text) {
    m_notice = text;
    showFirst();
}

void StatusPanels::ShowPassingNotice(const QString& text) {
    ShowNotice(text);
    QTimer::singleShot(PassingTime, this, [this, text] {
        if (m_notice == text)
            ShowNotice({});
    });
}

void StatusPanels::ShowRecording(const QString& text) {
    m_recording = text;
    showFirst();
}

void StatusPanels::showFirst() {
    const auto texts = {&m_notice, &m_repeatCount, &m_recording, &m_limitations};
    const auto* const shown = std::ranges::find_if_not(texts, [](const QString* text) { return text->isEmpty(); });
    panel(First)->setText(shown == texts.end() ? QString() : **shown);
}

void StatusPanels::clear() {
    for (StatusPanel* each : m_panels)
        each->setText(QString());
    m_notice.clear();
    m_repeatCount.clear();
    m_limitations.clear();
    showFirst();
}

QString StatusPanels::text(int panelNumber) const {
    return panel(panelNumber)->text();
}
