#include "shell/recovery/DocumentDifferences.h"

#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "editor/control/TextControl.h"
#include "shell/recovery/Comparisons.h"
#include "shell/recovery/frmDifferences.h"

void DocumentDifferences::show(const frmDocument& document, QWidget& window) {
    const TextControl& control = document.GetEditor()->control();
    const QByteArray recovered = control.bytes(0, control.heldText().length());
    const auto work = [path = document.filename, recovered](const std::atomic<bool>& cancelled) {
        return Comparisons::ofTexts(path, recovered, cancelled);
    };
    (new frmDifferences(document.Caption(), work, &window))->show();
}
