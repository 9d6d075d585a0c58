#pragma once

#include <QString>

/// What those who look into a fault need to know about the program and the system that it runs on.
class SystemInformation {
 public:
    /// The folder of the program's own files, and that of the installed ones.
    SystemInformation(const QString& programFolder, const QString& shareFolder);

    /// As a text to be shown with letters of one width: a line with the name of each group, and below it a line for
    /// each fact. What the system does not say is left out. Read anew at each call.
    QString text() const;

 private:
    QString m_programFolder;
    QString m_shareFolder;
};
