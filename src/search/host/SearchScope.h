#pragma once

#include "search/engine/SearchRequest.h"

#include <QString>

#include <memory>
#include <vector>

/// A text in an editing view that is searched there. It outlives neither its owner's next call nor the view: after
/// every call that runs the event loop the caller asks isAlive().
class SearchableText {
 public:
    virtual ~SearchableText() = default;

    virtual bool isAlive() const = 0;
    /// Full path; empty for a document without a file.
    virtual QString filename() const = 0;
    /// The matches as the text of a MatchList; "" for none. Both run the event loop.
    virtual QString findAll(const SearchRequest& request) = 0;
    virtual QString replaceAll(const SearchRequest& request) = 0;
    /// Ends one of these two, which return what they have found so far.
    virtual void stop() = 0;
    /// Line and position count from 0; the text of a line is without its line end.
    virtual QString line(qint64 number) const = 0;
    virtual qint64 positionOfLine(qint64 number) const = 0;
};

/// The hidden editor of the frame: for the files that are not searched outside of an editing view.
class HiddenEditor : public SearchableText {
 public:
    /// Both return false on failure, without a message.
    virtual bool openFile(const QString& path) = 0;
    virtual bool saveFile(const QString& path) = 0;
};

/// Where a search finds open documents and the files of the project. Implemented by the frame's room.
class SearchScope {
 public:
    virtual ~SearchScope() = default;

    /// In the order in which the frame keeps them.
    virtual std::vector<std::unique_ptr<SearchableText>> openDocuments() = 0;
    virtual HiddenEditor& hiddenEditor() = 0;

    struct ProjectItem {
        QString name;
        QString type;  ///< "FILE" or another
    };
    virtual bool hasProject() const = 0;
    virtual int projectItemCount() const = 0;
    /// The index counts from 1.
    virtual ProjectItem projectItem(int index) const = 0;
};
