// The LV2 plug-in: states, and files that are loaded beside the sound.

#include <string_view>

#include "common/log/log.h"
#include "formats/lv2/lv2_synth.h"

namespace tarquil {

LV2_State_Status Lv2Synth::save(LV2_State_Store_Function store, LV2_State_Handle handle) {
    const std::string text = hosted.save_state();
    return store(handle, urids.state, text.c_str(), text.size() + 1, urids.atom_string,
                 LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE);
}

LV2_State_Status Lv2Synth::restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle) {
    size_t size = 0;
    uint32_t type = 0;
    uint32_t flags = 0;
    const void* const data = retrieve(handle, urids.state, &size, &type, &flags);
    if (data == nullptr)
        return LV2_STATE_ERR_NO_PROPERTY;
    if (type != urids.atom_string)
        return LV2_STATE_ERR_BAD_TYPE;
    std::string_view text(static_cast<const char*>(data), size);
    if (text.ends_with('\0'))
        text.remove_suffix(1);
    if (hosted.load_state(text) != 0)
        return LV2_STATE_ERR_UNKNOWN;
    is_restored = true;
    return LV2_STATE_SUCCESS;
}

LV2_Worker_Status Lv2Synth::work(uint32_t size, const void* data) {
    std::string path(static_cast<const char*>(data), size);
    path.resize(path.find('\0') == std::string::npos ? path.size() : path.find('\0'));
    const int error = hosted.load_file(path);
    if (error != 0) {
        logPrintf("%s is neither a bank nor an instrument (code %d)\n", path.c_str(), error);
        return LV2_WORKER_ERR_UNKNOWN;
    }
    return LV2_WORKER_SUCCESS;
}

} // namespace tarquil
