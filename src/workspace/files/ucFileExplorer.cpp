#include "workspace/files/ucFileExplorer.h"

ucFileExplorer::ucFileExplorer(const WorkspaceServices& services, QWidget* parent)
    : QWidget(parent), m_services(services) {
    setObjectName(u"ucFileExplorer1"_qs);
}

ucFileExplorer::~ucFileExplorer() = default;

void ucFileExplorer::InitObjects() {}
void ucFileExplorer::LoadFavorites() {}
void ucFileExplorer::LoadRecent() {}
void ucFileExplorer::RefreshView() {}
void ucFileExplorer::GotoPath(const QString&) {}
void ucFileExplorer::GotoFilePath(const QString&) {}
void ucFileExplorer::OpenSelectedFiles() {}
void ucFileExplorer::DeleteSelectedFiles() {}
QString ucFileExplorer::selectedKey() const {
    return {};
}
void ucFileExplorer::ClearFileExplorer() {}
void ucFileExplorer::mySetFocus() {}
void ucFileExplorer::myLostFocus() {}
void ucFileExplorer::setDefaultSysIcon(bool) {}
