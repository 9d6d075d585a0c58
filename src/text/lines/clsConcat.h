#pragma once

#include <QString>

/// A string builder: appends into a buffer that is larger than its content, so that a long text is built in time in
/// proportion to its length. Lengths are UTF-16 units. A plain value without errors; whoever builds a text owns one and
/// begins with ReInit.
class clsConcat {
 public:
    /// Empties the buffer and the used length.
    void ReInit();
    /// The buffer becomes `pStr` and 15000 zero characters; the used length stays.
    void SetString(const QString& pStr);
    /// Writes `pStr` behind the used length.
    void SConcat(QStringView pStr);
    /// Gives the used part and empties the buffer. The used length stays, so a new text needs a ReInit.
    QString GetString();

 private:
    void grow(qsizetype added);

    QString m_buffer;
    qsizetype m_used = 0;
};
