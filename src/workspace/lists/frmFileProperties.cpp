#include "workspace/lists/frmFileProperties.h"

bool ShowProperties(const QString&, Prompts&, QWidget*) {
    return false;
}
