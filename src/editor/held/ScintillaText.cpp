#include "editor/held/ScintillaText.h"

qint64 ScintillaText::ask(unsigned message, qint64 first, qint64 second) const {
    return m_view.SendScintilla(message, static_cast<unsigned long>(first), static_cast<long>(second));
}

qint64 ScintillaText::length() const {
    return ask(QsciScintillaBase::SCI_GETLENGTH);
}

qint64 ScintillaText::gap() const {
    return ask(QsciScintillaBase::SCI_GETGAPPOSITION);
}

std::string_view ScintillaText::range(qint64 from, qint64 length) const {
    if (length <= 0)
        return {};
    // Scintilla returns an address as an integer.
    const auto address = static_cast<std::uintptr_t>(ask(QsciScintillaBase::SCI_GETRANGEPOINTER, from, length));
    return {reinterpret_cast<const char*>(address), static_cast<std::size_t>(length)};
}

qint64 ScintillaText::lineCount() const {
    return ask(QsciScintillaBase::SCI_GETLINECOUNT);
}

qint64 ScintillaText::lineOf(qint64 byte) const {
    return ask(QsciScintillaBase::SCI_LINEFROMPOSITION, byte);
}

qint64 ScintillaText::lineStart(qint64 line) const {
    return ask(QsciScintillaBase::SCI_POSITIONFROMLINE, line);
}
