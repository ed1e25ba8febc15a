#include "ShapeEditor.h"

bool ShapeEditor::ToImage(int x, int y, ShapePoint& point) const {
    if (imgw <= 0 || imgh <= 0)
        return false;
    point.x = ((x - ox) * 1000) / imgw;
    point.y = ((y - oy) * 1000) / imgh;
    return point.x >= 0 && point.x <= 1000 && point.y >= 0 && point.y <= 1000;
}

bool ShapeEditor::Click(int x, int y) {
    ShapePoint point;
    if (state == kReady) {
        points.clear();
        if (!ToImage(x, y, point))
            return false;
        state = kDrawing;
        points.push_back(point);
        points.push_back(point);  // the moving point
        return false;
    }
    if (state != kDrawing)
        return false;
    const int firstX = points.front().x * imgw / 1000 + ox;
    const int firstY = points.front().y * imgh / 1000 + oy;
    const int dx = x - firstX;
    const int dy = y - firstY;
    if (dx * dx + dy * dy <= 25) {
        points.pop_back();
        state = kReady;
        return true;
    }
    if (ToImage(x, y, point)) {
        points.back() = point;
        points.push_back(point);
    }
    return false;
}

bool ShapeEditor::Move(int x, int y) {
    ShapePoint point;
    if (state != kDrawing || points.empty() || !ToImage(x, y, point))
        return false;
    points.back() = point;
    return true;
}
