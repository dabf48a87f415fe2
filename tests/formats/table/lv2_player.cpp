// The LV2 plug-in as what plays a block of messages.

#include <algorithm>

#include "tests/formats/lv2/lv2_host.h"
#include "tests/formats/table/format_player.h"

namespace tarquil {

namespace {

class Lv2Player final : public FormatPlayer {
  public:
    explicit Lv2Player(double rate) : host(rate, "") {}
    void play(const std::vector<SongMessage>& messages, float* left, float* right,
              uint32_t frames) override {
        for (const SongMessage& m : messages)
            host.add_midi(m.frame, {m.bytes.begin(), m.bytes.end()});
        host.left.clear();
        host.right.clear();
        host.run(frames);
        std::ranges::copy(host.left, left);
        std::ranges::copy(host.right, right);
    }
    uint32_t latency_frames() override { return uint32_t(host.latency()); }

  private:
    Lv2Host host;
};

} // namespace

std::unique_ptr<FormatPlayer> play_lv2(double rate) {
    return std::make_unique<Lv2Player>(rate);
}

} // namespace tarquil
