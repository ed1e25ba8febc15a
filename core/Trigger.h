#pragma once
#include <string>

#include "OwningArray.h"

class TriggerPlugin;

struct Trigger {
    std::string name;
    std::string settings;
    int id = 1;
    TriggerPlugin* plugin = nullptr;
};

class ArrayTrigger : public OwningArray<Trigger> {
  public:
    ArrayTrigger() : OwningArray("ArrayTrigger") {}
};
