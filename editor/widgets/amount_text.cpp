// The whole amount of a modulation slot.

#include "editor/widgets/amount_text.h"

#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"
#include "softsynth/parameters/quantity_text.h"
#include "softsynth/parameters/shown_quantity.h"

namespace tarquil {

void AmountText::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const ModulationRows rows = modulation_rows(slot);
    if (bytes[rows.source] == INFL_NONE)
        return;
    if (bytes[rows.amount] == MULTIPLYING_AMOUNT) {
        canvas.text(area, MULTIPLIES_TEXT, {theme::SMALL, theme::WARM, Align::RIGHT});
        return;
    }
    const double sum = controller_quantity(rows.amount, bytes[rows.amount]) +
                       controller_quantity(rows.fine_amount, bytes[rows.fine_amount]);
    const Unit unit = find_controller(rows.amount)->unit;
    canvas.text(
        area,
        musical_text(rows.amount, sum, unit).value_or(with_short_unit(quantity_text(sum, unit))),
        {theme::SMALL, theme::TEXT, Align::RIGHT});
}

} // namespace tarquil
