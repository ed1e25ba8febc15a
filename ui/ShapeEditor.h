#pragma once
#include <vector>

#include "core/Lane.h"

// The polygon the operator draws over the live view, in thousandths of the picture.
struct ShapeEditor {
    enum State { kNoImage = 0, kReady = 1, kDrawing = 2 };
    int state = kNoImage;
    std::vector<ShapePoint> points;
    int ox = 0;
    int oy = 0;
    int imgw = 0;
    int imgh = 0;

    // The picture's point under a window position; false outside it (edges included).
    bool ToImage(int x, int y, ShapePoint& point) const;
    // A left click: starts, extends or closes the polygon. True when it closed.
    bool Click(int x, int y);
    // A move or a button release while drawing: the moving point follows.
    bool Move(int x, int y);
};
