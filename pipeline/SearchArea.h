#pragma once

// The part of a region picture that the plate reader searches in one cycle.
struct SearchArea {
    int x = 0;
    int y = 0;
    int w = 0;
    int h = 0;

    static constexpr int kMotionMargin = 30;
    static constexpr int kMinWidth = 20;  // the reader runs only above these sizes
    static constexpr int kMinHeight = 10;

    static SearchArea WholeImage(int width, int height) { return {0, 0, width, height}; }

    // The last plate's box widened by droiX and droiY percent of the picture on each side.
    static SearchArea AroundPlate(const SearchArea& plate, int width, int height, int droiX,
                                  int droiY) {
        const int mx = width * droiX / 100;
        const int my = height * droiY / 100;
        return {plate.x - mx, plate.y - my, plate.w + 2 * mx, plate.h + 2 * my};
    }

    // The motion box widened left and top. An inverted box (still scene) gives a size far too
    // small to be searched.
    static SearchArea FromMotion(int x1, int y1, int x2, int y2) {
        return {x1 - kMotionMargin, y1 - kMotionMargin, x2 - x1 + kMotionMargin,
                y2 - y1 + kMotionMargin};
    }

    // Keeps the area inside the picture: negative corners become 1, the far edges stay two
    // pixels inside, and the width becomes a multiple of 4.
    SearchArea Limited(int width, int height) const {
        SearchArea area = *this;
        if (area.x < 0)
            area.x = 1;
        if (area.y < 0)
            area.y = 1;
        if (area.x + area.w >= width)
            area.w = width - area.x - 2;
        if (area.y + area.h >= height)
            area.h = height - area.y - 2;
        area.w = area.w / 4 * 4;
        return area;
    }

    bool Searchable() const { return w > kMinWidth && h > kMinHeight; }
};
