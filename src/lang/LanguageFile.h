#pragma once

#include "editor/language/LanguageDefinition.h"

#include <QByteArrayView>
#include <QString>

#include <optional>

/// Reads the definition of a language, a file NAME.lng. Its form is described in help/languages.html; it is read
/// strictly, so that a mistake in a user's file is reported with its line. No input does harm.
namespace LanguageFile {

struct Result {
    std::optional<LanguageDefinition> definition;
    QString error;  ///< without a definition: "PATH:LINE: what is wrong", or why the file can't be read
};

inline constexpr qsizetype MostBytes = 256 * 1024;

Result parse(QByteArrayView bytes, const QString& path);
Result read(const QString& path);

}  // namespace LanguageFile
