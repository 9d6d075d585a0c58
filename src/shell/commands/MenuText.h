#pragma once

#include <QAction>
#include <QString>

/// Captions of entries made while the program runs. A menu reads "&" as the mark of a key; in a path or a name it means
/// itself, so it is shown doubled.
namespace MenuText {

inline void setCaption(QAction& action, QString caption) {
    action.setText(caption.replace(u'&', QLatin1String("&&")));
}

/// What was set; of an entry of the command table its caption, the marks of keys in it included.
inline QString captionOf(const QAction& action) {
    return action.isSeparator() ? u"-"_qs : action.text().replace(QLatin1String("&&"), QLatin1String("&"));
}

}  // namespace MenuText
