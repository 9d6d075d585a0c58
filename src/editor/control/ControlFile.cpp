#include "editor/control/ControlFile.h"

#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/EditScope.h"
#include "editor/control/EditView.h"
#include "editor/control/KeptBookmarks.h"
#include "editor/held/Colouring.h"
#include "editor/held/MarkHistory.h"
#include "editor/held/TextLoader.h"
#include "platform/FileErrors.h"
#include "platform/UserFileWriter.h"

#include <cerrno>
#include <optional>
#include <string_view>
#include <vector>

using Sci = QsciScintillaBase;

namespace {

int eolModeOf(const QString& lineEnd) {
    if (lineEnd == u"\r\n"_qs)
        return Sci::SC_EOL_CRLF;
    return lineEnd == u"\r"_qs ? Sci::SC_EOL_CR : Sci::SC_EOL_LF;
}

}  // namespace

ControlFile::ControlFile(EditView& view, ControlTyping& typing, ControlLineNumbers& lineNumbers, ControlLook& look)
    : m_view(view), m_typing(typing), m_lineNumbers(lineNumbers), m_look(look) {
    applyDocumentState(Sci::SC_EOL_LF);
}

SystemError ControlFile::OpenFile(const QString& path) {
    return OpenFileAs(path, SaveFlags::AsLoaded);
}

SystemError ControlFile::OpenFileAs(const QString& path, int flagWord) {
    if (m_view.state().isPlaying())
        return FileErrors::reading(path, SystemError::fromErrno(EBUSY));
    std::optional<TextFormat> format;
    if ((flagWord & ~SaveFlags::ClearHistory) != SaveFlags::AsLoaded)
        format = formatOfSave(flagWord, m_origin.format);
    // Before the load: whoever writes to the file meanwhile makes it another state than this one.
    const std::optional<FileState> state = FileState::of(path);
    // The document is created through an invisible view: the view that creates one loses the state of its own document.
    QsciScintillaBase host;
    LoadedText loaded = TextLoader::load(path, format, host);
    if (loaded.error)
        return loaded.error;
    const TextFormat loadedFormat = loaded.format;
    const int mode = eolModeOf(loaded.firstLineEnd);
    takeLoaded(std::move(loaded), {path, state, loadedFormat}, mode);
    return {};
}

SystemError ControlFile::openRecovered(const QString& utf8Path, TextOrigin origin, int lineEndMode) {
    if (m_view.state().isPlaying())
        return FileErrors::reading(utf8Path, SystemError::fromErrno(EBUSY));
    QsciScintillaBase host;
    LoadedText loaded = TextLoader::load(utf8Path, TextFormat{}, host);
    if (loaded.error)
        return loaded.error;
    const bool intact = loaded.format == TextFormat{};
    const bool hasOneLine = loaded.firstLineEnd.isEmpty();
    const int mode = eolModeOf(loaded.firstLineEnd);
    if (!intact) {
        host.SendScintilla(Sci::SCI_RELEASEDOCUMENT, 0UL, loaded.document);
        return FileErrors::reading(utf8Path, SystemError::fromErrno(EILSEQ));
    }
    takeLoaded(std::move(loaded), std::move(origin), mode);
    if (hasOneLine || (mode != lineEndMode && holdsLineEnd(lineEndMode)))
        m_view.send(Sci::SCI_SETEOLMODE, lineEndMode);
    m_changedForGood = true;
    return {};
}

/// In a text with joints one line end alone can be used, which the load has found out.
bool ControlFile::holdsLineEnd(int mode) const {
    if (m_view.map().joints().kind() != JointKind::None)
        return false;
    LineEndsSeen seen;
    seen.look(m_view.heldText().range(0, m_view.heldText().length()));
    if (mode == Sci::SC_EOL_CRLF)
        return seen.crLf;
    return mode == Sci::SC_EOL_CR ? seen.cr : seen.lf;
}

void ControlFile::takeLoaded(LoadedText loaded, TextOrigin origin, int lineEndMode) {
    const EditScope scope(m_view);
    m_view.edits().settle();
    m_view.SendScintilla(Sci::SCI_SETDOCPOINTER, 0UL, loaded.document);
    m_view.SendScintilla(Sci::SCI_RELEASEDOCUMENT, 0UL, loaded.document);
    m_view.map().reset(loaded.ascii, loaded.jointKind, std::move(loaded.joints));
    m_view.longLines().lookAgain();
    m_origin = std::move(origin);
    m_changedForGood = false;
    m_coloured = loaded.styled;
    m_view.state().forcedLock = m_view.map().joints().kind() == JointKind::Listed;
    m_view.state().typing = false;
    m_view.state().changed = false;
    m_view.state().grouped = false;  // the group belonged to the previous text
    ++m_view.state().changes;
    applyDocumentState(lineEndMode);
    m_view.send(Sci::SCI_SETSCROLLWIDTH, 1);
    m_view.send(Sci::SCI_SETFIRSTVISIBLELINE, 0);
    m_view.send(Sci::SCI_SETXOFFSET, 0);
    m_lineNumbers.followAnew();
    m_look.followPieces();
    m_view.edits().loaded();
}

void ControlFile::applyDocumentState(int lineEndMode) {
    m_view.send(Sci::SCI_SETCODEPAGE, Sci::SC_CP_UTF8);
    m_view.colouring().setUpDocument(m_coloured);
    m_view.send(Sci::SCI_SETUNDOCOLLECTION, 1);
    emptyUndoHistory();
    m_view.send(Sci::SCI_SETEOLMODE, lineEndMode);
    m_typing.applyTabs();
    m_view.send(Sci::SCI_SETREADONLY, m_view.Locked());
    m_view.send(Sci::SCI_SETSAVEPOINT);
}

SystemError ControlFile::SaveFile(const QString& path, int flagWord) {
    const TextFormat format = formatOfSave(flagWord, m_origin.format);
    const std::vector<std::string_view> text = m_view.plainRuns(0, m_view.heldText().length());
    const EncodedText encoded = encodeText(text, format);
    if (encoded.failure)
        return encoded.failure->error();
    if (const WriteResult result = UserFileWriter().write(path, encoded.pieces); result.error)
        return result.error;
    m_origin = {path, FileState::of(path), format};
    m_changedForGood = false;
    m_view.edits().saved();
    m_view.send(Sci::SCI_SETSAVEPOINT);
    if ((flagWord & SaveFlags::ClearHistory) != 0)
        emptyUndoHistory();
    return {};
}

bool ControlFile::canReopen() const {
    return !m_origin.path.isEmpty() && !m_changedForGood && m_view.send(Sci::SCI_GETMODIFY) == 0;
}

SystemError ControlFile::reopenAs(int flagWord) {
    return canReopen() ? OpenFileAs(m_origin.path, flagWord) : SystemError{};
}

int ControlFile::lineEndMode() const {
    return static_cast<int>(m_view.send(Sci::SCI_GETEOLMODE));
}

bool ControlFile::canConvertLineEnds() const {
    return !m_view.Locked() && m_view.map().joints().kind() == JointKind::None;
}

void ControlFile::convertLineEnds(int mode) {
    if (!canConvertLineEnds())
        return;
    const EditScope scope(m_view);
    const KeptBookmarks kept(m_view);
    m_view.state().typing = false;
    m_view.longLines().lookAgain();
    m_view.send(Sci::SCI_SETEOLMODE, mode);
    m_view.send(Sci::SCI_CONVERTEOLS, mode);
    m_changedForGood = m_changedForGood || m_view.state().changed;
    emptyUndoHistory();
}

void ControlFile::emptyUndoHistory() {
    m_view.send(Sci::SCI_EMPTYUNDOBUFFER);
    m_view.marks().forget();
}

QString ControlFile::limitations() const {
    QStringList said;
    if (!m_view.map().joints().empty()) {
        said << EditView::tr("Long lines are shown in pieces");
        if (m_coloured && m_view.colouring().language() != nullptr)
            said << EditView::tr("coloured piece by piece");
        if (m_view.state().forcedLock)
            said << EditView::tr("locked, since its line ends are mixed");
    }
    if (!m_coloured)
        said << EditView::tr("no colouring above 64 MB");
    return said.join(u", "_qs);
}
