// The pages of the editor.

#pragma once

#include <memory>
#include <vector>

#include "editor/kit/page.h"

namespace tarquil {

Page make_oscillators_page();
Page make_envelopes_page();
Page make_lfos_page();
Page make_modulation_page();
Page make_filter_page();
Page make_mono_effects_page();
Page make_equaliser_page();
Page make_output_page();
Page make_global_page();
Page make_reverb_page();
Page make_compressor_page();
Page make_scope_page();
Page make_sounds_page();
Page make_bank_page();

// All, in the order of their tabs.
std::vector<Page> make_pages();

} // namespace tarquil
