#include "spelling/Spelling.h"

#include "settings/Settings.h"
#include "spelling/dictionary/DictionaryList.h"
#include "spelling/frmSpelling.h"

#include <QPointer>

#include <vector>

namespace {

const QString DictionaryKey = u"SpellingDictionary"_qs;

QString withoutDictionary() {
    return u"There is no dictionary to check the spelling by. The package hunspell-en-us brings one for English, "
           u"and those for other languages are called \"hunspell-\" with the code of the language."_qs;
}

}  // namespace

SpellingResult checkSpelling(const QString& text, const SpellingServices& services, QWidget* parent) {
    const std::vector<Dictionary> dictionaries = DictionaryList::installed(services.dictionaryFolders);
    if (dictionaries.empty())
        return {SpellingResult::End::Failed, withoutDictionary(), {}};
    Settings settings(services.store);
    const std::size_t first =
        DictionaryList::preferred(dictionaries, settings.PropertyValue(DictionaryKey, QString(), false));
    const QPointer<frmSpelling> form(new frmSpelling(text, dictionaries, first, services.prompts, parent));
    QObject::connect(form, &frmSpelling::dictionaryChosen, form,
                     [settings](const QString& name) mutable { settings.write(DictionaryKey, name); });
    const bool isComplete = form->run();
    if (!form)
        return {SpellingResult::End::Gone, {}, {}};
    SpellingResult result;
    if (isComplete)
        result = {SpellingResult::End::Complete, {}, form->session().corrections()};
    else
        result.error = form->error();
    delete form;
    return result;
}
