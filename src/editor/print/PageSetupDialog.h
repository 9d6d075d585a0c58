#pragma once

#include <QDialog>
#include <QPageLayout>

#include <array>

class QComboBox;
class QDoubleSpinBox;
class QRadioButton;

/// The page set-up: paper, orientation and margins, for any printer or none. Owned by the code that shows it, modal.
/// Margins are shown in the unit of the country and are limited so that a part of the page is left.
class PageSetupDialog : public QDialog {
    Q_OBJECT

 public:
    explicit PageSetupDialog(const QPageLayout& layout, QWidget* parent = nullptr);

    /// What the controls say, in millimetres.
    QPageLayout layoutChosen() const;

 private:
    static constexpr int Sides = 4;

    QWidget* makePaperBox(const QPageLayout& layout);
    QWidget* makeMarginBox(const QPageLayout& layout);
    void limitMargins();
    void addPapers(const QPageLayout& layout);

    QComboBox* m_paper;
    QRadioButton* m_portrait;
    QRadioButton* m_landscape;
    std::array<QDoubleSpinBox*, Sides> m_margins{};  ///< left, top, right, bottom
    bool m_inInches;
};
