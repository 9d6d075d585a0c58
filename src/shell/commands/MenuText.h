#pragma once

#include <QAction>
#include <QString>

/// Captions of entries made while the program runs. A menu reads "&" as the mark of a key; in a path or a name it is
/// literal, so it is doubled.
namespace MenuText {

inline void setCaption(QAction& action, QString caption) {
    action.setText(caption.replace(u'&', QLatin1String("&&")));
}

/// The text that was set; for an entry of the command table its caption, the marks of keys in it included.
inline QString captionOf(const QAction& action) {
    return action.isSeparator() ? u"-"_qs : action.text().replace(QLatin1String("&&"), QLatin1String("&"));
}

}  // namespace MenuText
