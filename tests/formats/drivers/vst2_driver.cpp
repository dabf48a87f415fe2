// The VST 2 plug-in, driven.

#include <atomic>

#include "tests/formats/drivers/format_driver.h"
#include "tests/vst/plugin_host.h"
#include "vst/plugin_parameters.h"

namespace tarquil {

namespace {

class Vst2Driver final : public FormatDriver {
  public:
    Vst2Driver() {
        newest = this;
        if (!host.load(InstancePlayer().save_state(), false))
            throw std::runtime_error("VST 2 does not take the state");
    }

    bool activate(double rate) override {
        host.call(effSetSampleRate, 0, 0, nullptr, float(rate));
        host.call(effSetBlockSize, 0, BLOCK);
        host.call(effMainsChanged, 0, 1);
        return rate == SAMPLE_RATE;
    }
    void deactivate() override { host.call(effMainsChanged, 0, 0); }

    void add(const SongMessage& message) override {
        host.midi(message.bytes[0], message.bytes[1], message.bytes[2], int32_t(message.frame));
    }
    void set(unsigned controller, int byte, uint32_t /*frame*/) override {
        changes.emplace_back(controller_to_vst_param(int(controller)), byte_to_vst_value(byte));
    }

    void prepare(float* left, float* right, uint32_t frames) override {
        batch = host.take_events();
        outputs[0] = left;
        outputs[1] = right;
        num_frames = int32_t(frames);
    }
    void call() noexcept override {
        host.call(effProcessEvents, 0, 0, batch.events);
        for (const auto& [index, value] : changes)
            host.set(index, value);
        host.effect->processReplacing(host.effect, nullptr, outputs, num_frames);
    }
    void finish() override { changes.clear(); }
    uint32_t latency_frames() override { return uint32_t(host.effect->initialDelay); }

    std::string save(size_t /*piece*/) override { return host.save(false); }
    bool load(const std::string& state, size_t /*piece*/) override {
        return host.load(state, false);
    }
    void look(unsigned round) override {
        char name[] = "renamed";
        host.call(effSetProgram, 0, intptr_t(round % 128));
        host.call(effSetProgramName, 0, 0, name);
        host.call(effCopyProgram, int32_t(round % 16));
        host.text(effGetProgramNameIndexed, int32_t(round % 128));
        for (int32_t i = int32_t(round % 5); i < NUM_VST_PARAMS; i += 5) {
            host.text(effGetParamDisplay, i);
            host.set(i, host.get(i));
        }
    }
    [[nodiscard]] bool locks_for_parameters() const override { return true; }
    [[nodiscard]] bool has_exact_parameters() const override { return false; }

    ~Vst2Driver() override { newest = newest == this ? nullptr : newest.load(); }
    std::vector<std::string> take_told() override {
        return take_noted([](const Told& one) { return vst_value_to_byte(float(one.value)); });
    }
    [[nodiscard]] bool tells_gestures() const override { return true; }

  private:
    static intptr_t VST_CALL answer(AEffect* effect, int32_t opcode, int32_t index, intptr_t, void*,
                                    float value) {
        if (opcode == audioMasterVersion)
            return kVstVersion;
        Vst2Driver* const driver = newest;
        const bool is_told = opcode == audioMasterAutomate || opcode == audioMasterBeginEdit ||
                             opcode == audioMasterEndEdit;
        if (is_told && driver != nullptr && driver->host.effect == effect)
            driver->note_told({opcode == audioMasterAutomate    ? ""
                               : opcode == audioMasterBeginEdit ? "begin"
                                                                : "end",
                               unsigned(vst_param_to_controller(index)), double(value)});
        return 0;
    }

    // The callback knows no host.
    static inline std::atomic<Vst2Driver*> newest{nullptr};

    static constexpr int32_t BLOCK = 1024;
    PluginHost host{BLOCK, false, answer};
    PluginHost::Batch batch;
    std::vector<std::pair<int32_t, float>> changes;
    float* outputs[2] = {};
    int32_t num_frames = 0;
};

} // namespace

std::unique_ptr<FormatDriver> drive_vst2() {
    return std::make_unique<Vst2Driver>();
}

} // namespace tarquil
