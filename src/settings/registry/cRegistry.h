#pragma once

#include "settings/registry/RaisedError.h"
#include "settings/registry/RegistryStore.h"

#include <QVariant>

/// The registry in object form: set a root, a section and a key name, then read or write `Value`. Created where it is
/// needed, over the store, which must outlive it.
///
/// An operation that raises returns false and leaves number 26001, the source "Quillmark.cRegistry" and a description
/// in lastError(), which every operation clears first. Roots appear in descriptions as signed decimal numbers. Most
/// failures are not reported: see setValue.
class cRegistry {
 public:
    explicit cRegistry(RegistryStore& store);

    RegistryRoot ClassKey = HKEY_CURRENT_USER;
    QString SectionKey;  ///< path of the key under the root
    QString ValueKey;    ///< name of the value; empty for the key's default value
    QVariant Default;    ///< what a read returns when the value doesn't exist
    /// In: the form of the next write. Out: the type that a read found.
    qint32 ValueType = RegistryType::String;

    const RaisedError& lastError() const { return m_lastError; }
    /// The last value written through this object.
    const QVariant& currentValue() const { return m_currentValue; }

    bool KeyExists();
    bool CreateKey();
    bool DeleteKey();
    /// Raises when the key can't be opened; a missing value only returns false.
    bool DeleteValue();

    /// Strings without their last character, which is the terminating zero of what was written as a string; zeros
    /// within stay. References "%NAME%" in type 2 are replaced from the process's environment, unknown ones stay
    /// unchanged. Numbers are qint32, everything else a QByteArray.
    QVariant Value();
    /// By ValueType. 1 and 2: a text with two "%" that are not adjacent is stored as 2, any other as 1. 3: a byte
    /// array, of which the last byte is not stored. 4 and 5: an integer of 16 or 32 bits, stored as type 4; anything
    /// else stores nothing. Other types are result 13. False, and raised, when the key can't be made, on type 3
    /// without a byte array, and on the result -1; no other result is a failure here.
    bool setValue(const QVariant& value);

    /// The names of the values and of the sub-keys of the section: name 1 is the first in the list. None if the section
    /// can't be opened.
    void EnumerateValues(QStringList& sKeyNames, qint32& iKeyCount);
    /// Names are cut at their first zero character; one of 255 characters or more ends the walk.
    void EnumerateSections(QStringList& sSect, qint32& iSectCount);

    /// Registers the program as the one that opens, prints, adds and creates files of the class; an empty menu text
    /// means the usual one.
    bool CreateEXEAssociation(const QString& sExePath, const QString& sClassName, const QString& sClassDesc,
                              const QString& sAssociation, const QString& sOpenMenuText = {},
                              bool bSupportPrint = false, const QString& sPrintMenuText = {}, bool bSupportNew = false,
                              const QString& sNewMenuText = {}, bool bSupportInstall = false,
                              const QString& sInstallMenuText = {}, qint32 lDefaultIconIndex = -1);
    /// `vItems`: name, text and command of each entry in turn.
    bool CreateAdditionalEXEAssociations(const QString& sClassName, const QStringList& vItems);

 private:
    bool raise(const QString& description);
    bool raiseNotSet(const QVariant& value);
    int writeByType(const QVariant& value, bool& unfit);
    bool writeClassText(const QString& section, const QString& text);
    bool writeVerb(const QString& section, const QString& menuText, const QString& command);

    RegistryStore& m_store;
    QVariant m_currentValue;
    RaisedError m_lastError;
};
