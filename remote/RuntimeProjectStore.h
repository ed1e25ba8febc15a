#pragma once
#include <string>

// The runtime's project on disk: the project it runs, the one it ran before the last upload
// (kept so that one upload can be rolled back) and the uploads staged while they are checked.
// Every change is a rename of whole folders, so no step leaves half a project behind.
class RuntimeProjectStore {
  public:
    static constexpr const char* kProjectFile = "runtime.tlr";
    // The files of a project folder that do not travel in a project block.
    static constexpr const char* kKeptFiles[] = {"templates.xml", "countrycodes.txt"};
    // Below incoming/: a checked upload on disk, and the one the main loop has taken.
    static constexpr const char* kReady = "ready";
    static constexpr const char* kTaken = "taken";

    // root holds runtime/, runtime.previous/ and incoming/ ("<appdir>/projects").
    explicit RuntimeProjectStore(std::string root) : root_(std::move(root)) {}

    std::string CurrentFolder() const { return root_ + "/runtime"; }
    std::string PreviousFolder() const { return root_ + "/runtime.previous"; }
    std::string IncomingFolder() const { return root_ + "/incoming"; }
    std::string CurrentProject() const { return CurrentFolder() + "/" + kProjectFile; }
    bool HasProject() const;

    // A checked upload in staged becomes the current project; the current one becomes the
    // previous, and the previous before it goes (with no current one, the running project's
    // folder is kept as the previous). The plate templates of the current project stay with
    // the new one. False (nothing changed) when the folders cannot be moved.
    bool Replace(const std::string& staged, const std::string& running = std::string());
    // Swaps the current project and the previous one; false when there is no previous one.
    bool Rollback();
    // At start: an upload that was answered <OK> but not yet swapped in (the program ended
    // between the two) becomes the current project. True when one did.
    bool ReplayStaged();

  private:
    static constexpr size_t kMaxKeptFile = 64u << 20;
    void KeepAsPrevious(const std::string& running) const;

    std::string root_;
};
