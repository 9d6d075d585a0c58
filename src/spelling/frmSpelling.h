#pragma once

#include "spelling/check/SpellingSession.h"
#include "spelling/dictionary/Dictionary.h"
#include "spelling/words/OwnWords.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include <cstddef>
#include <vector>

class Prompts;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTextEdit;

/// The form of a spell check: shows each mistake in its line, with what it could be changed to, until the text has no
/// more or the user ends the check. Owned by the code that shows it.
///
/// run() runs the event loop; the form may be destroyed meanwhile. Large texts are checked in short steps, between
/// which it answers.
class frmSpelling : public QDialog {
    Q_OBJECT

 public:
    /// Begins with the dictionary of that index; the list must not be empty.
    frmSpelling(const QString& text, std::vector<Dictionary> dictionaries, std::size_t first, Prompts& prompts,
                QWidget* parent = nullptr);
    ~frmSpelling() override;

    /// Returns when the check is over. The form is shown only if there is something to decide, or to wait for. False:
    /// the dictionary failed, see error().
    bool run();
    const QString& error() const { return m_error; }
    const SpellingSession& session() const { return m_session; }

 Q_SIGNALS:
    /// The user has chosen this dictionary, and it is loaded.
    void dictionaryChosen(const QString& name);

 public Q_SLOTS:
    /// Ends the check; what was corrected stays.
    void done(int result) override;

 protected:
    void changeEvent(QEvent* event) override;

 private:
    QLayout* makeFields();
    QLayout* makeButtons();
    QPushButton* makeButton(const char* name, const char* caption, const char* toolTip, void (frmSpelling::*clicked)());
    void setFieldName(QWidget& field, const char* name, QLabel& label);
    void connectFields();

    void beginHidden();
    void work();
    void goOn();
    void showState(SpellingSession::State state);
    void showMistake();
    void showContext();
    void showSuggestions();
    void showWait();
    void setWaiting(bool waiting);
    void enableButtons();
    void settleFailure();
    bool tryAnotherDictionary();
    void takeWorkingDictionary();
    qint64 lineOfMistake();

    void change();
    void changeAll();
    void ignore();
    void ignoreAll();
    void add();
    void undo();
    void decided();
    void chooseDictionary(int index);

    Prompts& m_prompts;
    std::vector<Dictionary> m_dictionaries;
    OwnWords m_ownWords;
    SpellingSession m_session;
    std::size_t m_current;         ///< the dictionary in use
    std::size_t m_working;         ///< the last one that could be loaded; behind the list: none yet
    std::vector<bool> m_isBroken;  ///< dictionaries that could not be loaded
    QString m_error;               ///< of the last dictionary that failed
    bool m_hasFailed = false;
    QTimer m_timer;
    QElapsedTimer m_sinceDecision;
    bool m_isWaiting = false;
    QPointer<QWidget> m_focusBefore;
    qsizetype m_countedTo = 0;  ///< position up to which lines were counted
    qint64 m_countedLines = 1;
    WordSpan m_shown;
    bool m_hasSuggestions = false;

    QTextEdit* m_context = nullptr;
    QLineEdit* m_word = nullptr;
    QListWidget* m_suggestions = nullptr;
    QComboBox* m_dictionary = nullptr;
    QLabel* m_status = nullptr;
    QPushButton* m_change = nullptr;
    QPushButton* m_changeAll = nullptr;
    QPushButton* m_ignore = nullptr;
    QPushButton* m_ignoreAll = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_undo = nullptr;
    QPushButton* m_cancel = nullptr;
};
