#include "document/HexView.h"

#include "document/DocumentServices.h"
#include "hex/bytes/HexNeedle.h"
#include "hex/ucHex.h"
#include "platform/Paths.h"
#include "widgets/Prompts.h"

#include <QScrollArea>
#include <QScrollBar>

namespace {

/// Of the two panes, by the number of its grid.
constexpr int TextPane = 2;

void showCursor(QScrollArea& area, const QRect& cursor) {
    const QPoint middle = cursor.center();
    area.ensureVisible(middle.x(), middle.y(), cursor.width() / 2 + 1, cursor.height() / 2 + 1);
}

/// Where the byte view is scrolled. After a change of its size the left end is shown, as far as the cursor allows.
class ByteArea : public QScrollArea {
 public:
    explicit ByteArea(QWidget* parent) : QScrollArea(parent) {}

    void hold(ucHex* control) {
        m_control = control;
        setWidget(control);
    }

 protected:
    void resizeEvent(QResizeEvent* event) override {
        QScrollArea::resizeEvent(event);
        if (m_control == nullptr)
            return;
        horizontalScrollBar()->setValue(0);
        showCursor(*this, m_control->cursorRect());
    }

 private:
    ucHex* m_control = nullptr;
};

}  // namespace

HexView::HexView(const DocumentServices& services, QWidget* parent)
    : m_prompts(services.prompts),
      m_area(new ByteArea(parent)),
      m_control(new ucHex(services.prompts, services.options, services.hexFind, parent, services.hexStorage)) {
    m_control->setObjectName(u"ucHex1"_qs);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setWidgetResizable(true);
    static_cast<ByteArea*>(m_area)->hold(m_control);
    m_area->setFocusPolicy(Qt::NoFocus);
    m_area->setFocusProxy(m_control);
    QObject::connect(m_control, &ucHex::PositionChanged, m_area,
                     [area = m_area, control = m_control] { showCursor(*area, control->cursorRect()); });
}

void HexView::finishTyping() {
    m_control->finishNibble();
}

QWidget* HexView::viewWidget() {
    return m_area;
}

bool HexView::load(const QString& path) {
    return m_control->OpenFile(path);
}

/// An unmodified view is written too when its file is not there any more. One that has loaded nothing has nothing that
/// a file could get.
bool HexView::save(const QString& path, int, bool force) {
    if (!hasContent()) {
        m_prompts.message(m_area, path + u"\nNothing was saved, because no bytes are loaded."_qs);
        return false;
    }
    return m_control->SaveFile(path, force || !isNormalFile(path));
}

bool HexView::maySave() {
    return m_control->maySave();
}

bool HexView::isModified() const {
    return m_control->FileOpen() && m_control->Modified();
}

bool HexView::hasContent() const {
    return m_control->FileOpen();
}

QString HexView::limitations() const {
    return m_control->limitations();
}

bool HexView::Locked() const {
    return m_control->Locked();
}

void HexView::setLocked(bool locked) {
    finishTyping();
    m_control->setLocked(locked);
}

void HexView::Undo() {
    m_control->cmdUndo();
}

void HexView::Copy() {
    m_control->cmdCopy();
}

void HexView::Find() {
    m_control->FindDialog();
}

void HexView::ReplaceText() {
    m_control->ReplaceDialog();
}

bool HexView::FindNext(const QString& text) {
    return m_control->FindNextStr(text);
}

bool HexView::FindPrev(const QString& text) {
    return m_control->FindPrevStr(text);
}

bool HexView::FindText(const QString& text, bool, bool caseSensitive, bool) {
    const HexFindType byCase = caseSensitive ? HexFindType::ExactCase : HexFindType::AnyCase;
    const HexFindType type = m_control->ActiveGrid() == TextPane ? byCase : HexFindType::Bytes;
    return m_control->FindDown(text, static_cast<qint16>(type)) >= 0;
}

bool HexView::wasSearchStopped() const {
    return m_control->wasSearchStopped();
}

void HexView::ToggleBookmark() {
    m_control->cmdBookmark();
}

void HexView::NextBookmark() {
    m_control->cmdNextBookmark();
}

void HexView::PrevBookmark() {
    m_control->cmdPreviousBookmark();
}

void HexView::BookmarkFirst() {
    m_control->cmdFirstBookmark();
}

void HexView::BookmarkLast() {
    m_control->cmdLastBookmark();
}

void HexView::ClearAllBookmark() {
    m_control->cmdClearBookmark();
}

QString HexView::GetCursorPos() const {
    return m_control->FileOpen() ? m_control->GetCursorPos() : QString();
}
