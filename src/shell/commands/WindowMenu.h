#pragma once

#include <QList>
#include <QObject>

class MdiChildren;
class QAction;
class QMenu;
class frmDocument;

/// The window list: the first nine child windows below the other entries of the window menu, the active one checked; it
/// is in the ninth place when it is a later one. Created again each time the menu opens. Owned by the menu.
class WindowMenu : public QObject {
    Q_OBJECT

 public:
    WindowMenu(QMenu& menu, MdiChildren& children);

 private:
    QList<frmDocument*> listedDocuments() const;
    void refill();

    QMenu& m_menu;
    MdiChildren& m_children;
    QList<QAction*> m_added;
};
