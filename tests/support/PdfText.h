#pragma once

#include <QImage>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

/// What the tools of the system read in a PDF file.
namespace PdfText {

inline QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(120000)) << qPrintable(program);
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    return process.readAllStandardOutput();
}

/// The rows of each page as they lie on it, without the blanks at their ends and without empty rows.
inline QList<QStringList> pages(const QString& path) {
    const QString text = QString::fromUtf8(outputOf(u"pdftotext"_qs, {u"-layout"_qs, path, u"-"_qs}));
    QList<QStringList> pages;
    QStringList parts = text.split(u'\f');
    parts.removeLast();  // each page ends in a form feed
    for (const QString& part : parts) {
        QStringList rows;
        for (const QString& row : part.split(u'\n')) {
            if (!row.trimmed().isEmpty())
                rows << row.trimmed();
        }
        pages << rows;
    }
    return pages;
}

/// The same without the first row of each page, its header, all in one list.
inline QStringList rows(const QString& path) {
    QStringList all;
    for (const QStringList& page : pages(path))
        all += page.mid(1);
    return all;
}

inline QImage picture(const QString& path, int page, int dotsPerInch) {
    const QString number = QString::number(page);
    const QByteArray png = outputOf(
        u"pdftoppm"_qs, {u"-png"_qs, u"-r"_qs, QString::number(dotsPerInch), u"-f"_qs, number, u"-l"_qs, number, path});
    return QImage::fromData(png, "png");
}

}  // namespace PdfText
