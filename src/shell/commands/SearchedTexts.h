#pragma once

#include "search/host/SearchScope.h"

#include <QPointer>

class frmDocument;
class rtCM;

/// A text view as the search across files sees it. Does not own the view.
class SearchedView : public HiddenEditor {
 public:
    explicit SearchedView(rtCM* view);
    ~SearchedView() override;

    bool isAlive() const override;
    QString filename() const override { return {}; }
    QString findAll(const SearchRequest& request) override;
    QString replaceAll(const SearchRequest& request) override;
    void stop() override;
    QString line(qint64 number) const override;
    qint64 positionOfLine(qint64 number) const override;
    bool openFile(const QString& path) override;
    bool saveFile(const QString& path) override;

 private:
    QPointer<rtCM> m_view;
};

/// The text of an open document, which the search changes as the user would.
class SearchedDocument : public SearchedView {
 public:
    explicit SearchedDocument(frmDocument* document);
    ~SearchedDocument() override;

    bool isAlive() const override;
    QString filename() const override;

 private:
    QPointer<frmDocument> m_document;
};
