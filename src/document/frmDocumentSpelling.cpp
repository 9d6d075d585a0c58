// The spell check of a document's text.

#include "document/CloseStop.h"
#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "spelling/Spelling.h"
#include "widgets/Prompts.h"

#include <QPointer>

#include <exception>

/// The whole text is checked, whatever is selected, and what the user corrected is put back in one step.
void frmDocument::Spelling() {
    if (!TextEdit()) {
        m_prompts.message(this, u"Spell check is not allowed in Hex mode."_qs);
        return;
    }
    if (isReadOnly || Locked()) {
        m_prompts.message(this, u"The document is locked, so its spelling can't be corrected."_qs);
        return;
    }
    const QPointer<frmDocument> guard(this);
    const CloseStop stop(*this, m_loads);
    QString failure;
    try {
        failure = checkText();
    } catch (const std::exception& error) {
        failure = u"The text can't be checked: %1"_qs.arg(QString::fromLocal8Bit(error.what()));
    }
    if (!guard)
        return;
    if (failure.isEmpty())
        m_prompts.message(this, u"Spell Check Complete"_qs);
    else
        m_prompts.message(this, failure + u"\nError when opening the spell checker."_qs);
}

/// Returns why nothing was corrected; empty when the check went through. The document may be destroyed meanwhile.
QString frmDocument::checkText() {
    const QPointer<frmDocument> guard(this);
    const QString text = m_text->Text();
    const SpellingResult result =
        checkSpelling(text, {m_prompts, m_services.globals.registry, m_services.dictionaryFolders}, this);
    if (!guard || result.end == SpellingResult::End::Gone)
        return {};
    if (result.end == SpellingResult::End::Failed)
        return result.error;
    const QString corrected = result.corrections.appliedTo(text);
    if (corrected == text)
        return {};
    if (m_text->Text() != text)
        return u"The text was changed while it was checked, so nothing was corrected."_qs;
    const qint64 begin = result.corrections.movedPosition(m_text->SelStart());
    const qint64 end = result.corrections.movedPosition(m_text->SelEnd());
    m_text->setText(corrected);
    m_text->setSelStart(begin);
    m_text->setSelEnd(end);
    return {};
}
