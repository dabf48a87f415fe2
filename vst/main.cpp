// Where hosts enter.

#include <exception>

#include "vst/tarq_vst.h"

namespace tarquil {

extern "C" {

// Null when the plug-in could not be made.
[[gnu::visibility("default")]] AEffect* VSTPluginMain(audioMasterCallback host);
[[gnu::visibility("default")]] AEffect* VSTPluginMain(audioMasterCallback host) {
    try {
        return (new TarqVST(host))->getAeffect(); // the host's close deletes it
    } catch (const std::exception&) {
        return nullptr;
    }
}

// What older hosts look for.
[[gnu::visibility("default")]] AEffect* old_entry(audioMasterCallback host) asm("main");
AEffect* old_entry(audioMasterCallback host) {
    return VSTPluginMain(host);
}
}

} // namespace tarquil
