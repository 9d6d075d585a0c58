#pragma once

#include <QString>

/// A string builder: appends to a buffer that is larger than its content, so that the time is proportional to the
/// length of the text. Lengths are UTF-16 units. A plain value without errors; call ReInit before the first use.
class clsConcat {
 public:
    /// Empties the buffer and sets the used length to 0.
    void ReInit();
    /// Sets the buffer to `pStr` followed by 15000 zero characters; the used length does not change.
    void SetString(const QString& pStr);
    /// Appends `pStr` at the used length.
    void SConcat(QStringView pStr);
    /// Returns the used part and empties the buffer. The used length does not change, so call ReInit before a new text.
    QString GetString();

 private:
    void grow(qsizetype added);

    QString m_buffer;
    qsizetype m_used = 0;
};
