// The VST 3 plug-in: a hosted player, and what a host asks of both of its parts.

#include "formats/vst3/synth.h"

#include <algorithm>
#include <string>
#include <utility>

#include "formats/common/host_controls.h"
#include "formats/vst3/parameters.h"
#include "formats/vst3/text.h"

namespace tarquil::vst3 {

namespace {

// A state is refused beyond that.
constexpr size_t MAX_STATE_BYTES = 64 << 20;

bool is_events_in(int32_t media_type, int32_t direction) {
    return media_type == EVENT && direction == INPUT;
}

bool is_sound_out(int32_t media_type, int32_t direction) {
    return media_type == AUDIO && direction == OUTPUT;
}

// Whether the block has the two channels that are asked for.
bool has_outputs(const ProcessData& data) {
    return data.num_frames > 0 && data.num_outputs > 0 && data.outputs != nullptr &&
           data.outputs[0].num_channels >= 2 && data.outputs[0].channels_32 != nullptr &&
           data.outputs[0].channels_32[0] != nullptr && data.outputs[0].channels_32[1] != nullptr;
}

HostTempo read_tempo(const ProcessContext& context) {
    const auto has = [&](uint32_t flag) { return (context.state & flag) != 0; };
    HostTempo said;
    if (has(HAS_TEMPO))
        said.quarters_per_minute = context.quarters_per_minute;
    if (has(IS_PLAYING) && has(HAS_POSITION)) {
        said.place = HostTempo::Place{};
        said.place->position = context.position_quarters;
        if (has(HAS_BAR))
            said.place->bar_start = context.bar_quarters;
        if (has(HAS_TIME_SIGNATURE))
            said.place->bar_length =
                quarters(context.time_signature_beats, context.time_signature_unit);
    }
    return said;
}

} // namespace

Synth::Synth()
    : controller(static_cast<Component&>(*this), hosted), input(std::make_unique<Input>()) {
    // Made here, so that the audio thread finds them.
    static_cast<void>(host_controls());
    static_cast<void>(num_parameters());
}

Result Synth::query_interface(const uint8_t* id, void** object) {
    if (is_id(id, Unknown::ID) || is_id(id, PluginBase::ID) || is_id(id, Component::ID))
        *object = static_cast<Component*>(this);
    else if (is_id(id, AudioProcessor::ID))
        *object = static_cast<AudioProcessor*>(this);
    else if (is_id(id, ProcessContextRequirements::ID))
        *object = static_cast<ProcessContextRequirements*>(this);
    else
        *object = controller.find(id);
    if (*object == nullptr)
        return NO_INTERFACE;
    add_ref();
    return OK;
}

uint32_t Synth::release() {
    const uint32_t left = --references;
    if (left == 0)
        delete this;
    return left;
}

Result Synth::initialize(Unknown* /*host*/) {
    return OK;
}

Result Synth::terminate() {
    return controller.terminate();
}

Result Synth::get_controller_class_id(uint8_t* /*class_id*/) {
    return NO; // this object is the controller as well
}

Result Synth::set_io_mode(int32_t /*mode*/) {
    return NOT_IMPLEMENTED;
}

int32_t Synth::get_bus_count(int32_t media_type, int32_t direction) {
    return is_events_in(media_type, direction) || is_sound_out(media_type, direction) ? 1 : 0;
}

Result Synth::get_bus_info(int32_t media_type, int32_t direction, int32_t index, BusInfo* info) {
    if (index < 0 || index >= get_bus_count(media_type, direction) || info == nullptr)
        return BAD_ARGUMENT;
    *info = {.media_type = media_type,
             .direction = direction,
             .num_channels = media_type == EVENT ? int32_t(NUM_CHANNELS) : 2,
             .name = {},
             .bus_type = 0,
             .flags = BUS_IS_ACTIVE_BY_DEFAULT};
    put_text(info->name, media_type == EVENT ? "MIDI" : "Output");
    return OK;
}

Result Synth::get_routing_info(RoutingInfo* /*in*/, RoutingInfo* /*out*/) {
    return NOT_IMPLEMENTED;
}

Result Synth::activate_bus(int32_t media_type, int32_t direction, int32_t index, Bool /*state*/) {
    return index >= 0 && index < get_bus_count(media_type, direction) ? OK : BAD_ARGUMENT;
}

Result Synth::set_active(Bool state) {
    input->start();
    const bool was_active = std::exchange(is_active, state != 0);
    if (is_active)
        return hosted.activate(rate) ? OK : NO;
    if (was_active)
        hosted.reset();
    return OK;
}

Result Synth::set_state(Stream* stream) {
    if (stream == nullptr)
        return BAD_ARGUMENT;
    std::string text;
    char piece[4096];
    int32_t count = 0;
    while (text.size() < MAX_STATE_BYTES &&
           stream->read(piece, int32_t(sizeof(piece)), &count) == OK && count > 0)
        text.append(piece, size_t(std::min(count, int32_t(sizeof(piece)))));
    return hosted.load_state(text) == 0 ? OK : NO;
}

Result Synth::get_state(Stream* stream) {
    if (stream == nullptr)
        return BAD_ARGUMENT;
    controller.settle();
    std::string text = hosted.save_state();
    for (size_t written = 0; written < text.size();) {
        int32_t count = 0;
        const auto left = int32_t(text.size() - written);
        if (stream->write(text.data() + written, left, &count) != OK || count <= 0)
            return NO;
        written += size_t(std::min(count, left));
    }
    return OK;
}

Result Synth::set_bus_arrangements(SpeakerArrangement* /*inputs*/, int32_t num_inputs,
                                   SpeakerArrangement* outputs, int32_t num_outputs) {
    return num_inputs == 0 && num_outputs == 1 && outputs != nullptr && *outputs == STEREO ? OK
                                                                                           : NO;
}

Result Synth::get_bus_arrangement(int32_t direction, int32_t index,
                                  SpeakerArrangement* arrangement) {
    if (direction != OUTPUT || index != 0 || arrangement == nullptr)
        return BAD_ARGUMENT;
    *arrangement = STEREO;
    return OK;
}

Result Synth::can_process_sample_size(int32_t sample_size) {
    return sample_size == SAMPLE_32 ? OK : NO;
}

Result Synth::setup_processing(ProcessSetup* setup) {
    if (setup == nullptr || setup->sample_size != SAMPLE_32)
        return NO;
    // The latency is asked for from now on.
    if (!hosted.activate(setup->rate))
        return NO;
    rate = setup->rate;
    return OK;
}

Result Synth::set_processing(Bool /*state*/) {
    return OK;
}

Result Synth::process(ProcessData* data) {
    if (data == nullptr || data->sample_size != SAMPLE_32)
        return BAD_ARGUMENT;
    // Without frames, or room for them, a host only hands over what has changed.
    const bool sounds = has_outputs(*data);
    if (sounds)
        hosted.begin_block(data->outputs[0].channels_32[0], data->outputs[0].channels_32[1],
                           uint32_t(data->num_frames));
    else
        hosted.begin_block(nullptr, nullptr, 0);
    if (data->context != nullptr)
        hosted.set_tempo(read_tempo(*data->context), 0);
    input->play(hosted, *data);
    hosted.end_block();
    if (data->output_changes != nullptr)
        tell_moves(*data->output_changes);
    if (sounds)
        data->outputs[0].silence_flags = 0;
    return OK;
}

// What learned controllers have moved, while no window says so with gestures.
void Synth::tell_moves(ParameterChanges& changes) {
    Player& player = hosted.player();
    if (player.meters().watched.load(std::memory_order_relaxed))
        return;
    player.moved_controls().take([&](unsigned number) {
        const ParameterId id = number;
        int32_t index = 0;
        ParameterPoints* const points = changes.add_parameter_data(&id, &index);
        if (points == nullptr) { // no room: the next block's
            player.moved_controls().note(number);
            return;
        }
        hosted.hold_controller(number);
        const HostControl& control = *find_host_control(id);
        points->add_point(0, normalized(control, hosted.get_controller(number)), &index);
    });
}

} // namespace tarquil::vst3
