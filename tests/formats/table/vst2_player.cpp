// The VST 2 plug-in as what plays a block of messages.

#include <algorithm>

#include "tests/formats/table/format_player.h"
#include "tests/vst/plugin_host.h"

namespace tarquil {

namespace {

class Vst2Player final : public FormatPlayer {
  public:
    Vst2Player() {
        if (!host.load(InstancePlayer().save_state(), false))
            throw std::runtime_error("VST 2 does not take the state");
        host.call(effSetSampleRate, 0, 0, nullptr, 44100.0F);
        host.call(effSetBlockSize, 0, BLOCK);
        host.call(effMainsChanged, 0, 1);
    }
    void play(const std::vector<SongMessage>& messages, float* left, float* right,
              uint32_t frames) override {
        for (const SongMessage& m : messages)
            host.midi(m.bytes[0], m.bytes[1], m.bytes[2], int32_t(m.frame));
        const std::vector<float> sound = host.block(int32_t(frames));
        std::copy_n(sound.begin(), frames, left);
        std::copy_n(sound.begin() + frames, frames, right);
    }
    uint32_t latency_frames() override { return uint32_t(host.effect->initialDelay); }

  private:
    static constexpr int32_t BLOCK = 1024;
    PluginHost host{BLOCK, false};
};

} // namespace

std::unique_ptr<FormatPlayer> play_vst2(double /*rate*/) {
    return std::make_unique<Vst2Player>();
}

} // namespace tarquil
