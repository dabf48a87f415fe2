// The extension "params".

#pragma once

#include <clap/ext/params.h>

namespace tarquil {

extern const clap_plugin_params CLAP_PARAMETERS;

} // namespace tarquil
