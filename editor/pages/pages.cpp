// The pages of the editor.

#include "editor/pages/pages.h"

namespace tarquil {

std::vector<Page> make_pages() {
    std::vector<Page> pages;
    for (const auto make :
         {make_oscillators_page, make_envelopes_page, make_lfos_page, make_modulation_page,
          make_filter_page, make_mono_effects_page, make_equaliser_page, make_output_page,
          make_global_page, make_reverb_page, make_compressor_page, make_scope_page,
          make_sounds_page, make_bank_page})
        pages.push_back(make());
    return pages;
}

} // namespace tarquil
