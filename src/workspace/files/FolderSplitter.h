#pragma once

#include <QSplitter>

/// The folder tree above the file list, with the movable bar between them. The bar is moved with the mouse or, while it
/// has the focus, with the arrow keys. Owned by the file explorer.
class FolderSplitter : public QSplitter {
    Q_OBJECT

 public:
    explicit FolderSplitter(QWidget* parent = nullptr);

    /// Moves the bar by so many pixels, as far as both sides allow.
    void moveBar(int pixels);

 protected:
    QSplitterHandle* createHandle() override;
};
