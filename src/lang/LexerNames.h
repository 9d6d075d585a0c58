#pragma once

#include <QByteArrayView>

#include <span>

/// The names by which the text control's library knows its lexers. Case sensitive.
namespace LexerNames {

std::span<const char* const> all();
bool isKnown(QByteArrayView name);

}  // namespace LexerNames
