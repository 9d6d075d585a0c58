#pragma once

#include "workspace/host/WorkspaceHost.h"

#include <QStringList>

#include <functional>
#include <utility>

/// A frame that records what the panel asks of it.
class NotedHost : public WorkspaceHost {
 public:
    QStringList calls;
    /// Called with each request, once it is recorded; may be empty.
    std::function<void(const QString& call)> answer;

    QStringList take() { return std::exchange(calls, {}); }

    void selectDocument(const QString& key) override { note(u"select "_qs + key); }
    void openFile(const QString& path) override { note(u"open "_qs + path); }
    void closeDocument() override { note(u"close"_qs); }
    void saveDocument() override { note(u"save"_qs); }
    void dragStarts() override { note(u"drag starts"_qs); }
    void dragEnds() override { note(u"drag ends"_qs); }
    void hidePanel() override { note(u"hide"_qs); }

 private:
    void note(const QString& call) {
        calls << call;
        if (answer)
            answer(call);
    }
};
