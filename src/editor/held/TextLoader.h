#pragma once

#include "platform/SystemError.h"
#include "text/codec/TextCodec.h"
#include "text/held/Joints.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QsciScintillaBase;

/// A text that was read from a file into a new Scintilla document, and what was detected while reading.
struct LoadedText {
    SystemError error;         ///< set: there is no document
    void* document = nullptr;  ///< the receiver must release its reference to it
    TextFormat format;
    bool ascii = true;
    bool styled = true;  ///< false: too large to be coloured
    JointKind jointKind = JointKind::None;
    std::vector<qint64> joints;  ///< byte offsets
    qint64 longestCut = 0;       ///< bytes of the longest line with joints
    QString firstLineEnd;        ///< of the file; empty when it has one line
};

namespace TextLoader {

/// Texts of more bytes than this are held without style bytes, and so without colours.
inline constexpr qint64 ColouringLimit = 64LL * 1024 * 1024;
/// Files of more bytes are refused with the description of EFBIG.
inline constexpr qint64 SizeLimit = 2'147'483'647;
/// A text that uses all line ends is held uncut, and so can be edited, when all its lines have fewer bytes than this.
inline constexpr qint64 UncutLine = 8LL * 1024 * 1024;

/// Reads a file, by the given format or, without one, by a format detected from its bytes. `host` is any view; the
/// document is created through it and does not appear in it.
LoadedText load(const QString& path, std::optional<TextFormat> format, QsciScintillaBase& host);

}  // namespace TextLoader
