#include "workspace/files/FolderSplitter.h"

#include "widgets/PlainKey.h"

#include <QPainter>

namespace {

/// Pixels of one arrow key.
constexpr int Step = 10;

class Bar : public QSplitterHandle {
 public:
    explicit Bar(FolderSplitter* splitter) : QSplitterHandle(Qt::Vertical, splitter), m_splitter(*splitter) {
        setAccessibleName(u"Border between folders and files"_qs);
        setFocusPolicy(Qt::TabFocus);
    }

 protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (isPlainKey(*event) && event->key() == Qt::Key_Up)
            m_splitter.moveBar(-Step);
        else if (isPlainKey(*event) && event->key() == Qt::Key_Down)
            m_splitter.moveBar(Step);
        else
            QSplitterHandle::keyPressEvent(event);
    }
    void focusInEvent(QFocusEvent* event) override {
        QSplitterHandle::focusInEvent(event);
        update();
    }
    void focusOutEvent(QFocusEvent* event) override {
        QSplitterHandle::focusOutEvent(event);
        update();
    }
    void paintEvent(QPaintEvent* event) override {
        QSplitterHandle::paintEvent(event);
        if (!hasFocus())
            return;
        QPainter painter(this);
        painter.fillRect(rect(), palette().color(QPalette::Highlight));
    }

 private:
    FolderSplitter& m_splitter;
};

}  // namespace

FolderSplitter::FolderSplitter(QWidget* parent) : QSplitter(Qt::Vertical, parent) {
    setChildrenCollapsible(false);
}

void FolderSplitter::moveBar(int pixels) {
    moveSplitter(handle(1)->y() + pixels, 1);
}

QSplitterHandle* FolderSplitter::createHandle() {
    return new Bar(this);
}
