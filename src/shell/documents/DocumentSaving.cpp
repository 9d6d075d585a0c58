#include "shell/documents/DocumentSaving.h"

#include "document/DocumentServices.h"
#include "document/SaveFormats.h"
#include "document/frmDocument.h"
#include "platform/Paths.h"
#include "platform/Yield.h"
#include "settings/FileFilters.h"
#include "settings/Options.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/SystemClose.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Prompts.h"

#include <QPointer>

DocumentSaving::DocumentSaving(QWidget& window, const DocumentServices& services, RegistryStore& registry,
                               MdiChildren& children, ActiveDocument& active, SystemClose& systemClose,
                               const DocumentOpening& opening)
    : m_window(window),
      m_services(services),
      m_registry(registry),
      m_children(children),
      m_active(active),
      m_systemClose(systemClose),
      m_opening(opening) {}

void DocumentSaving::SaveDocument(frmDocument* document, bool, int format) {
    if (!document->maySave())
        return;
    const QPointer<frmDocument> alive(document);
    const QString suffix = SaveFormats::row(format).titleSuffix;
    QString path = document->filename;
    const bool asks = !document->holdsFile();
    if (asks) {
        const QString initialName = path.isEmpty() ? document->Caption() + QLatin1String(".txt") : path;
        path = askPath(QLatin1String("Save") + suffix, initialName);
    }
    if (path.isEmpty() || !alive || !save(*document, path, format, asks) || !alive)
        return;
    if (!suffix.isEmpty())
        document->ReloadTextFile(path, format);
    if (!alive)
        return;
    document->setCaption(m_opening.captionFor(path));
    m_active.reportChange(document, ActiveDocument::File | ActiveDocument::Language | ActiveDocument::Mode);
    m_active.reportSaved(document, path);
}

void DocumentSaving::SaveActive() {
    if (frmDocument* document = m_active.get())
        SaveDocument(document, true, SaveFormats::AsLoaded);
}

void DocumentSaving::SaveAs() {
    const QPointer<frmDocument> document = m_active.get();
    if (!document || !document->maySave())
        return;
    const QString path = askPath(u"Save As"_qs, document->filename);
    if (path.isEmpty() || !document || !save(*document, path, SaveFormats::AsLoaded, true) || !document)
        return;
    document->setCaption(m_opening.captionFor(path));
    m_active.reportChange(document, ActiveDocument::File);
    m_active.reportSaved(document, path);
}

/// Somebody else's bytes are not lost without a question.
bool DocumentSaving::mayOverwrite(frmDocument& document, const QString& path) const {
    if (path != document.filename || !document.IsChangedOnDisk())
        return true;
    document.noteFileChange();
    const QString question = u"'%1' has been changed on disk. Overwrite it ?"_qs.arg(path);
    return m_services.prompts.askYesNo(&m_window, question, {}, {}, Prompts::Answer::No);
}

/// Bytes are saved in blocks, between which the event loop runs: Close is disabled. `force`: the user has chosen the
/// file just now, and has said that it may be overwritten.
bool DocumentSaving::save(frmDocument& document, const QString& path, int format, bool force) {
    const QPointer<frmDocument> alive(&document);
    if ((!force && !mayOverwrite(document, path)) || !alive)
        return false;
    m_systemClose.enable(false);
    bool saved = false;
    ignoringErrors("SaveFile", [&] { saved = document.SaveFile(path, format, force); });
    m_systemClose.enable(true);
    return saved;
}

QString DocumentSaving::askPath(const QString& title, const QString& initialName) const {
    const FileQuestion question{title, dialogFolder(), initialName, GetFilterString(m_registry)};
    for (;;) {
        QString path = absolutePath(m_services.prompts.askFileToSave(&m_window, question));
        if (path.isEmpty() || !fileExists(path))
            return path;
        const QString asked = path + QLatin1String(" already exist !\nOverwrite it ?");
        if (m_services.prompts.askYesNo(&m_window, asked))
            return path;
    }
}

void DocumentSaving::SaveAll() {
    const QPointer<frmDocument> present = m_active.get();
    for (qsizetype i = 0; i < m_children.documents().size(); ++i)
        ignoringErrors("SaveAll", [&] { saveTurn(m_children.documents().at(i)); });
    m_active.activate(present);
}

/// Each document is activated for its turn.
void DocumentSaving::saveTurn(frmDocument* turn) {
    m_active.activate(turn);
    yieldOnce();
    frmDocument* document = m_active.get();
    if (document == nullptr)
        return;
    if (document->Locked()) {
        m_services.prompts.message(&m_window, document->filename + QLatin1String(" is locked and will not be saved."));
        return;
    }
    SaveDocument(document, true, SaveFormats::AsLoaded);
}

QString DocumentSaving::dialogFolder() const {
    const frmDocument* document = m_active.get();
    if (document == nullptr || !m_services.options.DocumentWorkingFolder)
        return {};
    const QString& path = document->filename;
    return path.left(path.size() - FileNameOf(path).size());
}
