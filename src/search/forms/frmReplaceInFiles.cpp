#include "search/forms/frmReplaceInFiles.h"

#include <QComboBox>

frmReplaceInFiles::frmReplaceInFiles(Prompts& prompts, QWidget* parent)
    : SearchDialog({"frmReplaceInFiles", "Replace in Files", "Replace In", "Replace &All"}, prompts, parent),
      m_replacement(addTerm({"cmbReplace", "&Replace:", "infiles_replace.txt", "The text to put in its place"})) {
    addCondition({"chkPreserve", "Preser&ve case", "The new text takes the upper and lower case of the old one"}, 1,
                 m_preserveCase);
    addCondition({"chkChanged", "List C&hanged Files", "Show the replaced texts in the panel of the results"}, 1,
                 m_listsResults);
}

SearchRequest frmReplaceInFiles::request() const {
    SearchRequest request = SearchDialog::request();
    request.replaces = true;
    request.replacement = m_replacement->currentText();
    request.preserveCase = m_preserveCase;
    request.listsResults = m_listsResults;
    return request;
}
