#pragma once

#include "platform/FileState.h"
#include "text/codec/TextCodec.h"

#include <QString>

#include <optional>

/// What the edits of a journal start from: the contents of a document when it was last loaded or saved. A plain value.
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
    qint64 textLength = -1;  ///< bytes of the text in UTF-8, by which a wrong base is noticed; -1: not known
};
