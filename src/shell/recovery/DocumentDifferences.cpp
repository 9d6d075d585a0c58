#include "shell/recovery/DocumentDifferences.h"

#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "editor/control/TextControl.h"
#include "shell/recovery/Comparisons.h"
#include "shell/recovery/frmDifferences.h"

#include <fcntl.h>
#include <unistd.h>

#include <memory>

namespace {

/// A handle of one's own on an open file.
class OwnHandle {
 public:
    explicit OwnHandle(int handle) : m_handle(fcntl(handle, F_DUPFD_CLOEXEC, 0)) {}
    ~OwnHandle() {
        if (m_handle >= 0)
            close(m_handle);
    }
    Q_DISABLE_COPY_MOVE(OwnHandle)

    /// A path by which this process opens the same file.
    QString path() const { return u"/proc/self/fd/%1"_qs.arg(m_handle); }

 private:
    int m_handle;
};

frmDifferences::Work comparisonOfTexts(const frmDocument& document) {
    const TextControl& control = document.GetEditor()->control();
    const QByteArray recovered = control.bytes(0, control.heldText().length());
    return [path = document.recoveredPath(), recovered](const std::atomic<bool>& cancelled) {
        return Comparisons::ofTexts(path, recovered, cancelled);
    };
}

/// The working copy may be closed meanwhile.
frmDifferences::Work comparisonOfBytes(const frmDocument& document) {
    return [path = document.recoveredPath(), copy = std::make_shared<OwnHandle>(document.bytesHandle())](
               const std::atomic<bool>& cancelled) { return Comparisons::ofBytes(path, copy->path(), cancelled); };
}

}  // namespace

void DocumentDifferences::show(const frmDocument& document, QWidget& window) {
    const frmDifferences::Work work = document.TextEdit() ? comparisonOfTexts(document) : comparisonOfBytes(document);
    (new frmDifferences(document.Caption(), work, &window))->show();
}
