#include "PlateReading.h"

#include <algorithm>

namespace {

bool Holds(const PlateReading& whole, const PlateReading& part) {
    return part.plate.size() < whole.plate.size() &&
           whole.plate.find(part.plate) != std::string::npos && whole.box.width > part.box.width &&
           (whole.box & part.box).area() * 2 >= part.box.area();
}

}  // namespace

void RankWholeReadingsFirst(std::vector<PlateReading>& readings) {
    // Shorter readings first, so that a part is ranked before each reading holding it.
    std::stable_sort(readings.begin(), readings.end(),
                     [](const PlateReading& a, const PlateReading& b) {
                         return a.plate.size() < b.plate.size();
                     });
    for (PlateReading& whole : readings)
        for (const PlateReading& part : readings)
            if (Holds(whole, part))
                whole.rank = std::max(whole.rank, part.rank + 0.01);
}
