#pragma once

#include <QAbstractButton>
#include <QDialog>
#include <QKeySequence>
#include <QLabel>
#include <QTabWidget>

/// Returns the mnemonics that occur more than once on a page of the dialog, each with the texts that use it.
inline QStringList doubledMnemonics(const QDialog& dialog) {
    const auto* tabs = dialog.findChild<QTabWidget*>();
    QStringList doubled;
    for (int page = 0; page == 0 || (tabs != nullptr && page < tabs->count()); ++page) {
        QHash<QKeySequence, QString> known;
        const auto take = [&](const QString& text) {
            const QKeySequence mnemonic = QKeySequence::mnemonic(text);
            if (mnemonic.isEmpty())
                return;
            if (known.contains(mnemonic))
                doubled << known[mnemonic] + u" / "_qs + text;
            known.insert(mnemonic, text);
        };
        const auto isShown = [&](const QWidget* widget) {
            for (int other = 0; tabs != nullptr && other < tabs->count(); ++other) {
                if (other != page && tabs->widget(other)->isAncestorOf(widget))
                    return false;
            }
            return true;
        };
        for (int tab = 0; tabs != nullptr && tab < tabs->count(); ++tab)
            take(tabs->tabText(tab));
        for (const QLabel* label : dialog.findChildren<QLabel*>()) {
            if (label->buddy() != nullptr && isShown(label))
                take(label->text());
        }
        for (const QAbstractButton* button : dialog.findChildren<QAbstractButton*>()) {
            if (isShown(button))
                take(button->text());
        }
    }
    return doubled;
}
