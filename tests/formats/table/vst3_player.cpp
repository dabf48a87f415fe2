// The VST 3 plug-in as what plays a block of messages.

#include "tests/formats/table/format_player.h"
#include "tests/formats/vst3/vst3_host.h"

namespace tarquil {

namespace {

class Vst3Player final : public FormatPlayer {
  public:
    explicit Vst3Player(double rate) : host(rate, "") {}
    void play(const std::vector<SongMessage>& messages, float* left, float* right,
              uint32_t frames) override {
        for (const SongMessage& m : messages)
            host.add_message(int32_t(m.frame), m.bytes[0], m.bytes[1], m.bytes[2]);
        host.run(left, right, int32_t(frames));
    }
    uint32_t latency_frames() override { return host.processor->get_latency_frames(); }

  private:
    vst3::Vst3Host host;
};

} // namespace

std::unique_ptr<FormatPlayer> play_vst3(double rate) {
    return std::make_unique<Vst3Player>(rate);
}

} // namespace tarquil
