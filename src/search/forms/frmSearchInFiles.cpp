#include "search/forms/frmSearchInFiles.h"

frmSearchInFiles::frmSearchInFiles(Prompts& prompts, QWidget* parent)
    : SearchDialog({"frmSearchInFiles", "Find in Files", "Search In", "&Find"}, prompts, parent) {}
