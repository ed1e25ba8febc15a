#pragma once
// The RTSP camera of the tests (rtsp_camera), in a process of its own: started, killed, frozen
// and thawed by the test. It ends by itself after two minutes in any case.
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "ChildOutput.h"

class CameraProcess {
  public:
    // The rendering camera (rtsp_camera) on port, its stream named "cam".
    CameraProcess(int port, const std::string& plates, int width = 640, int height = 360,
                  int fps = 10)
        : CameraProcess({RTSP_CAMERA_BINARY, std::to_string(port), "cam", std::to_string(width),
                         std::to_string(height), std::to_string(fps),
                         plates.empty() ? "AB123CD" : plates, "120"}) {}

    // Any camera command that prints "ready" once it listens.
    explicit CameraProcess(std::vector<std::string> command) {
        int output = -1;
        pid_ = StartWithOutput(std::move(command), output);
        // Ready once it says so (it listens then), or not at all within 10 s.
        pollfd waiting{output, POLLIN, 0};
        char said[16] = {0};
        if (pid_ > 0 && ::poll(&waiting, 1, 10000) > 0)
            ready_ = ::read(output, said, sizeof said - 1) > 0 &&
                     std::string(said).rfind("ready", 0) == 0;
        // Kept open while the camera lives: a write after "ready" (the rest of its line, a
        // closing word) must not kill it with a broken pipe.
        said_ = output;
    }
    ~CameraProcess() { Kill(); }
    bool Ready() const { return ready_; }
    void Kill() {
        if (pid_ > 0) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
        pid_ = -1;
        if (said_ >= 0)
            ::close(said_);
        said_ = -1;
    }
    void Freeze() { ::kill(pid_, SIGSTOP); }
    void Thaw() { ::kill(pid_, SIGCONT); }

  private:
    pid_t pid_ = -1;
    int said_ = -1;  // the read end of the camera's standard output
    bool ready_ = false;
};
