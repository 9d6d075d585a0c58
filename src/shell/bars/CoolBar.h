#pragma once

#include <QWidget>

#include <array>

/// The rows above the documents: band "Tool" with the tool bar and, in a row of its own, band "Tab" with the document
/// tabs. Owned by the frame. The bands' visible flags are stored only here; with none of them visible the whole bar is
/// hidden.
class CoolBar : public QWidget {
    Q_OBJECT

 public:
    enum Band { Tool, Tab };

    explicit CoolBar(QWidget* parent = nullptr);

    /// Moves the widget into the band, which owns it from then on.
    void setBand(Band band, QWidget* content);
    bool isBandVisible(Band band) const;
    void setBandVisible(Band band, bool visible);

 private:
    std::array<QWidget*, 2> m_bands{};
};
