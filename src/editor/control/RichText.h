#pragma once

#include <QByteArray>
#include <QString>

class TextControl;

/// The text of a control as rich text.
namespace RichText {

/// The text or the selection with its colours.
QByteArray ofText(const TextControl& control);
QByteArray ofSelection(const TextControl& control);
/// Replace text or selection by the plain text of rich text. For anything else the text stays unchanged, false is
/// returned, and the control emits CommandFailed.
bool setText(TextControl& control, const QString& rtf);
bool setSelection(TextControl& control, const QString& rtf);

}  // namespace RichText
