#pragma once

#include <QHash>
#include <QObject>

#include <functional>
#include <initializer_list>

class QAbstractItemView;
class QKeyEvent;

/// What the keyboard and the right button do with a list or tree besides choosing rows: keys with a meaning of their
/// own, and its menu, which the mouse opens when the right button is released over it. The key for menus and Shift+F10
/// open it at the current row. A filter of the view's events, owned by the view.
class RowInput : public QObject {
    Q_OBJECT

 public:
    explicit RowInput(QAbstractItemView& view);

    /// The view has these keys for this, even where the main menu has them too. A key with a modifier is not one of
    /// them.
    void onKeys(std::initializer_list<int> keys, const std::function<void()>& call);

    bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
    /// In coordinates of the screen.
    void menuWanted(const QPoint& place);

 private:
    bool isOwnKey(const QKeyEvent& event) const;
    bool takeKey(QKeyEvent& event);
    void requestMenuAtCurrentRow();

    QAbstractItemView& m_view;
    QHash<int, std::function<void()>> m_calls;
};
