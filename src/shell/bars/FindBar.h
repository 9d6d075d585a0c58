#pragma once

#include <QObject>

class ActiveDocument;
class QComboBox;
class QWidget;
struct Options;

/// The find bar `cmbSearch` in the tool bar: the texts searched for, the newest first, and the current one. The box is
/// the only copy of that list, and the options are the only place of the search flags. Owned by the window. Without an
/// active document Enter searches nothing; the text is added to the list all the same.
class FindBar : public QObject {
    Q_OBJECT

 public:
    FindBar(QWidget& window, const ActiveDocument& active, Options& options);

    /// Places the box in the tool bar.
    void placeIn(QWidget& place);

    /// The box, for code that gives it the focus.
    QWidget* widget() const;
    QString text() const;
    void AddSearchKey(const QString& pText, bool pMoveToTop);
    /// A find dialog has searched: copies its text and flags. An empty text changes nothing.
    void AfterFind(const QString& pText, bool pCaseSensitive, bool pRegExp, bool pWholeWord);
    void FindNext();
    void FindPrevious();

    /// Fills the find history of the controls too, which exists while the program runs.
    void LoadSearchKeys();
    void SaveSearchKeys() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
    /// The search flags were set from those of a find dialog.
    void searched();

 private:
    QStringList keys() const;
    /// Leaves the text in the box unchanged.
    void setKeys(const QStringList& keys);
    void find();
    void takeFindHistory();

    const ActiveDocument& m_active;
    Options& m_options;
    QComboBox* m_box;
};
