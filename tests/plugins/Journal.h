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

// A script that steers a test plug-in's answers: "key=value" lines, set by the test.
namespace journal {

inline std::string& ScriptText() {
    static std::string text;
    return text;
}

inline std::string Script() {
    std::lock_guard<std::mutex> lock(Mutex());
    return ScriptText();
}

// The value of "key=" in the script, or fallback.
inline std::string ScriptValue(const std::string& key, const std::string& fallback) {
    const std::string script = "\n" + Script();
    const size_t at = script.find("\n" + key + "=");
    if (at == std::string::npos)
        return fallback;
    const size_t begin = at + key.size() + 2;
    return script.substr(begin, script.find('\n', begin) - begin);
}

}  // namespace journal

CORVANE_PLUGIN_EXPORT void TestScriptSet(const char* script) {
    std::lock_guard<std::mutex> lock(journal::Mutex());
    journal::ScriptText() = script;
}
