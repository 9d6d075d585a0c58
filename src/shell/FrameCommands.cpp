#include "shell/FrameCommands.h"

#include "document/SaveFormats.h"
#include "platform/Prompts.h"
#include "settings/FileFilters.h"
#include "shell/Commands.h"
#include "shell/CoolBar.h"
#include "shell/DocumentClosing.h"
#include "shell/DocumentFiles.h"
#include "shell/DocumentSaving.h"
#include "shell/FrameParts.h"
#include "shell/MdiArrange.h"
#include "shell/MdiChildren.h"
#include "shell/SystemClose.h"

#include <QAction>
#include <QWidget>

namespace {

void toggleBand(const FrameParts& parts, CoolBar::Band band, const char* entry) {
    parts.coolBar->setBandVisible(band, !parts.coolBar->isBandVisible(band));
    parts.commands->CheckMenuItem(entry, parts.coolBar->isBandVisible(band));
}

}  // namespace

FrameCommands::FrameCommands(FrameParts& parts, DocumentFiles& files, DocumentSaving& saving, DocumentClosing& closing)
    : m_parts(parts), m_files(files), m_saving(saving), m_closing(closing) {}

void FrameCommands::New() {
    m_files.NewDocument();
}

void FrameCommands::Open() {
    const FileQuestion question{
        QStringLiteral("Open"), m_saving.dialogFolder(), {}, GetFilterString(*m_parts.registry)};
    const OpenAnswer answer = m_parts.prompts->askFilesToOpen(m_parts.frame, question);
    for (const QString& path : answer.files)
        m_files.OpenFile(path, answer.readOnly ? 1 : 0, true, true);
}

void FrameCommands::Close() {
    m_closing.CloseActive();
}

void FrameCommands::CloseAll() {
    m_closing.CloseAll(nullptr);
}

void FrameCommands::CloseExcept() {
    m_closing.CloseAll(m_parts.children->active());
}

void FrameCommands::Save() {
    m_saving.SaveActive();
}

void FrameCommands::SaveAs() {
    m_saving.SaveAs();
}

void FrameCommands::SaveAnsi() {
    saveAs(SaveFormats::Ansi);
}

void FrameCommands::SaveUtf8() {
    saveAs(SaveFormats::Utf8);
}

void FrameCommands::SaveUnicode() {
    saveAs(SaveFormats::Unicode);
}

void FrameCommands::SaveNoBom() {
    saveAs(SaveFormats::NoByteOrderMark);
}

void FrameCommands::saveAs(int format) {
    if (frmDocument* document = m_parts.children->active())
        m_saving.SaveDocument(document, true, format);
}

void FrameCommands::SaveAll() {
    m_saving.SaveAll();
}

void FrameCommands::Exit() {
    m_parts.systemClose->whenFree([frame = m_parts.frame] { frame->close(); });
}

void FrameCommands::ChangeReadOnly() {
    m_files.ChangeReadOnly();
}

void FrameCommands::ToggleHex() {
    m_files.SwitchHex(!m_parts.commands->button("ShowHex")->isChecked());
}

void FrameCommands::ToggleToolBand() {
    toggleBand(m_parts, CoolBar::Tool, "mnuShowEditToolbar");
}

void FrameCommands::ToggleTabBand() {
    toggleBand(m_parts, CoolBar::Tab, "mnuShowFilesTab");
}

void FrameCommands::Cascade() {
    arrange(MdiArrange::Cascade);
}

void FrameCommands::TileHorizontal() {
    arrange(MdiArrange::Horizontal);
}

void FrameCommands::TileVertical() {
    arrange(MdiArrange::Vertical);
}

void FrameCommands::ArrangeIcons() {
    arrange(MdiArrange::Icons);
}

void FrameCommands::arrange(int mode) {
    MdiArrange::arrange(*m_parts.children, mode);
}
