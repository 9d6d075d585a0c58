#include "editor/control/RichText.h"

#include "editor/control/ControlLook.h"
#include "editor/control/TextControl.h"
#include "editor/held/Colouring.h"
#include "editor/rtf/RtfReader.h"
#include "editor/rtf/RtfWriter.h"
#include "widgets/StoredColour.h"

#include <algorithm>
#include <optional>

using Sci = QsciScintillaBase;

namespace {

RtfLook lookOf(const TextControl& control, qint64 style) {
    return {StoredColour::colourOf(control.send(Sci::SCI_STYLEGETFORE, style)),
            control.send(Sci::SCI_STYLEGETBOLD, style) != 0, control.send(Sci::SCI_STYLEGETITALIC, style) != 0};
}

QByteArray richText(const TextControl& control, qint64 from, qint64 to) {
    control.colouring().completeTo(to);
    RtfWriter writer(control.look().FontName(), control.look().FontSize());
    while (from < to) {
        const qint64 style = control.send(Sci::SCI_GETSTYLEAT, from);
        qint64 end = from + 1;
        while (end < to && control.send(Sci::SCI_GETSTYLEAT, end) == style)
            ++end;
        writer.append(QString::fromUtf8(control.bytes(from, end)), lookOf(control, style));
        from = end;
    }
    return writer.finished();
}

/// The plain text with the line ends of the control.
std::optional<QString> plainText(TextControl& control, const QString& rtf) {
    const std::optional<QString> text = plainTextOfRtf(rtf);
    if (text)
        return QString::fromUtf8(control.withOwnLineEnds(*text));
    Q_EMIT control.CommandFailed();
    return std::nullopt;
}

}  // namespace

namespace RichText {

QByteArray ofText(const TextControl& control) {
    return richText(control, 0, control.heldText().length());
}

QByteArray ofSelection(const TextControl& control) {
    const auto [anchor, caret] = control.selection();
    return richText(control, std::min(anchor, caret), std::max(anchor, caret));
}

bool setText(TextControl& control, const QString& rtf) {
    const std::optional<QString> text = plainText(control, rtf);
    if (text)
        control.setText(*text);
    return text.has_value();
}

bool setSelection(TextControl& control, const QString& rtf) {
    const std::optional<QString> text = plainText(control, rtf);
    if (text)
        control.setSelText(*text);
    return text.has_value();
}

}  // namespace RichText
