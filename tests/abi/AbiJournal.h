#pragma once
// The journal of an ABI test plug-in: every slot notes its name and what it was given; the test
// reads it through the exported AbiJournal. Each plug-in has its own copy.
#include <string>

static std::string journal;

extern "C" const char* AbiJournal() {
    return journal.c_str();
}

static void Note(const std::string& entry) {
    journal += entry + "\n";
}
