#include "shell/bars/DocumentTabs.h"

#include "document/frmDocument.h"
#include "platform/Paths.h"
#include "platform/Yield.h"
#include "shell/bars/TabStrip.h"
#include "shell/documents/MdiChildren.h"
#include "widgets/Icons.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>

namespace {

constexpr int NormalImage = 1;
constexpr int ChangedImage = 2;
constexpr int LockedImage = 3;

/// What a screen reader speaks after the tab's caption, by image.
QString spokenState(int image) {
    switch (image) {
        case ChangedImage:
            return u", changed"_qs;
        case LockedImage:
            return u", locked"_qs;
        default:
            return {};
    }
}

/// A tab reads "&" as the mark of its key.
QString tabText(QString caption) {
    return caption.replace(u'&', QLatin1String("&&"));
}

QString captionOf(const QString& tabText) {
    QString caption = tabText;
    return caption.replace(QLatin1String("&&"), QLatin1String("&"));
}

}  // namespace

DocumentTabs::DocumentTabs(TabStrip& strip, MdiChildren& children)
    : QObject(&strip),
      m_strip(strip),
      m_children(children),
      m_images{Icons::named("doc-normal"), Icons::named("doc-changed"), Icons::named("doc-locked")} {
    connect(&strip, &TabStrip::currentChanged, this, &DocumentTabs::TabClick);
    connect(&strip, &TabStrip::tabBarClicked, this, &DocumentTabs::bringBack);
}

void DocumentTabs::clear() {
    const QSignalBlocker silent(m_strip);
    while (m_strip.count() > 0)
        m_strip.removeTab(0);
}

void DocumentTabs::AddDocumentTab(const frmDocument* document) {
    {
        const QSignalBlocker silent(m_strip);  // a first tab is selected before it has a key
        const int index = m_strip.addTab(tabText(document->Caption()));
        m_strip.setTabData(index, document->fIdx);
        m_strip.setTabToolTip(index, document->filename);
        setImage(index, NormalImage);
        nameForReaders(index);
    }
    const int index = indexOf(document->fIdx);
    if (index == m_strip.currentIndex())
        TabClick(index);
    else
        select(index);
}

void DocumentTabs::DelTab(const frmDocument* document) {
    const int index = indexOf(document->fIdx);
    if (index < 0)
        return;
    const QSignalBlocker silent(m_strip);  // the child windows decide which one is next
    m_strip.removeTab(index);
}

void DocumentTabs::SetTabCaption(const frmDocument* document) {
    const int index = indexOf(document->fIdx);
    if (index < 0)
        return;
    const QString name = FileNameOf(document->filename);
    if (!name.isEmpty())
        m_strip.setTabText(index, tabText(name));
    m_strip.setTabToolTip(index, document->filename);
    setImage(index, imageFor(document));
    nameForReaders(index);
}

int DocumentTabs::count() const {
    return m_strip.count();
}

void DocumentTabs::select(int index) {
    m_strip.setCurrentIndex(index);
}

void DocumentTabs::selectKey(const QString& key) {
    const int index = indexOf(key);
    // When a document closes, its neighbour's tab is selected before that document is activated.
    if (index >= 0 && index == m_strip.currentIndex() && !m_inClick) {
        Q_EMIT chosen(key);
        return;
    }
    const QScopedValueRollback follows(m_followsWindow, true);
    select(index);
}

int DocumentTabs::indexOf(const QString& key) const {
    for (int i = 0; i < m_strip.count(); ++i) {
        if (m_strip.tabData(i).toString() == key)
            return i;
    }
    return -1;
}

int DocumentTabs::image(int index) const {
    const qint64 shown = m_strip.tabIcon(index).cacheKey();
    for (size_t i = 0; i < m_images.size(); ++i) {
        if (!m_images.at(i).isNull() && m_images.at(i).cacheKey() == shown)
            return static_cast<int>(i) + 1;
    }
    return 0;
}

int DocumentTabs::imageFor(const frmDocument* document) {
    if (document->Locked())
        return LockedImage;
    return document->isChange ? ChangedImage : NormalImage;
}

void DocumentTabs::setImage(int index, int image) {
    if (this->image(index) != image)
        m_strip.setTabIcon(index, m_images.at(static_cast<size_t>(image - 1)));
}

void DocumentTabs::nameForReaders(int index) {
    m_strip.setAccessibleTabName(index, captionOf(m_strip.tabText(index)) + spokenState(image(index)));
}

void DocumentTabs::TabClick(int index) {
    if (m_inClick)
        return;
    frmDocument* document = m_children.byKey(m_strip.tabData(index).toString());
    if (document == nullptr)
        return;
    const QString key = document->fIdx;
    m_inClick = true;
    // A window that was just minimised becomes the active one; bringing it forward would undo that.
    if (document != m_children.active())
        m_children.bringToFront(document);
    Q_EMIT chosen(key);
    if (!m_followsWindow)
        yieldOnce();
    m_inClick = false;
}

void DocumentTabs::bringBack(int index) {
    frmDocument* document = m_children.byKey(m_strip.tabData(index).toString());
    if (document == nullptr || index != m_strip.currentIndex())
        return;
    m_children.bringToFront(document);
    document->setFocus();
}
