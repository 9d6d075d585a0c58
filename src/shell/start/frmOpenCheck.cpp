#include "shell/start/frmOpenCheck.h"

#include <QGuiApplication>

#include <utility>

frmOpenCheck::frmOpenCheck() {
    setObjectName(u"frmOpenCheck"_qs);
    setWindowTitle(u"QuillmarkOpen"_qs);
}

frmOpenCheck::~frmOpenCheck() {
    Unhook();
}

void frmOpenCheck::Hook(std::function<void()> activated) {
    Unhook();
    m_connection = connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
                           [activated = std::move(activated)](Qt::ApplicationState state) {
                               if (state == Qt::ApplicationActive)
                                   activated();
                           });
}

void frmOpenCheck::Unhook() {
    disconnect(m_connection);
    m_connection = {};
}
