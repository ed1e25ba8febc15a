#pragma once
// Every test plug-in keeps a journal of the calls it received. Tests read it through the
// exports below, found with dlsym on the already loaded library.
#include <mutex>
#include <string>

#include "corvane/PluginTypes.h"

namespace journal {

inline std::mutex& Mutex() {
    static std::mutex mutex;
    return mutex;
}

inline std::string& Text() {
    static std::string text;
    return text;
}

inline void Note(const std::string& line) {
    std::lock_guard<std::mutex> lock(Mutex());
    Text() += line + "\n";
}

}  // namespace journal

// A copy of the journal, valid until the calling thread asks again.
CORVANE_PLUGIN_EXPORT const char* TestJournalText() {
    thread_local std::string copy;
    std::lock_guard<std::mutex> lock(journal::Mutex());
    copy = journal::Text();
    return copy.c_str();
}

CORVANE_PLUGIN_EXPORT void TestJournalClear() {
    std::lock_guard<std::mutex> lock(journal::Mutex());
    journal::Text().clear();
}
