#include "shell/documents/DocumentSaving.h"

#include "document/SaveFormats.h"
#include "document/frmDocument.h"
#include "platform/Paths.h"
#include "platform/Yield.h"
#include "settings/FileFilters.h"
#include "settings/Options.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/bars/StatusPanels.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/LanguageMenu.h"
#include "shell/commands/RoomsToCome.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/SystemClose.h"
#include "shell/frame/FrameParts.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Prompts.h"

#include <QPointer>

DocumentSaving::DocumentSaving(FrameParts& parts, const DocumentOpening& files) : m_parts(parts), m_files(files) {}

void DocumentSaving::SaveDocument(frmDocument* document, bool, int format) {
    const QPointer<frmDocument> alive(document);
    const QString suffix = SaveFormats::row(format).titleSuffix;
    QString path = document->filename;
    if (path.isEmpty())
        path = askPath(QLatin1String("Save") + suffix, document->Caption() + QLatin1String(".txt"));
    if (path.isEmpty() || !alive || !save(*document, path, format, false) || !alive)
        return;
    if (!suffix.isEmpty())
        document->ReloadTextFile(path, format);
    if (!alive)
        return;
    showSaved(document, path);
    m_parts.languageMenu->CheckLangMenu(document);
    m_parts.rooms->AddLRUFile(path);
    m_parts.commands->SetDocumentEnv(m_parts.children->active());
}

void DocumentSaving::SaveActive() {
    if (frmDocument* document = m_parts.children->active())
        SaveDocument(document, true, SaveFormats::AsLoaded);
}

void DocumentSaving::SaveAs() {
    const QPointer<frmDocument> document = m_parts.children->active();
    if (!document)
        return;
    const QString path = askPath(u"Save As"_qs, document->filename);
    if (path.isEmpty() || !document || !save(*document, path, SaveFormats::AsLoaded, true) || !document)
        return;
    showSaved(document, path);
    m_parts.rooms->AddLRUFile(path);
}

/// Bytes are saved in blocks, between which events run: Close is greyed.
bool DocumentSaving::save(frmDocument& document, const QString& path, int format, bool force) {
    m_parts.systemClose->enable(false);
    bool saved = false;
    ignoringErrors([&] { saved = document.SaveFile(path, format, force); });
    m_parts.systemClose->enable(true);
    return saved;
}

QString DocumentSaving::askPath(const QString& title, const QString& initialName) const {
    const FileQuestion question{title, dialogFolder(), initialName, GetFilterString(*m_parts.registry)};
    for (;;) {
        QString path = m_parts.prompts->askFileToSave(m_parts.frame, question);
        if (path.isEmpty() || !fileExists(path))
            return path;
        const QString asked = path + QLatin1String(" already exist !\nOverwrite it ?");
        if (m_parts.prompts->askYesNo(m_parts.frame, asked))
            return path;
    }
}

void DocumentSaving::showSaved(frmDocument* document, const QString& path) {
    document->setCaption(m_files.captionFor(path));
    m_parts.tabs->SetTabCaption(document);
    if (document == m_parts.children->active())
        m_parts.status->ShowDocumentInfo(document);
}

void DocumentSaving::SaveAll() {
    if (m_parts.tabs->count() == 0)
        return;
    const int selected = m_parts.tabs->selected();
    for (int i = 0; i < m_parts.tabs->count(); ++i)
        ignoringErrors([&] { saveTab(i); });
    m_parts.tabs->select(selected);
}

void DocumentSaving::saveTab(int index) {
    m_parts.tabs->select(index);
    yieldOnce();
    frmDocument* document = m_parts.children->active();
    if (document == nullptr)
        return;
    if (document->Locked()) {
        m_parts.prompts->message(m_parts.frame,
                                 document->filename + QLatin1String(" is locked and will not be saved."));
        return;
    }
    SaveDocument(document, true, SaveFormats::AsLoaded);
}

QString DocumentSaving::dialogFolder() const {
    const frmDocument* document = m_parts.children->active();
    if (document == nullptr || !m_parts.options->DocumentWorkingFolder)
        return {};
    const QString& path = document->filename;
    return path.left(path.size() - FileNameOf(path).size());
}
