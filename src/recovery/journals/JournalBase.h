#pragma once

#include "platform/FileState.h"
#include "text/codec/TextCodec.h"
#include "text/held/Joints.h"

#include <QString>

#include <optional>
#include <vector>

/// What the edits of a journal start from: the contents of a document when it was last loaded or saved. A plain value.
/// Offsets and lengths are bytes: of a text as the control holds it (UTF-8 with joints), of a hex document as in its
/// file.
struct JournalBase {
    enum class View : quint32 { Text = 1, Hex = 2 };

    View view = View::Text;
    QString path;                    ///< of the document's file, absolute; empty for a document without a file
    QString caption;                 ///< name by which the user knows the document
    std::optional<FileState> state;  ///< of the file that was loaded or saved; nothing: the base is empty
    // Of a text
    TextFormat format;
    qint32 lineEndMode = 0;  ///< as SC_EOL_
    QString language;
    JointKind jointKind = JointKind::None;
    std::vector<qint64> joints;  ///< ascending offsets
    qint64 heldLength = -1;      ///< of the text with its joints, by which a wrong base is noticed; -1: not known
};
