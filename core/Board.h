#pragma once
#include <string>

#include "OwningArray.h"

class BoardPlugin;

struct Board {
    std::string name;
    std::string settings;
    int id = 1;
    BoardPlugin* plugin = nullptr;
};

class ArrayBoard : public OwningArray<Board> {
  public:
    ArrayBoard() : OwningArray("ArrayBoard") {}
};
