// The extension "params": the player's controls as CLAP's parameters.

#include "formats/clap/clap_parameters.h"

#include "formats/clap/clap_plugin.h"
#include "formats/clap/clap_text.h"

namespace tarquil {

namespace {

uint32_t count(const clap_plugin* /*plugin*/) {
    return uint32_t(host_controls().size());
}

// What another program is edited for is not a sound: no song automates it.
clap_param_info_flags flags_of(const HostControl& control) {
    clap_param_info_flags flags = 0;
    if (control.kind != HostControl::Kind::EDITED_PROGRAM)
        flags |= CLAP_PARAM_IS_AUTOMATABLE;
    if (control.is_list)
        flags |= CLAP_PARAM_IS_STEPPED;
    return flags;
}

bool get_info(const clap_plugin* /*plugin*/, uint32_t index, clap_param_info* info) {
    if (index >= host_controls().size() || info == nullptr)
        return false;
    const HostControl& control = host_controls()[index];
    *info = {.id = control.id,
             .flags = flags_of(control),
             .cookie = const_cast<HostControl*>(&control),
             .name = "",
             .module = "",
             .min_value = double(control.first),
             .max_value = double(control.last),
             .default_value = double(control.default_value)};
    copy_clap_text(info->name, control.name);
    copy_clap_text(info->module, control.group);
    return true;
}

bool get_value(const clap_plugin* plugin, clap_id id, double* value) {
    const HostControl* control = find_host_control(id);
    if (control == nullptr || value == nullptr)
        return false;
    *value = get_control(ClapPlugin::of(plugin).player().player(), *control);
    return true;
}

bool value_to_text(const clap_plugin* plugin, clap_id id, double value, char* display,
                   uint32_t size) {
    const HostControl* control = find_host_control(id);
    const auto byte = control == nullptr ? std::nullopt : control_value(*control, value);
    if (!byte || display == nullptr || size == 0)
        return false;
    Player& player = ClapPlugin::of(plugin).player().player();
    copy_clap_text(display, size, control_text(player, *control, *byte));
    return true;
}

bool text_to_value(const clap_plugin* plugin, clap_id id, const char* display, double* value) {
    const HostControl* control = find_host_control(id);
    if (control == nullptr || display == nullptr || value == nullptr)
        return false;
    const auto byte = parse_control(ClapPlugin::of(plugin).player().player(), *control, display);
    if (!byte)
        return false;
    *value = *byte;
    return true;
}

void flush(const clap_plugin* plugin, const clap_input_events* in, const clap_output_events* out) {
    ClapPlugin::of(plugin).flush(in, out);
}

} // namespace

const clap_plugin_params CLAP_PARAMETERS = {.count = count,
                                            .get_info = get_info,
                                            .get_value = get_value,
                                            .value_to_text = value_to_text,
                                            .text_to_value = text_to_value,
                                            .flush = flush};

} // namespace tarquil
