#pragma once
#include <string>

#include "OwningArray.h"

class PostProcessorPlugin;

struct PostProcessor {
    std::string name;
    std::string settings;
    int id = 1;
    std::string refintegrator = "No Integrator";
    PostProcessorPlugin* plugin = nullptr;
};

class ArrayPostProcessor : public OwningArray<PostProcessor> {
  public:
    ArrayPostProcessor() : OwningArray("ArrayPostProcessor") {}
};
