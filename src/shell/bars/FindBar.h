#pragma once

#include <QObject>

class QComboBox;
class QWidget;
struct FrameParts;

/// The find bar `cmbSearch` in the tool bar: what was searched for, the newest first, and the text to search for now.
/// The box is the only copy of that list. Owned by the frame. Without an active document Enter searches nothing; the
/// text joins the list all the same.
class FindBar : public QObject {
    Q_OBJECT

 public:
    explicit FindBar(FrameParts& parts);

    /// Puts the box into the place that the tool bar keeps for it.
    void placeIn(QWidget& place);

    /// The box, for whoever gives it the focus.
    QWidget* widget() const;
    QString text() const;
    void AddSearchKey(const QString& pText, bool pMoveToTop);
    /// What a find dialog searched for shows here and in the search toggles. An empty text changes nothing.
    void AfterFind(const QString& pText, bool pCaseSensitive, bool pRegExp, bool pWholeWord);
    void FindNext();
    void FindPrevious();

    /// Fills the find history of the controls too, which ends with the program.
    void LoadSearchKeys();
    void SaveSearchKeys() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    QStringList keys() const;
    /// Leaves the text in the box as it is.
    void setKeys(const QStringList& keys);
    void find();
    void takeFindHistory();

    FrameParts& m_parts;
    QComboBox* m_box;
};
