// What a hostile upload would smuggle in: a library whose loading alone runs its code. It
// leaves a mark in the file named by CORVANE_INTRUDER_MARK, so a test can tell it never ran.
#include <cstdio>
#include <cstdlib>

namespace {

__attribute__((constructor)) void LeaveMark() {
    if (const char* mark = std::getenv("CORVANE_INTRUDER_MARK")) {
        if (std::FILE* file = std::fopen(mark, "w"))
            std::fclose(file);
    }
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void* CreateTriggerPlugin() {
    LeaveMark();
    return nullptr;
}
