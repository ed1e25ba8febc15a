#pragma once
#include <string>

#include "OwningArray.h"

class IntegratorPlugin;

// A gate, which the operator calls a Lane or Gate.
struct Integrator {
    std::string name;
    std::string settings;
    int id = 1;
    int OpMode = 0;  // 0 "Unattended", 1 "Attended", other values "UNDEFINED"
    IntegratorPlugin* plugin = nullptr;
};

class ArrayIntegrator : public OwningArray<Integrator> {
  public:
    ArrayIntegrator() : OwningArray("ArrayIntegrator") {}
};
