#include "TemplateMatcher.h"

#include <algorithm>
#include <cctype>

#include "corvane/TagText.h"

namespace {

bool FitsSlot(char c, char slot) {
    const auto u = static_cast<unsigned char>(c);
    switch (slot) {
        case 'L':
            return std::isupper(u) != 0;
        case 'N':
            return std::isdigit(u) != 0;
        default:
            return std::isalnum(u) != 0;
    }
}

bool Forbidden(char c, const PlateTemplate& plate) {
    return std::find(plate.forbidden.begin(), plate.forbidden.end(), c) != plate.forbidden.end();
}

bool Fits(char c, char slot, const PlateTemplate& plate) {
    return FitsSlot(c, slot) && !Forbidden(c, plate);
}

// Replaces characters that do not fit their slot by a substitute that does.
std::string Substituted(const std::string& plate, const std::string& slots,
                        const PlateTemplate& plate_template) {
    std::string result = plate;
    for (size_t i = 0; i < result.size(); ++i) {
        if (Fits(result[i], slots[i], plate_template))
            continue;
        for (const auto& [original, replacement] : plate_template.substitutions)
            if (original == result[i] && Fits(replacement, slots[i], plate_template)) {
                result[i] = replacement;
                break;
            }
    }
    return result;
}

}  // namespace

std::string TemplateMatcher::Slots(const std::string& layout) {
    std::string slots;
    for (const char c : layout)
        if (c == 'L' || c == 'N' || c == 'A')
            slots += c;
    return slots;
}

int TemplateMatcher::Percentage(const std::string& plate, const std::string& slots,
                                const PlateTemplate& plate_template) {
    if (plate.empty() || plate.size() != slots.size())
        return 0;
    int fitting = 0;
    for (size_t i = 0; i < plate.size(); ++i)
        if (Fits(plate[i], slots[i], plate_template))
            ++fitting;
    return fitting * 100 / static_cast<int>(plate.size());
}

std::string TemplateMatcher::PlainTags(const std::string& plate, int formFactor, int rows) {
    std::string tags;
    tags += "<ORIG>" + plate + "<\\ORIG>";
    tags += "<FFORIG>" + std::to_string(formFactor) + "<\\FFORIG>";
    tags += "<NUMROW>" + std::to_string(rows) + "<\\NUMROW>";
    return tags;
}

bool TemplateMatcher::SlotAccepts(char c, char slot) {
    return FitsSlot(c, slot);
}

std::string TemplateMatcher::SlotCharacters(char slot) {
    switch (slot) {
        case 'L':
            return "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
        case 'N':
            return "0123456789";
        default:
            return "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    }
}

std::string TemplateMatcher::BestSlots(const std::string& plate) const {
    int perc = 0;
    const PlateTemplate* best = Best(plate, &perc, nullptr);
    return best == nullptr ? std::string() : Slots(best->templ1);
}

const PlateTemplate* TemplateMatcher::Best(const std::string& plate, int* bestPercOut,
                                           std::string* list) const {
    const PlateTemplate* best = nullptr;
    int bestPerc = -1;
    for (const auto& candidate : set_.templates) {
        if (candidate.use == 0 || candidate.numRow > 1)
            continue;
        const std::string slots = Slots(candidate.templ1);
        if (slots.size() != plate.size())
            continue;
        const int perc = Percentage(plate, slots, candidate);
        if (perc == 100 && list != nullptr) {
            if (!list->empty())
                *list += ",";
            *list += candidate.isoCountry + ":" + candidate.templ1;
        }
        if (perc > bestPerc) {
            best = &candidate;
            bestPerc = perc;
        }
    }
    *bestPercOut = bestPerc;
    return best;
}

TemplateMatcher::Outcome TemplateMatcher::Apply(const std::string& plate, int formFactor,
                                                int rows) const {
    Outcome outcome;
    outcome.plate = plate;
    int bestPerc = 0;
    std::string list;
    const PlateTemplate* best = Best(plate, &bestPerc, &list);
    if (best != nullptr && set_.forceSub != 0 && bestPerc >= set_.forceSubPerc) {
        const std::string slots = Slots(best->templ1);
        outcome.plate = Substituted(plate, slots, *best);
        bestPerc = Percentage(outcome.plate, slots, *best);
    }
    if (set_.discard != 0 && (best == nullptr || bestPerc < set_.discardPerc))
        outcome.discarded = true;

    std::string& tags = outcome.tags;
    tags = PlainTags(plate, formFactor, rows);
    if (!list.empty())
        tags += "<LISTTEMPL>" + list + "<\\LISTTEMPL>";
    if (best != nullptr) {
        tags += "<BESTTEMPL>" + best->isoCountry + ":" + best->templ1 + "<\\BESTTEMPL>";
        tags += "<FFBEST>" + std::to_string((best->ffMin + best->ffMax) / 2) + "<\\FFBEST>";
        tags += "<PERC>" + std::to_string(bestPerc) + "<\\PERC>";
        tags += "<CLAB>" + best->isoCountry + "<\\CLAB>";
        tags += "<CID>" + std::to_string(best->idCountry) + "<\\CID>";
    }
    return outcome;
}
