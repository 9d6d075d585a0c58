#pragma once

#include <QIcon>
#include <QObject>

#include <array>

class MdiChildren;
class TabStrip;
class frmDocument;

/// The tab strip, kept in step with the child windows: one tab a document, identified by its key (the tab's data).
/// Owned by the strip. A tab click runs the event loop once; a guard ignores clicks that the click itself causes.
class DocumentTabs : public QObject {
    Q_OBJECT

 public:
    DocumentTabs(TabStrip& strip, MdiChildren& children);

    /// Empties the strip.
    void clear();
    /// A tab at the end, selected.
    void AddDocumentTab(const frmDocument* document);
    void DelTab(const frmDocument* document);
    /// Updates caption, tool tip and image from the document.
    void SetTabCaption(const frmDocument* document);

    int count() const;
    /// Selects the tab of a document that has become the active one. Does not yield: this may happen while a window is
    /// being shown, when Qt walks over children that a yield could destroy.
    void selectKey(const QString& key);
    int indexOf(const QString& key) const;
    /// 1 normal, 2 changed, 3 locked; 0 for no such tab.
    int image(int index) const;

    /// The image of a document by its state, the lock before the change.
    static int imageFor(const frmDocument* document);

 Q_SIGNALS:
    /// A document was chosen by its tab.
    void chosen(const QString& key);

 private:
    void select(int index);
    void TabClick(int index);
    /// A click on the selected tab: its window may be minimised.
    void bringBack(int index);
    void setImage(int index, int image);
    void nameForReaders(int index);

    TabStrip& m_strip;
    MdiChildren& m_children;
    std::array<QIcon, 3> m_images;
    bool m_inClick = false;
    bool m_followsWindow = false;  ///< the tab is selected because its document was activated
};
