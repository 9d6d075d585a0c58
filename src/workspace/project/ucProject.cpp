#include "workspace/project/ucProject.h"

ucProject::ucProject(const WorkspaceServices& services, QWidget* parent) : QWidget(parent), m_services(services) {
    setObjectName(u"ucProject1"_qs);
}

ucProject::~ucProject() = default;

void ucProject::AddProjectItem(const QString&, const QString&) {}
void ucProject::PjtItem(int, QString&, QString&) const {}
int ucProject::PjtItemCount() const {
    return 0;
}
void ucProject::ClearProject() {}
void ucProject::setDefaultSysIcon(bool) {}
