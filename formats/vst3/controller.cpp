// The part of the plug-in that hosts show: parameters and the window.

#include "formats/vst3/controller.h"

#include <cmath>
#include <cstring>

#include "formats/common/host_controls.h"
#include "formats/vst3/parameters.h"
#include "formats/vst3/text.h"

namespace tarquil::vst3 {

namespace {

constexpr size_t TEXT_ROOM = sizeof(String128) / sizeof(char16_t);
constexpr unsigned BEND_STEPS = 16383;

// Of a hidden parameter, which stands for messages; nothing for another.
std::optional<unsigned> last_step(ParameterId id) {
    if (const auto midi = find_midi_parameter(id))
        return midi->number == MAPPED_BEND ? BEND_STEPS : 127;
    return find_learning_parameter(id) ? std::optional(127U) : std::nullopt;
}

bool is_normalized(double value) {
    return value >= 0 && value <= 1;
}

} // namespace

void* Controller::find(const uint8_t* id) {
    if (is_id(id, EditController::ID))
        return static_cast<EditController*>(this);
    if (is_id(id, MidiMapping::ID))
        return static_cast<MidiMapping*>(this);
    if (is_id(id, UnitInformation::ID))
        return static_cast<UnitInformation*>(this);
    return nullptr;
}

void Controller::settle() {
    for (const auto& [id, set] : shown) {
        const HostControl& control = *find_host_control(id);
        const int value = get_control(hosted.player(), control);
        const auto wanted = value_of(control, set.value);
        if (set.player_value == value && wanted && *wanted != value)
            set_control(hosted.player(), control, *wanted);
    }
    shown.clear();
}

Result Controller::initialize(Unknown* /*host*/) {
    return OK;
}

Result Controller::terminate() {
    // The window stays for views that are released later.
    handler.reset();
    return OK;
}

Result Controller::set_component_state(Stream* stream) {
    shown.clear();
    return stream != nullptr ? OK : BAD_ARGUMENT;
}

Result Controller::set_state(Stream* stream) {
    return stream != nullptr ? OK : BAD_ARGUMENT;
}

Result Controller::get_state(Stream* stream) {
    return stream != nullptr ? OK : BAD_ARGUMENT;
}

int32_t Controller::get_parameter_count() {
    return num_parameters();
}

Result Controller::get_parameter_info(int32_t index, ParameterInfo* info) {
    if (index < 0 || index >= num_parameters() || info == nullptr)
        return BAD_ARGUMENT;
    vst3::get_parameter_info(index, *info);
    return OK;
}

Result Controller::get_parameter_text(ParameterId id, double value, char16_t* text) {
    if (text == nullptr || !is_normalized(value))
        return BAD_ARGUMENT;
    if (const auto last = last_step(id)) {
        put_text(text, TEXT_ROOM, std::to_string(std::lround(value * *last)));
        return OK;
    }
    const HostControl* const control = find_host_control(id);
    const auto said = control != nullptr ? value_of(*control, value) : std::nullopt;
    if (!said)
        return BAD_ARGUMENT;
    put_text(text, TEXT_ROOM, control_text(hosted.player(), *control, *said));
    return OK;
}

Result Controller::get_parameter_by_text(ParameterId id, char16_t* text, double* value) {
    if (text == nullptr || value == nullptr)
        return BAD_ARGUMENT;
    const HostControl* const control = find_host_control(id);
    if (control == nullptr)
        return NO;
    const auto said = parse_control(hosted.player(), *control, get_text(text, TEXT_ROOM));
    if (!said)
        return NO;
    *value = normalized(*control, *said);
    return OK;
}

double Controller::normalized_to_plain(ParameterId id, double value) {
    if (const auto last = last_step(id))
        return value * *last;
    const HostControl* const control = find_host_control(id);
    return control != nullptr ? control->first + value * (control->last - control->first) : value;
}

double Controller::plain_to_normalized(ParameterId id, double value) {
    if (const auto last = last_step(id))
        return value / *last;
    const HostControl* const control = find_host_control(id);
    return control != nullptr ? (value - control->first) / (control->last - control->first) : value;
}

double Controller::get_normalized(ParameterId id) {
    const HostControl* const control = find_host_control(id);
    if (control == nullptr) {
        const auto midi = find_midi_parameter(id);
        return midi && midi->number == MAPPED_BEND ? 0.5 : 0.0;
    }
    const int value = get_control(hosted.player(), *control);
    const auto last = shown.find(id);
    return last != shown.end() && last->second.player_value == value ? last->second.value
                                                                     : normalized(*control, value);
}

Result Controller::set_normalized(ParameterId id, double value) {
    // What stands for messages is no state, and hosts restore it all the same.
    if (last_step(id))
        return OK;
    const HostControl* const control = find_host_control(id);
    if (control == nullptr || !is_normalized(value))
        return BAD_ARGUMENT;
    shown[id] = {value, get_control(hosted.player(), *control)};
    return OK;
}

Result Controller::set_component_handler(ComponentHandler* host_handler) {
    handler.ask(host_handler);
    return OK;
}

View* Controller::create_view(const char* name) {
    if (name == nullptr || std::strcmp(name, EDITOR_VIEW) != 0)
        return nullptr;
    if (window == nullptr)
        window = make_plugin_window(hosted.player(), *this);
    return window != nullptr ? window->make_view(owner) : nullptr;
}

// The pitch bend is in the window, but no parameter.
void Controller::begin_edit(unsigned number) {
    if (handler && find_host_control(number) != nullptr)
        handler->begin_edit(number);
}

void Controller::edited(unsigned number, int value) {
    hosted.hold_controller(number);
    const HostControl* const control = find_host_control(number);
    if (handler && control != nullptr)
        handler->perform_edit(number, normalized(*control, value));
}

void Controller::end_edit(unsigned number) {
    if (handler && find_host_control(number) != nullptr)
        handler->end_edit(number);
}

void Controller::programs_changed() {
    if (!handler)
        return;
    handler->restart_component(VALUES_CHANGED);
    const Held<ComponentHandler2> more(handler.get());
    if (more)
        more->set_dirty(1);
}

} // namespace tarquil::vst3
