// The options of a render that concern General MIDI.

#pragma once

#include <CLI/CLI.hpp>
#include <memory>

#include "tools/render/gm_set.h"
#include "tools/render/render_options.h"

namespace tarquil {

// What messages mean, and what plays them.
void add_gm_options(CLI::App& command, const std::shared_ptr<RenderOptions>& options);

// The set that the song is played with, or null where its messages are the engine's own.  Without a
// map it is the one that comes with the program, its drums and kits also for another bank.  The
// set's melodic bank takes the place of `bank` unless the options name one.
std::shared_ptr<const GmSet> choose_gm_set(const RenderOptions& options, TarqSettings& bank,
                                           LoadReport* report);

} // namespace tarquil
