#pragma once

#include "hex/find/HexFindPanel.h"

/// A page that replaces what it finds. Owned by the form.
class HexReplacePanel : public HexFindPanel {
    Q_OBJECT

 public:
    HexReplacePanel(const HexFindRules& rules, const HexFindDesk& desk, QWidget* parent = nullptr);

    void InitControl(HexFindTarget* target, bool locked) override;

 protected:
    bool checkInput() override;
    void fitReplacement() override;
    void keepMatch() override;
    void keepHistories() override;

 private Q_SLOTS:
    void cmdReplace();
    void cmdReplaceAll();

 private:
    /// The term's tail after a shorter replacement.
    void fillReplacement();
    /// The replacement as blank-separated hex digits.
    QString hexText() const;
    /// The tag of the button shows it.
    void setMatchWaits(bool waits);

    QComboBox* m_replacement;
    QPushButton* m_replace;
    QPushButton* m_replaceAll;
    bool m_matchWaits = false;  ///< to be replaced
};
