#include "editor/print/PrinterQueue.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QPrintEngine>
#include <QPrinter>
#include <QStringList>

namespace {

/// Options that are sent with the print: names and values by turns. Qt has no name for this property.
constexpr auto QueueOptions = static_cast<QPrintEngine::PrintEnginePropertyKey>(0xFE00);

/// The numbers of answers from here on, and those below zero, say that the request was refused.
constexpr int FirstRefusal = 0x200;

}  // namespace

namespace PrinterQueue {

/// A queue does not accept a print whose last page is before its first.
void withdraw(QPrinter& printer) {
    printer.printEngine()->setProperty(QueueOptions, QStringList{u"page-ranges"_qs, u"2-1"_qs});
}

/// Qt uses the same library, and the last answer is that of the print. A system without the library has no queue.
QString refusal() {
    constexpr int LibraryVersion = 2;
    QLibrary library(u"cups"_qs, LibraryVersion);
    const auto lastError = reinterpret_cast<int (*)()>(library.resolve("cupsLastError"));
    const auto lastText = reinterpret_cast<const char* (*)()>(library.resolve("cupsLastErrorString"));
    if (lastError == nullptr || lastText == nullptr)
        return {};
    const int answer = lastError();
    if (answer >= 0 && answer < FirstRefusal)
        return {};
    const char* text = lastText();
    return text != nullptr ? QString::fromUtf8(text)
                           : QCoreApplication::translate("PrinterQueue", "The printer does not answer.");
}

}  // namespace PrinterQueue
