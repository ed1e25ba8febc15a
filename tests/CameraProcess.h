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

extern char** environ;

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
        int out[2];
        if (::pipe2(out, O_CLOEXEC) != 0)
            return;
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, out[1], 1);
        posix_spawn_file_actions_addclose(&actions, out[0]);
        std::vector<char*> argv;
        for (auto& arg : command)
            argv.push_back(arg.data());
        argv.push_back(nullptr);
        if (posix_spawn(&pid_, command[0].c_str(), &actions, nullptr, argv.data(), environ) != 0)
            pid_ = -1;
        posix_spawn_file_actions_destroy(&actions);
        ::close(out[1]);
        // Ready once it says so (it listens then), or not at all within 10 s.
        pollfd waiting{out[0], POLLIN, 0};
        char said[16] = {0};
        if (pid_ > 0 && ::poll(&waiting, 1, 10000) > 0)
            ready_ = ::read(out[0], said, sizeof said - 1) > 0 &&
                     std::string(said).rfind("ready", 0) == 0;
        // Kept open while the camera lives: a write after "ready" (the rest of its line, a
        // closing word) must not kill it with a broken pipe.
        said_ = out[0];
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
