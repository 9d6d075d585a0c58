// Any bytes as the file of a session: it is a project or documents, and each record of a document that is written again
// is the same record.

#include "FuzzEntry.h"
#include "settings/files/OwnTextFile.h"
#include "shell/session/DocumentRecord.h"
#include "shell/session/SessionFile.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const SessionFile session = SessionFile::fromLines(OwnTextFile::linesOf(viewOf(data, size)));
    require(session.project.isEmpty() || session.records.isEmpty());
    for (const QString& line : session.records) {
        const DocumentRecord record = DocumentRecord::fromLine(line);
        for (const float length : {record.left, record.top, record.width, record.height})
            require(std::isfinite(length));
        require(!record.path.contains(u'\t'));
        const QString written = record.toLine();
        if (!written.isEmpty())
            require(DocumentRecord::fromLine(written).toLine() == written);
    }
    if (!session.project.contains(u'\t') && !session.project.contains(u'\r'))
        require(SessionFile::fromLines(session.toLines()) == session);
    return 0;
}
