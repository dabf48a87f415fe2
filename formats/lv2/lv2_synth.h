// The LV2 plug-in: a hosted player behind ports.

#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <lv2/atom/atom.h>
#include <lv2/atom/forge.h>
#include <lv2/atom/util.h>
#include <lv2/state/state.h>
#include <lv2/worker/worker.h>

#include "formats/common/instance_player.h"
#include "formats/lv2/port_change_request.h"
#include "formats/lv2/port_table.h"
#include "formats/lv2/urids.h"

namespace tarquil {

// The control ports belong to the host, which also saves them.  A port is taken when its value has
// changed, so that none overwrites a restored state or what a window or a program change has set.
class Lv2Synth {
  public:
    // `worker` may be null: then files are not loaded; and `request`: then a control that a learned
    // MIDI controller moves is told by a window alone.
    Lv2Synth(double host_rate, LV2_URID_Map& map, const LV2_Worker_Schedule* worker,
             const Lv2PortChangeRequest* request);

    // The host's operations, each on the thread that LV2 says.
    void connect(uint32_t port, void* data);
    bool activate();
    void deactivate() { hosted.reset(); }
    void run(uint32_t frames);
    LV2_Worker_Status work(uint32_t size, const void* data);
    LV2_State_Status save(LV2_State_Store_Function store, LV2_State_Handle handle);
    LV2_State_Status restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle);

    Player& player() { return hosted.player(); }

    // The window is about to write the port of a control that it has changed already.
    void hold_port(uint32_t port);

  private:
    void take_ports();
    void take_event(const LV2_Atom_Event& event, uint32_t frame);
    void take_position(const LV2_Atom_Object& position, uint32_t frame);
    [[nodiscard]] std::optional<double> number(const LV2_Atom* atom) const;
    void take_patch(const LV2_Atom_Object& message, uint32_t frame);
    void set_program(const LV2_Atom& value, uint32_t frame);
    void load_file(const LV2_Atom& value);
    void begin_notifications();
    void end_notifications();
    void tell_program();
    void tell_state_change();
    void tell_moves();

    const double rate;
    const Urids urids;
    const LV2_Worker_Schedule* const schedule;
    const Lv2PortChangeRequest* const port_changes;
    InstancePlayer hosted;
    const std::vector<Lv2Control>& controls;

    // ports
    const LV2_Atom_Sequence* events = nullptr;
    LV2_Atom_Sequence* notify = nullptr;
    float* left = nullptr;
    float* right = nullptr;
    float* latency = nullptr;
    std::vector<const float*> control_ports;

    // The host says only what has changed.
    struct HostTime {
        double bar = 0;
        double bar_beat = 0;
        double beats_per_bar = 4;
        double beat_unit = 4;
        double beats_per_minute = 0;
        double speed = 0;
    };
    HostTime host_time;

    LV2_Atom_Forge forge{};
    LV2_Atom_Forge_Frame sequence{};
    bool can_notify = false;

    // The controls' values as they were seen last, and as bytes.
    std::vector<float> seen;
    std::vector<int> taken;
    std::atomic<bool> is_restored{false};
    uint32_t told_changes = 0; // of the player
};

} // namespace tarquil
