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

/// The slim bar under the text in which one searches while typing. The control's flags count. Enter and F3 go to the
/// next match, with Shift to the one before; Escape gives the caret back and closes the bar, its button and Escape in
/// the text close it where the search has come to. A child of the control.
class IncrementalSearchBar : public QWidget {
    Q_OBJECT

 public:
    explicit IncrementalSearchBar(TextControl& control);
    ~IncrementalSearchBar() override;

    /// Opens the bar to search from the caret. When it is open already it turns that way and goes a match further.
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
    qint64 m_from = 0;             ///< position from which the typed text is searched
    bool m_standsOnMatch = false;  ///< there, so that what is typed may make it longer
    // Steps of a recording when the bar was opened, and when the typed text was begun.
    qsizetype m_stepsAtFirst = 0;
    qsizetype m_stepsFrom = 0;
};
