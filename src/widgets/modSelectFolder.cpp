#include "widgets/modSelectFolder.h"

#include "widgets/Prompts.h"

QString SelectFolderDialog(Prompts& prompts, QWidget* pOwner, const QString& pTitle) {
    return prompts.askFolder(pOwner, pTitle);
}
