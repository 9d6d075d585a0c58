#pragma once

#include "hex/grid/HexColours.h"

#include <QPainter>
#include <QWidget>

/// A small filled square that shows a column or a row from its edge.
class HexMarker : public QWidget {
 public:
    static constexpr int Size = 6;

    explicit HexMarker(QWidget* parent) : QWidget(parent) {
        setFixedSize(Size, Size);
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), isEnabled() ? HexColours::marker(palette()) : palette().color(QPalette::Mid));
    }
};
