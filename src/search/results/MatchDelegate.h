#pragma once

#include <QStyledItemDelegate>

/// Draws the rows of the search results, with the match marked in its line in colours that are readable in light and
/// dark windows and on a selected row. Owned by the view.
class MatchDelegate : public QStyledItemDelegate {
    Q_OBJECT

 public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QString displayText(const QVariant& value, const QLocale& locale) const override;
    /// The place of the row's check box; `option` is the view's, with the place of the row.
    QRect checkBox(const QStyleOptionViewItem& option, const QModelIndex& index) const;

 private:
    QStyleOptionViewItem withoutText(const QStyleOptionViewItem& option, const QModelIndex& index) const;
};
