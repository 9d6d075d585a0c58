#pragma once

#include "search/forms/SearchDialog.h"

/// Asks what to replace in many files, and by what.
class frmReplaceInFiles : public SearchDialog {
    Q_OBJECT
    Q_PROPERTY(bool PreserveCase MEMBER m_preserveCase)
    Q_PROPERTY(bool ListResult MEMBER m_listsResults)

 public:
    explicit frmReplaceInFiles(Prompts& prompts, QWidget* parent = nullptr);

    SearchRequest request() const override;

 private:
    bool m_preserveCase = false;
    bool m_listsResults = false;
    QComboBox* m_replacement;
};
