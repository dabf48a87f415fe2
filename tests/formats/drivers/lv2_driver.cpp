// The LV2 plug-in, driven.

#include <algorithm>

#include "tests/formats/common/tempo_song.h"
#include "tests/formats/drivers/format_driver.h"
#include "tests/formats/lv2/lv2_host.h"

namespace tarquil {

namespace {

class Lv2Driver final : public FormatDriver {
  public:
    // An instance is of one rate: another one takes its state over.
    bool activate(double wanted) override {
        if (host != nullptr && wanted == rate) {
            if (!is_active)
                lilv_instance_activate(host->get_instance());
            is_active = true;
            return true;
        }
        auto other = std::make_unique<Lv2Host>(wanted, host == nullptr ? "" : host->saved_text());
        if (!other->is_loaded())
            return false;
        host = std::move(other);
        host->on_request = [this](uint32_t port, float value) {
            note_told({"", lv2_controls()[port - NUM_FIXED_LV2_PORTS].number(), double(value)});
        };
        rate = wanted;
        is_active = true;
        return true;
    }
    void deactivate() override {
        lilv_instance_deactivate(host->get_instance());
        is_active = false;
    }

    void add(const SongMessage& message) override {
        host->add_midi(message.frame, {message.bytes.begin(), message.bytes.end()});
    }
    void set(unsigned controller, int byte, uint32_t /*frame*/) override {
        host->control(controller) =
            lv2_controls()[lv2_port_of(controller) - NUM_FIXED_LV2_PORTS].value(byte);
    }
    // Hosts speak when something changes.
    void tell_tempo(uint32_t song_frame, double host_rate) override {
        if (song_frame == 0 || song_frame == TEMPO_CHANGE)
            host->add_position(0, lv2_position_at(song_frame, host_rate));
    }
    void add_specials() override {
        for (int32_t i = 0; i < 200; i++) // more than there is room to tell
            host->add_program(i % 64, i % 128);
        for (const std::vector<uint8_t>& message : std::initializer_list<std::vector<uint8_t>>{
                 {0xF0, 0x7E, 0x7F, 9, 1, 0xF7}, {0x90}, {}, {0xC3, 5}})
            host->add_midi(10, message);
        host->add_midi(-5, {0x90, 60, 100});
    }

    void prepare(float* left, float* right, uint32_t frames) override {
        host->left.clear();
        host->right.clear();
        num_frames = frames;
        to_left = left;
        to_right = right;
        host->prepare_run(frames);
    }
    void call() noexcept override { lilv_instance_run(host->get_instance(), num_frames); }
    void finish() override {
        host->finish_run();
        std::ranges::copy(host->left, to_left);
        std::ranges::copy(host->right, to_right);
    }
    uint32_t latency_frames() override { return uint32_t(host->latency()); }

    // Without the byte that ends it.
    std::string save(size_t /*piece*/) override {
        std::string text = started().saved_text();
        text.erase(std::ranges::find(text, '\0'), text.end());
        return text;
    }
    bool load(const std::string& state, size_t /*piece*/) override {
        return started().restore_text(state) == LV2_STATE_SUCCESS;
    }
    std::vector<std::string> take_told() override {
        return take_noted([](const Told& one) {
            return lv2_controls()[lv2_port_of(one.controller) - NUM_FIXED_LV2_PORTS].byte(
                float(one.value));
        });
    }
    [[nodiscard]] bool has_exact_parameters() const override { return false; }

  private:
    Lv2Host& started() {
        if (host == nullptr)
            activate(SAMPLE_RATE);
        return *host;
    }

    std::unique_ptr<Lv2Host> host;
    double rate = 0;
    bool is_active = false;
    uint32_t num_frames = 0;
    float* to_left = nullptr;
    float* to_right = nullptr;
};

} // namespace

std::unique_ptr<FormatDriver> drive_lv2() {
    return std::make_unique<Lv2Driver>();
}

} // namespace tarquil
