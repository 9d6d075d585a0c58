#pragma once

#include "editor/language/LanguageDefinition.h"

#include <QByteArrayView>
#include <QString>

#include <optional>

/// Reads the definition of a language, a file NAME.lng. The form is told in help/languages.html; it is read strictly,
/// so that a slip in a file of one's own is told by its line and not guessed at. No input does harm.
namespace LanguageFile {

struct Result {
    std::optional<LanguageDefinition> definition;
    QString error;  ///< without a definition: "PATH:LINE: what is wrong", or why the file can't be read
};

inline constexpr qsizetype MostBytes = 256 * 1024;

Result parse(QByteArrayView bytes, const QString& path);
Result read(const QString& path);

}  // namespace LanguageFile
