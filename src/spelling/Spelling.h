#pragma once

#include "spelling/check/Corrections.h"

#include <QString>
#include <QStringList>

class Prompts;
class QWidget;
class RegistryStore;

/// What a spell check uses; all of it outlives the check.
struct SpellingServices {
    Prompts& prompts;
    RegistryStore& store;
    QStringList dictionaryFolders;  ///< mostly DictionaryList::searchFolders()
};

/// What came of a spell check.
struct SpellingResult {
    enum class End {
        Complete,  ///< `corrections` is what the user decided, also when the user ended the check early
        Failed,    ///< `error` says why, in a sentence; nothing is to be corrected
        Gone,      ///< the window below was destroyed meanwhile
    };

    End end = End::Failed;
    QString error;
    Corrections corrections;
};

/// Lets the user check a text by the dictionaries of these folders, and returns when that is over. The dictionary last
/// chosen is kept in the store. Runs the event loop.
SpellingResult checkSpelling(const QString& text, const SpellingServices& services, QWidget* parent);
