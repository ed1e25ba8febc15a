// A trigger whose status is the <STATUS> of its settings.
#include "Journal.h"
#include "corvane/TagText.h"
#include "corvane/TriggerPlugin.h"

namespace {

class TestTrigger : public TriggerPlugin {
  public:
    void Open(std::string name, int id) override {
        journal::Note("Open:" + name + ":" + std::to_string(id));
    }
    void Close(std::string name, int id) override {
        journal::Note("Close:" + name + ":" + std::to_string(id));
    }
    std::string GetParameters(int) override {
        return "\n<PARAMETER>\n<NAME>Status<\\NAME><TYPE>INT<\\TYPE><DEFAULT>1<\\DEFAULT>\n"
               "<\\PARAMETER>\n";
    }
    void SetParameters(std::string text) override {
        journal::Note("SetParameters:" + text);
        status_ = GetTagInt(text, "STATUS");
    }
    std::string GetLibName() override { return "TestTrigger"; }
    std::string GetGuiName() override { return "Test Trigger"; }
    void SetBoardStatus(std::string) override {}
    void ProcessFrame(void*, int, int, int) override {}
    int GetStatus() override { return status_; }
    int HasDialog() override { return 0; }
    int ShowDialog(NativeWindow, std::string) override { return 0; }

  private:
    int status_ = 1;
};

}  // namespace

CORVANE_PLUGIN_EXPORT TriggerPlugin* CreateTriggerPlugin() {
    return new TestTrigger();
}
