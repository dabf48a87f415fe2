// The CLAP plug-in as what plays a block of messages.

#include "tests/formats/clap/clap_host.h"
#include "tests/formats/table/format_player.h"

namespace tarquil {

namespace {

class ClapPlayer final : public FormatPlayer {
  public:
    explicit ClapPlayer(double rate) : host(false, nullptr, "") { host.activate(rate); }
    ~ClapPlayer() override { host.deactivate(); }
    void play(const std::vector<SongMessage>& messages, float* left, float* right,
              uint32_t frames) override {
        for (const SongMessage& m : messages)
            host.midi(m.bytes, m.frame);
        host.process(left, right, frames);
        host.output.clear();
    }
    uint32_t latency_frames() override {
        return host.get<clap_plugin_latency>(CLAP_EXT_LATENCY).get(host.plugin);
    }

  private:
    ClapTestHost host;
};

} // namespace

std::unique_ptr<FormatPlayer> play_clap(double rate) {
    return std::make_unique<ClapPlayer>(rate);
}

} // namespace tarquil
