#pragma once

#include "editor/windows/MatchHighlight.h"

#include <QWidget>

#include <memory>

class TextControl;
class KeptView;
class QHBoxLayout;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QToolButton;
enum class SearchOutcome;

/// The slim bar under the text for searching while typing. It uses the control's flags. Enter and F3 move to the next
/// match, with Shift to the one before; Escape moves the caret back to its start and closes the bar; its button, and
/// Escape in the text, close it and leave the match selected. A child of the control.
class IncrementalSearchBar : public QWidget {
    Q_OBJECT

 public:
    explicit IncrementalSearchBar(TextControl& control);
    ~IncrementalSearchBar() override;

    /// Opens the bar to search from the caret. If it is open already, it takes this direction and moves to the next
    /// match.
    void begin(bool backwards);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    QToolButton* addButton(QHBoxLayout& row, const QString& name, const QString& caption, Qt::ArrowType arrow);
    void setDirection(bool backwards);
    void searchTyped(const QString& text);
    SearchOutcome findTyped();
    void goOn(bool backwards);
    void report(SearchOutcome outcome, bool backwards);
    void giveBack();
    qsizetype recordedSteps() const;
    void goBackTo(qint64 position, qsizetype stepsThen);
    void cutRecording(qsizetype stepsThen);
    void finish();
    void act(const QKeyEvent& key);

    TextControl& m_control;
    QLabel* m_caption;
    QLineEdit* m_text;
    QLabel* m_result;
    std::unique_ptr<MatchHighlight::Hold> m_highlight;
    bool m_backwards = false;
    std::unique_ptr<KeptView> m_atFirst;
    qint64 m_from = 0;             ///< a match begins there, and further typing may extend it
    bool m_standsOnMatch = false;  ///< there, so that further typing may extend it
    // Steps of a recording when the bar was opened, and when the typed text was begun.
    qsizetype m_stepsAtFirst = 0;
    qsizetype m_stepsFrom = 0;
};
