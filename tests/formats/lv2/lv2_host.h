// A small LV2 host: the plug-in as lilv finds it, with all its ports.

#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <lilv/lilv.h>
#include <lv2/atom/forge.h>
#include <lv2/state/state.h>
#include <lv2/urid/urid.h>
#include <lv2/worker/worker.h>

#include "formats/lv2/port_change_request.h"
#include "formats/lv2/port_table.h"
#include "player/hosted_player.h"

namespace tarquil {

class Lv2Host {
  public:
    // It starts with `state`, a new instance's if empty.
    explicit Lv2Host(double rate, const std::string& state = HostedPlayer().save_state());
    Lv2Host(const Lv2Host&) = delete;
    Lv2Host& operator=(const Lv2Host&) = delete;
    ~Lv2Host();

    [[nodiscard]] bool is_loaded() const { return instance != nullptr; }
    LV2_URID number(const char* name);

    // Messages of the next block.
    void add_midi(int64_t frame, const std::vector<uint8_t>& message);
    void add_program(int64_t frame, int32_t program);
    void add_file(const std::string& path);
    // Where it is; none of what is not a number.
    struct Position {
        double beats_per_minute;
        int64_t bar;
        double bar_beat;
        double beats_per_bar;
        int32_t beat_unit;
        double speed;
    };
    void add_position(int64_t frame, const Position& position);

    // Adds a block to `left` and `right`.
    void run(uint32_t frames) {
        prepare_run(frames);
        lilv_instance_run(instance, frames);
        finish_run();
    }
    // The same, for watches: what is before and behind the plug-in's own call.
    void prepare_run(uint32_t frames);
    void finish_run();
    void run(uint32_t frames, uint32_t block) {
        for (; frames > block; frames -= block)
            run(block);
        run(frames);
    }

    float& control(unsigned number) { return controls[lv2_port_of(number)]; }
    [[nodiscard]] float latency() const { return controls[LV2_PORT_LATENCY]; }
    // The program that the plug-in told last, -1 for none; and how often that its state changed.
    [[nodiscard]] int told_program() const { return program_told; }
    [[nodiscard]] int told_changes() const { return changes_told; }

    // Restores a preset as lilv finds it; false when there is none of this name.
    bool restore_preset(const char* name);
    // What the state holds under the plug-in's own key; empty unless it is plain text.
    std::string saved_text();
    // Hands that in as it is; the plug-in's answer.
    LV2_State_Status restore_text(const std::string& text);

    // The plug-in asks for another value of a port.
    std::function<void(uint32_t port, float value)> on_request;

    LilvInstance* get_instance() { return instance; }
    std::vector<float> left;
    std::vector<float> right;

  private:
    static LV2_URID map_name(LV2_URID_Map_Handle handle, const char* name);
    static LV2_Worker_Status schedule(LV2_Worker_Schedule_Handle handle, uint32_t size,
                                      const void* data);
    static int32_t request_change(void* handle, uint32_t port, float value);
    void add_set(int64_t frame, const char* property, const std::function<void()>& add_value);
    void read_notifications();
    void start_events();

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
    std::vector<float> controls;
    std::vector<uint64_t> events;
    std::vector<uint64_t> notifications;
    LV2_Atom_Forge forge{};
    LV2_Atom_Forge_Frame sequence{};
    std::vector<std::string> work;
    int program_told = -1;
    int changes_told = 0;
};

// Where the song that follows a tempo is at that frame of it, in beats of an eighth.
Lv2Host::Position lv2_position_at(uint32_t frame, double rate);

} // namespace tarquil
