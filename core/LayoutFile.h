#pragma once
#include <optional>
#include <string>

// layout.ini: position and size of the main window and the docking manager's perspective.
// Binary despite its name: four little-endian integers, then the text with its length.
struct WindowLayout {
    int x = 0;
    int y = 0;
    int width = 800;
    int height = 600;
    std::string perspective;
};

bool SaveLayout(const std::string& path, const WindowLayout& layout);

// Empty when the file is missing or cannot be opened. Sizes below 100 are corrected: a width
// becomes 400 with x 0, a height 300 with y 0. A damaged text is dropped with a warning.
std::optional<WindowLayout> LoadLayout(const std::string& path);
