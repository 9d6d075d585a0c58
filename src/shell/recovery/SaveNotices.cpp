#include "shell/recovery/SaveNotices.h"

#include <QStringList>

namespace {

QString completedSentence(int count) {
    return count == 1 ? u"An interrupted save has been completed."_qs
                      : u"%1 interrupted saves have been completed."_qs.arg(count);
}

QString asideSentence(int count) {
    return count == 1 ? u"An interrupted save can't be completed; quillmark-recover has it."_qs
                      : u"%1 interrupted saves can't be completed; quillmark-recover has them."_qs.arg(count);
}

}  // namespace

void SaveNotices::report(const SaveRecovery::Summary& summary) {
    QStringList sentences;
    if (summary.completed > 0)
        sentences.push_back(completedSentence(summary.completed));
    if (summary.setAside > 0)
        sentences.push_back(asideSentence(summary.setAside));
    if (!sentences.isEmpty())
        Q_EMIT noticed(sentences.join(u' '));
}
