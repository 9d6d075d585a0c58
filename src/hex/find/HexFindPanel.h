#pragma once

#include "hex/bytes/HexNeedle.h"
#include "hex/find/HexFindDesk.h"
#include "hex/find/HexFindRules.h"

#include <QWidget>

#include <array>

class HexFindTarget;
class KeyFilterEdit;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

/// One page of the find and replace form: a term with its history, where to search, and the buttons that do it. Works
/// on the target that was set last and does nothing without one. Input that can't be bytes is refused with a message on
/// the page itself; results are shown in boxes, which run the event loop: form and target may be destroyed meanwhile.
/// Owned by the form, which is destroyed with the target.
class HexFindPanel : public QWidget {
    Q_OBJECT

 public:
    /// The rules outlive it.
    HexFindPanel(const HexFindRules& rules, const HexFindDesk& desk, QWidget* parent = nullptr);

    /// Sets the target and whether it is locked; loads the histories, and the shared setting for the case.
    virtual void InitControl(HexFindTarget* target, bool locked);
    void letGoOfTarget();

    /// The term gets the keyboard, selected whole.
    void focusTerm();
    /// The button that Enter presses unless another control handles the key.
    QPushButton* findButton() const { return m_findNext; }

 Q_SIGNALS:
    /// The user changed the term.
    void termEdited();

 protected:
    const HexFindRules& rules() const { return m_rules; }
    const HexFindDesk& desk() const { return m_desk; }
    HexFindTarget* target() const;

    /// One below the others, with a label and the name of its file as its tag. Tab reaches it after the term.
    QComboBox* addBox(const char* name, const char* label, const char* history);
    QPushButton* addButton(const char* name, const char* caption, const char* shortcut);
    static KeyFilterEdit* editOf(const QComboBox* box);

    QString term() const;
    HexFindType findType() const;
    int foundAt() const { return m_foundAt; }
    void forgetFound() { m_foundAt = NothingFound; }

    /// Whether all boxes can be worked with; one that can't has the keyboard then.
    virtual bool checkInput();
    bool checkBox(QComboBox* box);
    /// Just before each search.
    virtual void fitReplacement() {}
    virtual void keepMatch() {}
    virtual void keepHistories();

    enum class Outcome { Found, Missed, Ended };
    /// A match is kept. Ended: the user stopped the search, which the page says, or this object was destroyed
    /// meanwhile.
    Outcome searchOn();
    /// Says on the page that the user stopped a search, after so many matches.
    void reportStop(int matches);
    /// `completed` when a match was found before.
    void reportMiss(const QString& completed);
    /// Shows a box and keeps the histories if the form still exists.
    void report(const QString& text);

 protected Q_SLOTS:
    void cmdFindNext();

 private Q_SLOTS:
    void cmdCount();
    void cmdMarkAll();

 private:
    static constexpr int NothingFound = 0;

    QGroupBox* addOptions(const char* title, const char* name, const std::array<const char*, 2>& captions,
                          std::array<QRadioButton*, 2>& options);
    int search() const;
    void say(const QString& text);
    void reportNumber(const char* text, int (HexFindTarget::*work)(const QString&, qint16));
    bool refuse(QComboBox* box, const QString& why);

    const HexFindRules& m_rules;
    HexFindDesk m_desk;
    HexFindTarget* m_target = nullptr;
    int m_foundAt = NothingFound;  ///< position of the last match

    QVBoxLayout* m_boxes;
    QVBoxLayout* m_buttons;
    QLabel* m_refusal;
    QComboBox* m_term = nullptr;
    QPushButton* m_findNext = nullptr;
    std::array<QRadioButton*, 2> m_direction{};
    std::array<QRadioButton*, 2> m_case{};
};
