// The whole amount of a modulation slot.

#include "editor/widgets/amount_text.h"

#include "editor/model/control_meaning.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/voices/influence.h"

namespace tarquil {

void AmountText::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    constexpr int MULTIPLYING_AMOUNT = 127;
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    if (bytes[CTRL_OSC1_INFLUENCE_SOURCE + slot] == INFL_NONE)
        return;
    const unsigned amount = CTRL_OSC1_INFLUENCE_AMOUNT + slot;
    const unsigned fine = CTRL_OSC1_INFLUENCE_FINE_AMOUNT + slot;
    if (bytes[amount] == MULTIPLYING_AMOUNT) {
        canvas.text(area, "multiplies", {theme::SMALL, theme::WARM, Align::RIGHT});
        return;
    }
    const double sum = double(map_char_to_float(amount, bytes[amount])) +
                       double(map_char_to_float(fine, bytes[fine]));
    canvas.text(area, with_short_unit(quantity_display(sum, find_controller(amount)->unit)),
                {theme::SMALL, theme::TEXT, Align::RIGHT});
}

} // namespace tarquil
