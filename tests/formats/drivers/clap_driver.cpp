// The CLAP plug-in, driven.

#include "tests/formats/clap/clap_host.h"
#include "tests/formats/drivers/format_driver.h"

namespace tarquil {

namespace {

class ClapDriver final : public FormatDriver {
  public:
    ~ClapDriver() override {
        if (is_active)
            deactivate();
    }

    bool activate(double rate) override {
        is_active = host.activate(rate);
        return is_active;
    }
    void deactivate() override {
        host.deactivate();
        is_active = false;
    }

    // Notes of even keys are CLAP's own.
    void add(const SongMessage& message) override {
        const unsigned kind = message.bytes[0] & 0xF0U;
        if ((kind == 0x80 || kind == 0x90) && message.bytes[1] % 2 == 0)
            host.note(kind == 0x90 && message.bytes[2] > 0 ? CLAP_EVENT_NOTE_ON
                                                           : CLAP_EVENT_NOTE_OFF,
                      message.bytes[1], message.bytes[0] & 0x0F, message.frame, -1,
                      message.bytes[2] / 127.0);
        else
            host.midi(message.bytes, message.frame);
    }
    void set(unsigned controller, int byte, uint32_t frame) override {
        host.set(controller, byte, frame);
    }
    void tell_tempo(uint32_t song_frame, double rate) override {
        host.transport = transport_at(song_frame, rate);
        host.has_transport = true;
    }
    void add_specials() override {
        for (unsigned i = 0; i < 20; i++)
            host.note(i % 2 == 0 ? CLAP_EVENT_NOTE_OFF : CLAP_EVENT_NOTE_CHOKE, -1, -1, i);
        for (clap_id channel = 0; channel < 16; channel++)
            host.set(0x1000 + channel, double(channel * 3), channel);
        host.set(0x1010, 9, 30);
        is_special = true;
    }

    void prepare(float* left, float* right, uint32_t frames) override {
        sides[0] = left;
        sides[1] = right;
        block = host.make_block(buffer, sides, frames, in, out);
    }
    void call() noexcept override {
        if (is_special)
            host.flush_only(in, out);
        host.process_only(block);
        if (is_special)
            host.reset_only();
    }
    void finish() override {
        host.input.clear();
        is_special = false;
    }
    uint32_t latency_frames() override {
        return host.get<clap_plugin_latency>(CLAP_EXT_LATENCY).get(host.plugin);
    }

    std::string save(size_t piece) override { return host.save(piece); }
    bool load(const std::string& state, size_t piece) override { return host.load(state, piece); }
    void look(unsigned round) override {
        host.idle();
        for (clap_id id = round % 5; id < 128; id += 5) {
            double value = 0;
            if (host.params().get_value(host.plugin, id, &value))
                host.text(id, value);
        }
    }
    std::vector<std::string> take_told() override {
        return take_noted([](const Told& one) { return int(one.value); });
    }
    [[nodiscard]] bool tells_gestures() const override { return true; }
    [[nodiscard]] std::string complaint() const override {
        return host.wrong_threads == 0 ? "" : "the host is called on a wrong thread";
    }

  private:
    ClapTestHost host{false, nullptr, ""};
    bool is_active = false;
    bool is_special = false;
    float* sides[2] = {};
    clap_audio_buffer buffer{};
    const clap_input_events in = host.events_in();
    bool take_output(const clap_event_header& event) {
        if (event.type == CLAP_EVENT_PARAM_VALUE) {
            const auto& change = reinterpret_cast<const clap_event_param_value&>(event);
            note_told({"", change.param_id, change.value});
        } else {
            const auto& gesture = reinterpret_cast<const clap_event_param_gesture&>(event);
            note_told(
                {event.type == CLAP_EVENT_PARAM_GESTURE_BEGIN ? "begin" : "end", gesture.param_id});
        }
        return true;
    }

    const clap_output_events out = {
        .ctx = this,
        .try_push = [](const clap_output_events* list, const clap_event_header* event) {
            return static_cast<ClapDriver*>(list->ctx)->take_output(*event);
        }};
    clap_process block{};
};

} // namespace

std::unique_ptr<FormatDriver> drive_clap() {
    return std::make_unique<ClapDriver>();
}

} // namespace tarquil
