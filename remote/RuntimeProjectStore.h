#pragma once
#include <string>

// The runtime's project on disk: the project it runs, the one it ran before the last upload
// (kept so that one upload can be rolled back) and the uploads staged while they are checked.
// Every change is a rename of whole folders, so no step leaves half a project behind.
class RuntimeProjectStore {
  public:
    static constexpr const char* kProjectFile = "runtime.tlr";

    // root holds runtime/, runtime.previous/ and incoming/ ("<appdir>/projects").
    explicit RuntimeProjectStore(std::string root) : root_(std::move(root)) {}

    std::string CurrentFolder() const { return root_ + "/runtime"; }
    std::string PreviousFolder() const { return root_ + "/runtime.previous"; }
    std::string IncomingFolder() const { return root_ + "/incoming"; }
    std::string CurrentProject() const { return CurrentFolder() + "/" + kProjectFile; }
    bool HasProject() const;

    // A checked upload in staged becomes the current project; the current one becomes the
    // previous, and the previous before it goes. The plate templates of the current project
    // stay with the new one. False (nothing changed) when the folders cannot be moved.
    bool Replace(const std::string& staged);
    // Swaps the current project and the previous one; false when there is no previous one.
    bool Rollback();

  private:
    std::string root_;
};
