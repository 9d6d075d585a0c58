#pragma once

#include <QString>

/// The pages of the help, in the folder `help` of the program folder or else of the installed files, opened by the
/// desktop's program for such pages. Owned by the frame.
class HelpPages {
 public:
    HelpPages(const QString& programFolder, const QString& shareFolder);

    /// Full path of a page, by its file name.
    QString pathOf(const QString& page) const;
    /// Without effect when the page is missing or no program opens it.
    void show(const QString& page) const;

 private:
    QString m_programFolder;
    QString m_shareFolder;
};
