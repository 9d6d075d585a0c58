#include "platform/FileType.h"

#include "platform/FileHead.h"

#include <algorithm>

namespace {

/// The first bytes of a file, padded with zeros to FileHeadSize bytes.
class Head {
 public:
    explicit Head(QByteArrayView bytes)
        : m_bytes(bytes.first(std::min(bytes.size(), FileHeadSize)).toByteArray().leftJustified(FileHeadSize, '\0')) {}

    /// `position` counts bytes from 1.
    bool has(const char* text, qsizetype position = 1) const {
        return QByteArrayView(m_bytes).sliced(position - 1).startsWith(QByteArrayView(text));
    }
    bool holds(const char* text) const { return m_bytes.contains(text); }
    char at(qsizetype position) const { return m_bytes.at(position - 1); }
    const QByteArray& bytes() const { return m_bytes; }

 private:
    QByteArray m_bytes;
};

bool holdsBinaryByte(QByteArrayView bytes) {
    return std::ranges::any_of(bytes, [](char byte) { return byte == '\xFF' || (byte >= 1 && byte <= 3); });
}

struct TypeRow {
    const char* name;
    bool (*matches)(const Head&);
};

/// The first row that matches decides the name.
constexpr TypeRow TypeTable[] = {
    {"PE Executable", [](const Head& head) { return head.has("MZ") || head.has("ZM"); }},
    {"INI File", [](const Head& head) { return head.has("[") && head.bytes().first(100).contains(']'); }},
    {"AVI Movie File", [](const Head& head) { return head.has("AVI LIST", 9); }},
    {"WAV Audio File", [](const Head& head) { return head.has("RIFF"); }},
    {"Microsoft Word Document", [](const Head& head) { return head.has("\xD0\xCF\x11\xE0"); }},
    {"Microsoft Access Database", [](const Head& head) { return head.has("Standard Jet DB", 5); }},
    {"GIF Image File", [](const Head& head) { return head.has("GIF") || head.holds("GIF89"); }},
    {"MP3 Audio File", [](const Head& head) { return head.at(1) == '\xFF' && head.at(5) == '\0'; }},
    {"BMP (Bitmap) Image File", [](const Head& head) { return head.has("BM"); }},
    {"TIFF Image File", [](const Head& head) { return head.has("II*"); }},
    {"ZIP Archive File", [](const Head& head) { return head.has("PK"); }},
    {"HTML Document File",
     [](const Head& head) {
         const QByteArray lower = head.bytes().toLower();
         return lower.contains("<html>") || lower.contains("<!doctype");
     }},
    {"RAR Archive File", [](const Head& head) { return head.bytes().first(3).toUpper() == "RAR"; }},
    {"ARJ Archive File", [](const Head& head) { return head.has("\x60\xEA"); }},
    {"JPEG Image File", [](const Head& head) { return head.has("\xFF\xD8\xFF"); }},
    {"Visual Basic Project File", [](const Head& head) { return head.holds("Type=") && head.holds("Reference="); }},
    {"Visual Basic Group Project File", [](const Head& head) { return head.has("VBGROUP "); }},
    {"Visual Basic Form File", [](const Head& head) { return head.has("VERSION ") && head.holds("\nBegin"); }},
    {"Unknown binary file", [](const Head& head) { return holdsBinaryByte(head.bytes()); }},
    {"Unknown text file", [](const Head&) { return true; }},
};

}  // namespace

bool IsBinaryFile(const QString& path) {
    return holdsBinaryByte(fileHead(path, FileHeadSize));
}

QString fileTypeName(QByteArrayView head) {
    const Head bytes(head);
    const auto* row = std::ranges::find_if(TypeTable, [&](const TypeRow& each) { return each.matches(bytes); });
    return QString::fromLatin1(row->name);
}
