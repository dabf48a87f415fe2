// The VST 3 plug-in, driven.

#include "formats/vst3/parameters.h"
#include "tests/formats/drivers/format_driver.h"
#include "tests/formats/vst3/vst3_host.h"

namespace tarquil {

namespace {

// What the plug-in puts out: one point at a time.
class ToldChanges final : public vst3::HostObject<vst3::ParameterChanges> {
  public:
    int32_t get_parameter_count() override { return 0; }
    vst3::ParameterPoints* get_parameter_data(int32_t) override { return nullptr; }
    vst3::ParameterPoints* add_parameter_data(const vst3::ParameterId* id, int32_t*) override {
        points.id = *id;
        return &points;
    }

    std::function<void(vst3::ParameterId id, double value)> take;

  private:
    class Points final : public vst3::HostObject<vst3::ParameterPoints> {
      public:
        explicit Points(ToldChanges& told) : changes(told) {}
        vst3::ParameterId get_parameter_id() override { return id; }
        int32_t get_point_count() override { return 0; }
        vst3::Result get_point(int32_t, int32_t*, double*) override { return vst3::NO; }
        vst3::Result add_point(int32_t, double value, int32_t*) override {
            changes.take(id, value);
            return vst3::OK;
        }
        vst3::ParameterId id = 0;

      private:
        ToldChanges& changes;
    };
    Points points{*this};
};

class Vst3Driver final : public FormatDriver {
  public:
    Vst3Driver() {
        told_changes.take = [this](vst3::ParameterId id, double value) {
            note_told({"", unsigned(id), value});
        };
    }

    bool activate(double rate) override { return host.setup(rate) == vst3::OK; }
    void deactivate() override { host.component->set_active(0); }

    void add(const SongMessage& message) override {
        host.add_message(int32_t(message.frame), message.bytes[0], message.bytes[1],
                         message.bytes[2]);
    }
    void set(unsigned controller, int byte, uint32_t frame) override {
        host.changes.add(controller, int32_t(frame),
                         vst3::normalized(*find_host_control(controller), byte));
    }
    void tell_tempo(uint32_t song_frame, double rate) override {
        context = vst3::context_at(song_frame, rate);
        host.context = &context;
    }
    void add_specials() override {
        host.changes.add(EDITED_PROGRAM_ID, 20, 0.5);
        for (uint32_t channel = 0; channel < 16; channel++)
            host.changes.add(CHANNEL_PROGRAM_ID + channel, int32_t(channel), 0.25);
    }

    void prepare(float* left, float* right, uint32_t frames) override {
        sides[0] = left;
        sides[1] = right;
        host.prepare(out, int32_t(frames), data);
        data.output_changes = &told_changes;
    }
    void call() noexcept override { host.processor->process(&data); }
    void finish() override { host.finish(); }
    uint32_t latency_frames() override { return host.processor->get_latency_frames(); }

    std::string save(size_t piece) override { return host.save(int32_t(piece)); }
    bool load(const std::string& state, size_t piece) override {
        return host.load(state, int32_t(piece)) == vst3::OK;
    }
    void look(unsigned round) override {
        vst3::String128 text;
        for (vst3::ParameterId id = round % 5; id < 128; id += 5) {
            const double value = host.controller->get_normalized(id);
            host.controller->get_parameter_text(id, value, text);
            host.controller->set_normalized(id, double(round % 10) / 9);
        }
        host.units->get_program_name(1, int32_t(round % 128), text);
    }

    std::vector<std::string> take_told() override {
        return take_noted([](const Told& one) {
            return vst3::value_of(*find_host_control(one.controller), one.value).value_or(-1);
        });
    }

    // Controllers that channels have no hidden parameter for can be learned only, and parameters
    // come first within a frame.
    [[nodiscard]] std::vector<SongMessage>
    passed(const std::vector<SongMessage>& messages) const override {
        std::vector<SongMessage> kept = messages;
        std::erase_if(kept, [](const SongMessage& m) {
            return (m.bytes[0] & 0xF0U) == 0xB0 && !vst3::midi_parameter_id(0, m.bytes[1]);
        });
        std::ranges::stable_sort(kept, [](const SongMessage& a, const SongMessage& b) {
            const auto is_note = [](const SongMessage& m) { return m.bytes[0] < 0xA0; };
            return a.frame != b.frame ? a.frame < b.frame : !is_note(a) && is_note(b);
        });
        return kept;
    }

  private:
    vst3::Vst3Host host{0, ""};
    vst3::ProcessContext context{};
    float* sides[2] = {};
    vst3::AudioBuffers out{2, 0, {sides}};
    vst3::ProcessData data{};
    ToldChanges told_changes;
};

} // namespace

std::unique_ptr<FormatDriver> drive_vst3() {
    return std::make_unique<Vst3Driver>();
}

} // namespace tarquil
