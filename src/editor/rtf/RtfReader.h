#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// Returns the plain text of a document of rich text, with a line feed at the end of each paragraph but the last.
/// Formats, pictures, headers and the like are skipped. Nothing for a text that is not rich text or is incomplete.
std::optional<QString> plainTextOfRtf(QStringView rtf);
