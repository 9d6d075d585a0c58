#pragma once

#include "hex/bytes/HexSearch.h"

#include <QPointer>
#include <QWidget>

#include <functional>

class HexPanes;
class ObservedBytes;
struct HexBlock;
enum class HexFindDirection : qint16;
struct HexFindState;
struct Options;

/// The scans of a hex view over its file: for one match, which is shown on the page, and over all matches, which are
/// counted, get bookmarks, or are replaced. A fill of a block counts as one. One that takes long shows how far it is,
/// and Esc stops it: it then has the results up to there. Owned by the view.
///
/// A scan that takes long runs the event loop (yields); the view may be destroyed meanwhile, and this object with it.
class HexScans {
 public:
    using Notice = std::function<void(const QString& text)>;

    /// All outlive this object. `notice` shows a text in the status bar, an empty one removes it.
    HexScans(QWidget* view, ObservedBytes& bytes, HexPanes& panes, const Options& options, HexFindState& state,
             Notice notice);

    /// The match behind or before the cursor. The search is stored as the last one, unless it would begin behind the
    /// end of the file.
    std::optional<FilePosition> find(const QString& text, HexFindType type, HexFindDirection direction);

    /// How many matches there are, or were until the scan was stopped.
    int count(const QString& text, HexFindType type);
    /// Those that had a bookmark are counted too.
    int mark(const QString& text, HexFindType type);
    HexSearch::Replaced replace(const QString& text, HexFindType type, const QByteArray& replacement);

    /// Overwrites the block, or its beginning until it was stopped.
    SystemError fill(const HexBlock& block, quint8 byte);

    /// While one runs no other is begun: each of the above then finds nothing.
    bool isRunning() const { return m_isRunning; }
    /// Whether Esc stopped the last one.
    bool wasStopped() const { return m_wasStopped; }

 private:
    // False: nothing was scanned, or this object was destroyed meanwhile.
    bool scanFor(const std::optional<HexNeedle>& needle, const std::function<void(HexSearch&, const HexNeedle&)>& scan);
    bool run(const QString& text, const std::function<void(const ScanWatch&)>& work);

    QPointer<QWidget> m_view;
    ObservedBytes& m_bytes;
    HexPanes& m_panes;
    const Options& m_options;
    HexFindState& m_state;
    Notice m_notice;
    bool m_isRunning = false;
    bool m_wasStopped = false;
};
