#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>

namespace {

/// Adds as many menus and buttons as an editor has; they have no function.
void fill(QMainWindow& window) {
    static constexpr int Menus = 8;
    static constexpr int Entries = 12;
    static constexpr int Buttons = 24;
    for (int menu = 0; menu < Menus; ++menu) {
        QMenu* popup = window.menuBar()->addMenu(u"Menu %1"_qs.arg(menu));
        for (int entry = 0; entry < Entries; ++entry)
            popup->addAction(u"Entry %1"_qs.arg(entry));
    }
    QToolBar* bar = window.addToolBar(u"Tools"_qs);
    for (int button = 0; button < Buttons; ++button)
        bar->addAction(window.style()->standardIcon(static_cast<QStyle::StandardPixmap>(button)), QString());
}

}  // namespace

/// The smallest window for comparison: menus, a tool bar, a text field and a status bar.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    fill(window);
    window.setCentralWidget(new QPlainTextEdit(u"A text field"_qs, &window));
    window.statusBar()->showMessage(u"Ready"_qs);
    window.resize(1000, 680);
    window.show();
    return QApplication::exec();
}
