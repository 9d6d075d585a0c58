#pragma once

#include "hex/find/HexFindDesk.h"

#include <QDialog>

#include <array>

class HexFindPanel;
class QTabWidget;
class ucHex;

/// Finds and replaces in a hex view: four pages on a tab strip, all working on the same view. Modal; made for one use
/// by the view, and goes with it. Its boxes run the event loop.
class frmFindReplace : public QDialog {
    Q_OBJECT

 public:
    explicit frmFindReplace(const HexFindDesk& desk, QWidget* parent = nullptr);

    /// `key`: "ReplaceHex", "ReplaceText", "FindText" or "FindHex". A locked view has nothing replaced in it.
    void InitControl(ucHex* view, const QString& key, const QString& caption, bool locked);

    void done(int result) override;

 private:
    void showPage(int index);

    QTabWidget* m_tabs;
    std::array<HexFindPanel*, 4> m_pages;
};
