// Tells a host what the user does in the plug-in's editor.

#include "vst/edit_teller.h"

#include "vst/rate_warning.h"
#include "vst/tarq_vst.h"

namespace tarquil {

void EditTeller::begin_edit(unsigned number) {
    plugin.beginEdit(controller_to_vst_param(int(number)));
}

void EditTeller::edited(unsigned number, int value) {
    plugin.automate(controller_to_vst_param(int(number)), byte_to_vst_value(value));
}

void EditTeller::end_edit(unsigned number) {
    plugin.endEdit(controller_to_vst_param(int(number)));
}

void EditTeller::programs_changed() {
    plugin.updateDisplay();
}

std::string EditTeller::warning() const {
    return rate_warning(plugin.host_rate());
}

} // namespace tarquil
