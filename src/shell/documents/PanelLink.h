#pragma once

#include <QString>

/// The frame's calls to the side panel: reports and queries. Documents are identified by their key. The link outlives
/// the frame.
class PanelLink {
 public:
    virtual ~PanelLink() = default;

    /// First call only: the panel makes its lists ready.
    virtual void InitObjects() = 0;
    /// A document was created.
    virtual void AddFile(const QString& caption, const QString& key) = 0;
    /// Its file or state changed; `image` is that of its tab. An empty file leaves the row's text unchanged.
    virtual void SetFile(const QString& file, const QString& key, int image) = 0;
    virtual void RemoveFile(const QString& key) = 0;
    /// The document was chosen by its tab.
    virtual void FileSelected(const QString& key) = 0;

    /// A drag of rows out of the panel's own file list is under way.
    virtual bool Busy() const = 0;
    virtual void OpenSelectedFiles() = 0;
    /// Icons of the files' types in the lists.
    virtual void setDefaultSysIcon(bool on) = 0;
};

/// In place of the side panel, which is not built yet: does nothing.
class NoPanel : public PanelLink {
 public:
    void InitObjects() override {}
    void AddFile(const QString&, const QString&) override {}
    void SetFile(const QString&, const QString&, int) override {}
    void RemoveFile(const QString&) override {}
    void FileSelected(const QString&) override {}
    bool Busy() const override { return false; }
    void OpenSelectedFiles() override {}
    void setDefaultSysIcon(bool) override {}
};
