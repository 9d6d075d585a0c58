#pragma once

#include <QIcon>
#include <QObject>

#include <array>

class PanelLink;
class MdiChildren;
class TabStrip;
class frmDocument;

/// The tab strip in step with the child windows: one tab a document, told apart by its key (the tab's data). Owned by
/// the frame. A tab click yields once; clicks that the click itself brings about are passed over by a guard.
class DocumentTabs : public QObject {
    Q_OBJECT

 public:
    DocumentTabs(TabStrip& strip, MdiChildren& children, PanelLink& explorer);

    /// Empties the strip.
    void clear();
    /// A tab at the end, selected.
    void AddDocumentTab(const frmDocument* document);
    void DelTab(const frmDocument* document);
    /// Brings caption, tool tip and image in line with the document, and the panel's row with the tab.
    void SetTabCaption(const frmDocument* document);

    int count() const;
    int selected() const;
    /// Selects a tab; its document comes to the front.
    void select(int index);
    void selectKey(const QString& key);
    int indexOf(const QString& key) const;
    /// 1 normal, 2 changed, 3 locked; 0 for no such tab.
    int image(int index) const;

    /// The image of a document by its state, the lock before the change.
    static int imageFor(const frmDocument* document);

 private:
    void TabClick(int index);
    /// A click on the selected tab: its window may be minimised.
    void bringBack(int index);
    void setImage(int index, int image);
    void nameForReaders(int index);

    TabStrip& m_strip;
    MdiChildren& m_children;
    PanelLink& m_explorer;
    std::array<QIcon, 3> m_images;
    bool m_inClick = false;
};
