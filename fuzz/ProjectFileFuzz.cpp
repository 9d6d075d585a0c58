// Any bytes as a project file: every line is read by the rules of its section, and what was read is written and read
// again as the same.

#include "FuzzEntry.h"
#include "settings/files/OwnTextFile.h"
#include "workspace/project/ProjectFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ProjectFile;
    Reader reader;
    for (const QString& line : OwnTextFile::linesOf(viewOf(data, size))) {
        const Section section = reader.take(line);
        require(section == Section::None || !line.startsWith(QLatin1String("<<")));
        if (const auto item = readItem(line)) {
            const auto written = itemLine(*item);
            require(!written || readItem(*written) == item);
        }
        if (const auto status = readStatus(line)) {
            const auto again = readStatus(statusLine(*status));
            require(again && again->visible == status->visible && (!status->left || again->left == status->left));
        }
    }
    return 0;
}
