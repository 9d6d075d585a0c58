#include "shell/commands/FileCommands.h"

#include "document/SaveFormats.h"
#include "settings/FileFilters.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DocumentClosing.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/DocumentSaving.h"
#include "shell/documents/SystemClose.h"
#include "widgets/Prompts.h"

#include <QWidget>

FileCommands::FileCommands(QWidget& window, Prompts& prompts, RegistryStore& registry, SystemClose& systemClose,
                           ActiveDocument& active, DocumentOpening& opening, DocumentSaving& saving,
                           DocumentClosing& closing)
    : m_window(window),
      m_prompts(prompts),
      m_registry(registry),
      m_systemClose(systemClose),
      m_active(active),
      m_opening(opening),
      m_saving(saving),
      m_closing(closing) {}

void FileCommands::New() {
    m_opening.NewDocument();
}

void FileCommands::Open() {
    const FileQuestion question{u"Open"_qs, m_saving.dialogFolder(), {}, GetFilterString(m_registry)};
    const OpenAnswer answer = m_prompts.askFilesToOpen(&m_window, question);
    for (const QString& path : answer.files)
        m_opening.OpenFile(path, answer.readOnly ? 1 : 0, true, true);
}

void FileCommands::Close() {
    m_closing.CloseActive();
}

void FileCommands::CloseAll() {
    m_closing.CloseAll(nullptr);
}

void FileCommands::CloseExcept() {
    m_closing.CloseAll(m_active.get());
}

void FileCommands::Save() {
    m_saving.SaveActive();
}

void FileCommands::SaveAs() {
    m_saving.SaveAs();
}

void FileCommands::SaveAnsi() {
    saveAs(SaveFormats::Ansi);
}

void FileCommands::SaveUtf8() {
    saveAs(SaveFormats::Utf8);
}

void FileCommands::SaveUnicode() {
    saveAs(SaveFormats::Unicode);
}

void FileCommands::SaveNoBom() {
    saveAs(SaveFormats::NoByteOrderMark);
}

void FileCommands::saveAs(int format) {
    if (frmDocument* document = m_active.get())
        m_saving.SaveDocument(document, true, format);
}

void FileCommands::SaveAll() {
    m_saving.SaveAll();
}

void FileCommands::ChangeReadOnly() {
    m_active.ChangeReadOnly();
}

void FileCommands::Exit() {
    m_systemClose.whenFree([&window = m_window] { window.close(); });
}
