#include "shell/start/frmOpenCheck.h"

#include "platform/InstanceLock.h"

#include <QGuiApplication>

#include <utility>

frmOpenCheck::frmOpenCheck(InstanceLock* lock, HandOverEndpoint::Kind kind) {
    setObjectName(u"frmOpenCheck"_qs);
    setWindowTitle(u"QuillmarkOpen"_qs);
    if (lock == nullptr)
        return;
    m_endpoint = std::make_unique<HandOverEndpoint>(*lock, kind);
    connect(m_endpoint.get(), &HandOverEndpoint::received, this, [this](const QString& path) {
        if (m_arrived)
            m_arrived(path);
    });
}

frmOpenCheck::~frmOpenCheck() {
    Unhook();
}

void frmOpenCheck::Hook(std::function<void()> activated, std::function<void(const QString& path)> arrived) {
    Unhook();
    m_arrived = std::move(arrived);
    m_activation = connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
                           [activated = std::move(activated)](Qt::ApplicationState state) {
                               if (state == Qt::ApplicationActive)
                                   activated();
                           });
}

void frmOpenCheck::Unhook() {
    disconnect(m_activation);
    m_activation = {};
    m_arrived = nullptr;
}
