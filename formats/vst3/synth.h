// The VST 3 plug-in: a hosted player, and what a host asks of both of its parts.

#pragma once

#include <atomic>
#include <memory>

#include "formats/common/instance_player.h"
#include "formats/vst3/abi/component.h"
#include "formats/vst3/controller.h"
#include "formats/vst3/input.h"

namespace tarquil::vst3 {

// Both parts are one object, which shares the player without messages.
// NOLINTNEXTLINE(*-virtual-class-destructor): released, never deleted
class Synth final : public Component, public AudioProcessor, public ProcessContextRequirements {
  public:
    static constexpr Id CLASS_ID = make_id(0x54415251, 0x55494C53, 0x594E5448, 0x56330001);

    Synth();

    Result query_interface(const uint8_t* id, void** object) override;
    uint32_t add_ref() override { return ++references; }
    uint32_t release() override;

    Result initialize(Unknown* host) override;
    Result terminate() override;

    Result get_controller_class_id(uint8_t* class_id) override;
    Result set_io_mode(int32_t mode) override;
    int32_t get_bus_count(int32_t media_type, int32_t direction) override;
    Result get_bus_info(int32_t media_type, int32_t direction, int32_t index,
                        BusInfo* info) override;
    Result get_routing_info(RoutingInfo* in, RoutingInfo* out) override;
    Result activate_bus(int32_t media_type, int32_t direction, int32_t index, Bool state) override;
    Result set_active(Bool state) override;
    // In pieces of whatever size the stream takes; refused as a whole, or taken.
    Result set_state(Stream* stream) override;
    Result get_state(Stream* stream) override;

    Result set_bus_arrangements(SpeakerArrangement* inputs, int32_t num_inputs,
                                SpeakerArrangement* outputs, int32_t num_outputs) override;
    Result get_bus_arrangement(int32_t direction, int32_t index,
                               SpeakerArrangement* arrangement) override;
    Result can_process_sample_size(int32_t sample_size) override;
    uint32_t get_latency_frames() override { return hosted.latency_frames(); }
    Result setup_processing(ProcessSetup* setup) override;
    Result set_processing(Bool state) override;
    Result process(ProcessData* data) override;
    uint32_t get_tail_frames() override { return INFINITE_TAIL; }

    uint32_t get_requirements() override {
        return NEEDS_POSITION | NEEDS_BAR | NEEDS_TEMPO | NEEDS_TIME_SIGNATURE |
               NEEDS_TRANSPORT_STATE;
    }

  private:
    ~Synth() = default;

    void tell_moves(ParameterChanges& changes);

    InstancePlayer hosted;
    Controller controller;
    std::unique_ptr<Input> input;
    double rate = 44100;
    bool is_active = false;
    std::atomic<uint32_t> references{1};
};

} // namespace tarquil::vst3
