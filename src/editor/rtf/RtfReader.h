#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// The plain text of a document of rich text, with a line feed at the end of each paragraph but the last. Looks,
/// pictures, headers and the like are passed over. Nothing when it is no rich text, or one that breaks off.
std::optional<QString> plainTextOfRtf(QStringView rtf);
