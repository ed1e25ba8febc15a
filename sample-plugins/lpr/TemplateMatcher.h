#pragma once
#include <string>

#include "templates/TemplateSet.h"

// Applies a project's plate templates to a reading. Layout characters: L a letter, N a digit,
// A either; others are separators and not compared. A template fits a reading of the same
// number of characters; its percentage is the share of positions whose character has the
// right class and is not forbidden. The best template is the one with the highest
// percentage (the first in file order on a tie).
class TemplateMatcher {
  public:
    struct Outcome {
        std::string plate;  // after substitutions
        std::string tags;   // the reading's tag text
        bool discarded = false;
    };

    explicit TemplateMatcher(TemplateSet templates) : set_(std::move(templates)) {}

    bool Active() const { return set_.useTempl != 0; }

    // plate as read; formFactor = plate width * 100 / plate height; rows: 1 or 2.
    Outcome Apply(const std::string& plate, int formFactor, int rows = 1) const;

    // Slots of the best template for a reading (same length as plate), empty for none.
    std::string BestSlots(const std::string& plate) const;
    // True when c may stand in the slot of the template (class and forbidden characters).
    static bool SlotAccepts(char c, char slot);
    // Characters a slot accepts, for a guided re-read.
    static std::string SlotCharacters(char slot);

    // The tags of a reading when templates are not used.
    static std::string PlainTags(const std::string& plate, int formFactor, int rows = 1);

    // Layout characters that are compared, separators removed.
    static std::string Slots(const std::string& layout);
    static int Percentage(const std::string& plate, const std::string& slots,
                          const PlateTemplate& plate_template);

  private:
    const PlateTemplate* Best(const std::string& plate, int* bestPercOut, std::string* list) const;

    TemplateSet set_;
};
