// What a source of modulation moves, in words.

#include "editor/widgets/source_uses.h"

#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

void SourceUses::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    constexpr double LINE_HEIGHT = 15.0;
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    std::vector<std::string> names;
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
        if (bytes[modulation_rows(slot).source] == source)
            names.emplace_back(MODULATION_TARGET_NAMES[slot]);
    }
    Rect rest = area;
    canvas.text(rest.cut_top(LINE_HEIGHT + 2), names.empty() ? "Moves nothing yet" : "Moves",
                {theme::SMALL, theme::TEXT_MUTED});
    if (names.empty()) {
        canvas.text(rest.cut_top(LINE_HEIGHT), "choose it as a source under Modulation",
                    {theme::SMALL, theme::TEXT_DIM});
        return;
    }
    const unsigned per_column = 3;
    for (unsigned i = 0; i < names.size(); i++) {
        const unsigned column = i / per_column;
        canvas.text({rest.x + column * 110.0, rest.y + double(i % per_column) * LINE_HEIGHT, 108,
                     LINE_HEIGHT},
                    names[i], {theme::SMALL, theme::TEXT});
    }
}

} // namespace tarquil
