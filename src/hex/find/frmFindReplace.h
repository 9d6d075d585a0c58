#pragma once

#include "hex/find/HexFindDesk.h"

#include <QDialog>

#include <array>

class HexFindPanel;
class HexFindTarget;
class QTabWidget;

/// Finds and replaces in a hex view: four pages on a tab strip, all working on the same target. Modal; made for one use
/// by the view, and destroyed with it. Its boxes run the event loop.
class frmFindReplace : public QDialog {
    Q_OBJECT

 public:
    explicit frmFindReplace(const HexFindDesk& desk, QWidget* parent = nullptr);

    /// `key`: "ReplaceHex", "ReplaceText", "FindText" or "FindHex". Nothing is replaced in a locked target.
    void InitControl(HexFindTarget* target, const QString& key, const QString& caption, bool locked);

    void done(int result) override;

 private:
    void showPage(int index);

    QTabWidget* m_tabs;
    std::array<HexFindPanel*, 4> m_pages;
};
