// A small LV2 host: the plug-in as lilv finds it, with all its ports.

#pragma once

#include <dlfcn.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <lilv/lilv.h>
#include <lv2/atom/forge.h>
#include <lv2/atom/util.h>
#include <lv2/midi/midi.h>
#include <lv2/patch/patch.h>
#include <lv2/state/state.h>
#include <lv2/time/time.h>
#include <lv2/urid/urid.h>
#include <lv2/worker/worker.h>

#include "formats/lv2/lv2_names.h"
#include "formats/lv2/port_change_request.h"
#include "formats/lv2/port_table.h"
#include "player/hosted_player.h"
#include "tests/formats/common/tempo_song.h"
#include "tests/formats/drivers/format_driver.h"

namespace tarquil {

// Where a host says that it is; none of what is not a number.
struct Lv2Position {
    double beats_per_minute;
    int64_t bar;
    double bar_beat;
    double beats_per_bar;
    int32_t beat_unit;
    double speed;
};

// Where the song that follows a tempo is at that frame of it, in beats of an eighth.
inline Lv2Position lv2_position_at(uint32_t frame, double rate) {
    constexpr int BEATS_PER_QUARTER = 2;
    const double bar = std::floor(position_at(frame, rate) / BEATS_PER_BAR);
    return {.beats_per_minute = BEATS_PER_QUARTER * tempo_at(frame),
            .bar = int64_t(bar),
            .bar_beat = BEATS_PER_QUARTER * (position_at(frame, rate) - bar_start_at(frame, rate)),
            .beats_per_bar = BEATS_PER_QUARTER * BEATS_PER_BAR,
            .beat_unit = 4 * BEATS_PER_QUARTER,
            .speed = 1.0};
}

class Lv2Host final : public FormatDriver {
  public:
    // Not yet made for 0.  It starts with `state`, a new instance's if empty.
    explicit Lv2Host(double first_rate, const std::string& state = plain_state())
        : controls(NUM_FIXED_LV2_PORTS + lv2_controls().size()), events(EVENT_BYTES / 8),
          notifications(512) {
        // Libraries of the window system leave memory behind when they are unloaded with the
        // module.
        dlopen(LV2_BUNDLE "tarquil.so", RTLD_NOW | RTLD_NODELETE);
        world = lilv_world_new();
        LilvNode* const bundle = lilv_new_file_uri(world, nullptr, LV2_BUNDLE);
        lilv_world_load_bundle(world, bundle);
        lilv_node_free(bundle);
        LilvNode* const name = lilv_new_uri(world, TARQUIL_LV2_URI);
        plugin = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world), name);
        lilv_node_free(name);
        lv2_atom_forge_init(&forge, &map);
        start_events();
        if (first_rate > 0)
            start(first_rate, state);
    }
    ~Lv2Host() override {
        end();
        lilv_world_free(world);
    }

    // An instance is of one rate: another one takes its state over.
    bool activate(double wanted) override {
        if (instance == nullptr || wanted != rate)
            return start(wanted, instance == nullptr ? "" : save());
        if (!is_active)
            lilv_instance_activate(instance);
        is_active = true;
        return true;
    }
    void deactivate() override {
        lilv_instance_deactivate(instance);
        is_active = false;
    }

    [[nodiscard]] bool is_loaded() const { return instance != nullptr; }
    LV2_URID number(const char* name) {
        const std::lock_guard holder(numbers_lock);
        return numbers.try_emplace(name, LV2_URID(numbers.size() + 1)).first->second;
    }

    // Messages of the next block.
    void add(const SongMessage& message) override {
        add_midi(message.frame, {message.bytes.begin(), message.bytes.end()});
    }
    void set(unsigned controller, int byte, uint32_t /*frame*/) override {
        control(controller) = row_of(controller).value(byte);
    }
    // Hosts speak when something changes.
    void tell_tempo(uint32_t song_frame, double host_rate) override {
        if (song_frame == 0 || song_frame == TEMPO_CHANGE)
            add_position(0, lv2_position_at(song_frame, host_rate));
    }
    void add_specials() override {
        for (int32_t i = 0; i < 200; i++) // more than there is room to tell
            add_program(i % 64, i % 128);
        for (const std::vector<uint8_t>& message : std::initializer_list<std::vector<uint8_t>>{
                 {0xF0, 0x7E, 0x7F, 9, 1, 0xF7}, {0x90}, {}, {0xC3, 5}})
            add_midi(10, message);
        add_midi(-5, {0x90, 60, 100});
    }
    void add_midi(int64_t frame, const std::vector<uint8_t>& message) {
        lv2_atom_forge_frame_time(&forge, frame);
        lv2_atom_forge_atom(&forge, uint32_t(message.size()), number(LV2_MIDI__MidiEvent));
        if (!message.empty())
            lv2_atom_forge_write(&forge, message.data(), uint32_t(message.size()));
    }
    void add_program(int64_t frame, int32_t program) {
        add_set(frame, TARQUIL_LV2_PROGRAM_URI, [&] { lv2_atom_forge_int(&forge, program); });
    }
    void add_file(const std::string& path) {
        add_set(0, TARQUIL_LV2_FILE_URI,
                [&] { lv2_atom_forge_path(&forge, path.c_str(), uint32_t(path.size())); });
    }
    void add_position(int64_t frame, const Lv2Position& position) {
        LV2_Atom_Forge_Frame object;
        lv2_atom_forge_frame_time(&forge, frame);
        lv2_atom_forge_object(&forge, &object, 0, number(LV2_TIME__Position));
        const auto add = [&](const char* name, double value) {
            if (std::isnan(value))
                return;
            lv2_atom_forge_key(&forge, number(name));
            lv2_atom_forge_float(&forge, float(value));
        };
        add(LV2_TIME__beatsPerMinute, position.beats_per_minute);
        add(LV2_TIME__barBeat, position.bar_beat);
        add(LV2_TIME__beatsPerBar, position.beats_per_bar);
        add(LV2_TIME__speed, position.speed);
        lv2_atom_forge_key(&forge, number(LV2_TIME__bar));
        lv2_atom_forge_long(&forge, position.bar);
        lv2_atom_forge_key(&forge, number(LV2_TIME__beatUnit));
        lv2_atom_forge_int(&forge, position.beat_unit);
        lv2_atom_forge_pop(&forge, &object);
    }

    void prepare(float* left, float* right, uint32_t frames) override {
        num_frames = frames;
        lv2_atom_forge_pop(&forge, &sequence);
        lilv_instance_connect_port(instance, LV2_PORT_LEFT, left);
        lilv_instance_connect_port(instance, LV2_PORT_RIGHT, right);
        auto* const notify = reinterpret_cast<LV2_Atom_Sequence*>(notifications.data());
        notify->atom.size = uint32_t(notifications.size() * 8 - sizeof(LV2_Atom));
        notify->atom.type = number(LV2_ATOM__Chunk);
    }
    void call() noexcept override { lilv_instance_run(instance, num_frames); }
    void finish() override {
        read_notifications();
        start_events();
        const auto* const interface = static_cast<const LV2_Worker_Interface*>(
            lilv_instance_get_extension_data(instance, LV2_WORKER__interface));
        for (const std::string& data : std::exchange(work, {}))
            interface->work(lilv_instance_get_handle(instance), nullptr, nullptr,
                            uint32_t(data.size()), data.data());
    }

    float& control(unsigned number) { return controls[lv2_port_of(number)]; }
    uint32_t latency_frames() override { return uint32_t(controls[LV2_PORT_LATENCY]); }
    // The program that the plug-in told last, -1 for none; and how often that its state changed.
    [[nodiscard]] int told_program() const { return program_told; }
    [[nodiscard]] int told_changes() const { return changes_told; }

    // Restores a preset as lilv finds it; false when there is none of this name.
    bool restore_preset(const char* name) {
        LilvNode* const preset = lilv_new_uri(world, name);
        lilv_world_load_resource(world, preset);
        LilvState* const state = lilv_state_new_from_world(world, &map, preset);
        lilv_node_free(preset);
        if (state == nullptr)
            return false;
        lilv_state_restore(state, instance, nullptr, nullptr, 0, features);
        lilv_state_free(state);
        return true;
    }
    using FormatDriver::load;
    using FormatDriver::save;
    // What the state holds under the plug-in's own key, without the byte that ends it; empty unless
    // it is plain text.
    std::string save(size_t /*piece*/) override {
        make_sure();
        Text text{number(TARQUIL_LV2_STATE_URI), number(LV2_ATOM__String), ""};
        const auto* const interface = static_cast<const LV2_State_Interface*>(
            lilv_instance_get_extension_data(instance, LV2_STATE__interface));
        interface->save(lilv_instance_get_handle(instance), store_text, &text, 0, features);
        return text.value.substr(0, text.value.find('\0'));
    }
    bool load(const std::string& value, size_t /*piece*/) override {
        make_sure();
        Text text{number(TARQUIL_LV2_STATE_URI), number(LV2_ATOM__String), value};
        const auto* const interface = static_cast<const LV2_State_Interface*>(
            lilv_instance_get_extension_data(instance, LV2_STATE__interface));
        return interface->restore(lilv_instance_get_handle(instance), retrieve_text, &text, 0,
                                  features) == LV2_STATE_SUCCESS;
    }
    std::vector<std::string> take_told() override {
        return take_noted(
            [](const Told& one) { return row_of(one.controller).byte(float(one.value)); });
    }
    [[nodiscard]] bool has_exact_parameters() const override { return false; }

    LilvInstance* get_instance() { return instance; }

  private:
    static constexpr size_t EVENT_BYTES = 1 << 18;

    struct Text {
        LV2_URID key;
        LV2_URID type;
        std::string value;
    };

    static const void* retrieve_text(LV2_State_Handle handle, uint32_t key, size_t* size,
                                     uint32_t* type, uint32_t* flags) {
        const Text& text = *static_cast<const Text*>(handle);
        if (key != text.key)
            return nullptr;
        *size = text.value.size();
        *type = text.type;
        *flags = LV2_STATE_IS_POD;
        return text.value.data();
    }

    static LV2_State_Status store_text(LV2_State_Handle handle, uint32_t key, const void* value,
                                       size_t size, uint32_t type, uint32_t flags) {
        Text& text = *static_cast<Text*>(handle);
        constexpr uint32_t PLAIN = LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE;
        if (key == text.key && type == text.type && (flags & PLAIN) == PLAIN)
            text.value.assign(static_cast<const char*>(value), size);
        return LV2_STATE_SUCCESS;
    }

    static LV2_URID map_name(LV2_URID_Map_Handle handle, const char* name) {
        return static_cast<Lv2Host*>(handle)->number(name);
    }
    static LV2_Worker_Status schedule(LV2_Worker_Schedule_Handle handle, uint32_t size,
                                      const void* data) {
        static_cast<Lv2Host*>(handle)->work.emplace_back(static_cast<const char*>(data), size);
        return LV2_WORKER_SUCCESS;
    }
    // The plug-in asks for another value of a port.
    static int32_t request_change(void* handle, uint32_t port, float value) {
        static_cast<Lv2Host*>(handle)->note_told(
            {"", lv2_controls()[port - NUM_FIXED_LV2_PORTS].number(), double(value)});
        return 0;
    }
    static const Lv2Control& row_of(unsigned controller) {
        return lv2_controls()[lv2_port_of(controller) - NUM_FIXED_LV2_PORTS];
    }
    void make_sure() {
        if (instance == nullptr)
            activate(SAMPLE_RATE);
    }
    bool start(double wanted, const std::string& state) {
        if (plugin == nullptr || lilv_plugin_get_num_ports(plugin) != controls.size())
            return false;
        LilvInstance* const other = lilv_plugin_instantiate(plugin, wanted, features);
        if (other == nullptr)
            return false;
        end();
        instance = other;
        rate = wanted;
        lilv_plugin_get_port_ranges_float(plugin, nullptr, nullptr, controls.data());
        lilv_instance_connect_port(instance, LV2_PORT_EVENTS, events.data());
        lilv_instance_connect_port(instance, LV2_PORT_NOTIFY, notifications.data());
        for (uint32_t port = LV2_PORT_LATENCY; port < controls.size(); port++)
            lilv_instance_connect_port(instance, port, &controls[port]);
        lilv_instance_activate(instance);
        is_active = true;
        if (state.empty())
            return true;
        load(state);
        run(0);
        program_told = -1;
        changes_told = 0;
        return true;
    }
    void end() {
        if (instance == nullptr)
            return;
        lilv_instance_deactivate(instance);
        lilv_instance_free(instance);
    }
    void add_set(int64_t frame, const char* property, const std::function<void()>& add_value) {
        LV2_Atom_Forge_Frame object;
        lv2_atom_forge_frame_time(&forge, frame);
        lv2_atom_forge_object(&forge, &object, 0, number(LV2_PATCH__Set));
        lv2_atom_forge_key(&forge, number(LV2_PATCH__property));
        lv2_atom_forge_urid(&forge, number(property));
        lv2_atom_forge_key(&forge, number(LV2_PATCH__value));
        add_value();
        lv2_atom_forge_pop(&forge, &object);
    }
    void read_notifications() {
        const auto* const notify = reinterpret_cast<const LV2_Atom_Sequence*>(notifications.data());
        LV2_ATOM_SEQUENCE_FOREACH(notify, event) {
            const auto* const object = reinterpret_cast<const LV2_Atom_Object*>(&event->body);
            if (object->body.otype == number(LV2_STATE__StateChanged))
                changes_told++;
            const LV2_Atom* value = nullptr;
            lv2_atom_object_get(object, number(LV2_PATCH__value), &value, 0);
            if (value != nullptr && value->type == number(LV2_ATOM__Int))
                program_told = reinterpret_cast<const LV2_Atom_Int*>(value)->body;
        }
    }
    void start_events() {
        lv2_atom_forge_set_buffer(&forge, reinterpret_cast<uint8_t*>(events.data()), EVENT_BYTES);
        lv2_atom_forge_sequence_head(&forge, &sequence, 0);
    }

    std::mutex numbers_lock; // any thread may ask for one
    std::map<std::string, LV2_URID> numbers;
    LV2_URID_Map map{this, map_name};
    LV2_Worker_Schedule worker{this, schedule};
    LV2_Feature map_feature{LV2_URID__map, &map};
    LV2_Feature worker_feature{LV2_WORKER__schedule, &worker};
    Lv2PortChangeRequest requests{this, request_change};
    LV2_Feature requests_feature{LV2_PORT_CHANGE_REQUEST_URI, &requests};
    const LV2_Feature* features[4] = {&map_feature, &worker_feature, &requests_feature, nullptr};

    LilvWorld* world = nullptr;
    const LilvPlugin* plugin = nullptr;
    LilvInstance* instance = nullptr;
    double rate = 0;
    bool is_active = false;
    uint32_t num_frames = 0;
    std::vector<float> controls;
    std::vector<uint64_t> events;
    std::vector<uint64_t> notifications;
    LV2_Atom_Forge forge{};
    LV2_Atom_Forge_Frame sequence{};
    std::vector<std::string> work;
    int program_told = -1;
    int changes_told = 0;
};

} // namespace tarquil
