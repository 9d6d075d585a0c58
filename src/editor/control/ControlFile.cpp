// Files into the control and out of it.

#include "editor/control/EditScope.h"
#include "editor/control/TextControl.h"
#include "editor/held/TextLoader.h"
#include "platform/FileErrors.h"
#include "platform/UserFileWriter.h"

#include <cerrno>
#include <optional>
#include <vector>

namespace {

int eolModeOf(const QString& lineEnd) {
    if (lineEnd == u"\r\n"_qs)
        return QsciScintillaBase::SC_EOL_CRLF;
    return lineEnd == u"\r"_qs ? QsciScintillaBase::SC_EOL_CR : QsciScintillaBase::SC_EOL_LF;
}

}  // namespace

SystemError TextControl::OpenFile(const QString& path) {
    return OpenFileAs(path, SaveFlags::AsLoaded);
}

SystemError TextControl::OpenFileAs(const QString& path, int flagWord) {
    if (isPlaying())
        return FileErrors::reading(path, SystemError::fromErrno(EBUSY));
    std::optional<TextFormat> format;
    if ((flagWord & ~SaveFlags::ClearHistory) != SaveFlags::AsLoaded)
        format = formatOfSave(flagWord, m_format);
    // The document is made through a view that nobody sees: the maker forgets what it knew of its own document.
    QsciScintillaBase host;
    LoadedText loaded = TextLoader::load(path, format, host);
    if (loaded.error)
        return loaded.error;
    takeLoaded(std::move(loaded));
    m_path = path;
    m_converted = false;
    return {};
}

void TextControl::takeLoaded(LoadedText loaded) {
    const EditScope scope(*this);
    SendScintilla(SCI_SETDOCPOINTER, 0UL, loaded.document);
    SendScintilla(SCI_RELEASEDOCUMENT, 0UL, loaded.document);
    m_map.reset(loaded.ascii, loaded.jointKind, std::move(loaded.joints));
    m_format = loaded.format;
    m_eolMode = eolModeOf(loaded.firstLineEnd);
    m_coloured = loaded.styled;
    m_forcedLock = m_map.joints().kind() == JointKind::Listed;
    m_typing = false;
    m_changed = false;
    m_grouped = false;  // the group was one of the text that went
    ++m_changes;
    applyDocumentState();
    send(SCI_SETSCROLLWIDTH, 1);
    m_numberedLines = -1;
    showLineNumbers();
    followPieces();
}

SystemError TextControl::SaveFile(const QString& path, int flagWord) {
    const TextFormat format = formatOfSave(flagWord, m_format);
    const std::vector<std::string_view> text = plainRuns(0, m_text.length());
    const EncodedText encoded = encodeText(text, format);
    if (encoded.failure)
        return encoded.failure->error();
    if (const WriteResult result = UserFileWriter().write(path, encoded.pieces); result.error)
        return result.error;
    m_format = format;
    m_path = path;
    m_converted = false;
    send(SCI_SETSAVEPOINT);
    if ((flagWord & SaveFlags::ClearHistory) != 0)
        send(SCI_EMPTYUNDOBUFFER);
    return {};
}

QString TextControl::limitations() const {
    QStringList said;
    if (!m_map.joints().empty()) {
        said << tr("Long lines are shown in pieces");
        if (m_coloured && m_colouring.language() != nullptr)
            said << tr("coloured piece by piece");
        if (m_forcedLock)
            said << tr("locked, since its line ends are mixed");
    }
    if (!m_coloured)
        said << tr("no colouring above 64 MB");
    return said.join(u", "_qs);
}
