#pragma once

#include <QDialog>

#include <array>

class QRadioButton;

/// Asks what to do with the changes before a document switches between text and hex. Modal; created for one question by
/// the document.
class frmSwitch : public QDialog {
    Q_OBJECT
    Q_PROPERTY(bool Result MEMBER Result)

 public:
    /// `toText`: the switch is to text mode, else to hex mode.
    explicit frmSwitch(bool toText, QWidget* parent = nullptr);

    /// Whether the document should switch.
    bool Result = false;
    /// Save first, or discard the changes.
    bool savesFirst() const;

    void accept() override;
    void reject() override;

 private:
    std::array<QRadioButton*, 2> m_options{};
};
