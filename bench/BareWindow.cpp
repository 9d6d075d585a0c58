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

/// Menus and buttons in the number an editor has, none of which does anything.
void fill(QMainWindow& window) {
    static constexpr int menus = 8;
    static constexpr int entries = 12;
    static constexpr int buttons = 24;
    for (int menu = 0; menu < menus; ++menu) {
        QMenu* popup = window.menuBar()->addMenu(QStringLiteral("Menu %1").arg(menu));
        for (int entry = 0; entry < entries; ++entry)
            popup->addAction(QStringLiteral("Entry %1").arg(entry));
    }
    QToolBar* bar = window.addToolBar(QStringLiteral("Tools"));
    for (int button = 0; button < buttons; ++button)
        bar->addAction(window.style()->standardIcon(static_cast<QStyle::StandardPixmap>(button)), QString());
}

}  // namespace

/// The least that a window of this kind can cost: menus, a tool bar, a text field and a status bar.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    fill(window);
    window.setCentralWidget(new QPlainTextEdit(QStringLiteral("A text field"), &window));
    window.statusBar()->showMessage(QStringLiteral("Ready"));
    window.resize(1000, 680);
    window.show();
    return QApplication::exec();
}
