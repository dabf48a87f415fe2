// What hosts find in the module.

#include <cstring>
#include <memory>

#include <lv2/core/lv2.h>

#include "formats/lv2/lv2_names.h"
#include "formats/lv2/lv2_synth.h"

namespace tarquil {

namespace {

template <typename Feature>
Feature* find_feature(const LV2_Feature* const* features, const char* name) {
    for (; features != nullptr && *features != nullptr; features++) {
        if (std::strcmp((*features)->URI, name) == 0)
            return static_cast<Feature*>((*features)->data);
    }
    return nullptr;
}

Lv2Synth& synth_of(LV2_Handle handle) {
    return *static_cast<Lv2Synth*>(handle);
}

LV2_Handle instantiate(const LV2_Descriptor* /*descriptor*/, double rate, const char* /*path*/,
                       const LV2_Feature* const* features) {
    auto* const map = find_feature<LV2_URID_Map>(features, LV2_URID__map);
    if (map == nullptr)
        return nullptr;
    auto synth = std::make_unique<Lv2Synth>(
        rate, *map, find_feature<LV2_Worker_Schedule>(features, LV2_WORKER__schedule),
        find_feature<Lv2PortChangeRequest>(features, LV2_PORT_CHANGE_REQUEST_URI));
    // A rate beyond reason fails here, where the host can say so.
    return synth->activate() ? synth.release() : nullptr;
}

void connect_port(LV2_Handle handle, uint32_t port, void* data) {
    synth_of(handle).connect(port, data);
}

void activate(LV2_Handle handle) {
    synth_of(handle).activate();
}

void run(LV2_Handle handle, uint32_t frames) {
    synth_of(handle).run(frames);
}

void deactivate(LV2_Handle handle) {
    synth_of(handle).deactivate();
}

void cleanup(LV2_Handle handle) {
    delete &synth_of(handle);
}

LV2_State_Status save(LV2_Handle handle, LV2_State_Store_Function store,
                      LV2_State_Handle state_handle, uint32_t /*flags*/,
                      const LV2_Feature* const* /*features*/) {
    return synth_of(handle).save(store, state_handle);
}

LV2_State_Status restore(LV2_Handle handle, LV2_State_Retrieve_Function retrieve,
                         LV2_State_Handle state_handle, uint32_t /*flags*/,
                         const LV2_Feature* const* /*features*/) {
    return synth_of(handle).restore(retrieve, state_handle);
}

LV2_Worker_Status work(LV2_Handle handle, LV2_Worker_Respond_Function /*respond*/,
                       LV2_Worker_Respond_Handle /*respond_handle*/, uint32_t size,
                       const void* data) {
    return synth_of(handle).work(size, data);
}

LV2_Worker_Status work_response(LV2_Handle /*handle*/, uint32_t /*size*/, const void* /*body*/) {
    return LV2_WORKER_SUCCESS;
}

const void* extension_data(const char* name) {
    static const LV2_State_Interface STATE = {save, restore};
    static const LV2_Worker_Interface WORKER = {work, work_response, nullptr};
    if (std::strcmp(name, LV2_STATE__interface) == 0)
        return &STATE;
    if (std::strcmp(name, LV2_WORKER__interface) == 0)
        return &WORKER;
    return nullptr;
}

} // namespace

} // namespace tarquil

LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor(uint32_t index) {
    static const LV2_Descriptor DESCRIPTOR = {
        TARQUIL_LV2_URI, tarquil::instantiate, tarquil::connect_port, tarquil::activate,
        tarquil::run,    tarquil::deactivate,  tarquil::cleanup,      tarquil::extension_data};
    return index == 0 ? &DESCRIPTOR : nullptr;
}
