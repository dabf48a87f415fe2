// Parts of a sound that are changed as a whole.

#include "editor/model/section.h"

#include <cmath>

#include "softsynth/parameters/families.h"
#include "softsynth/parameters/osc_type.h"

namespace tarquil {

namespace {

bool is_oscillator_type(unsigned number) {
    for (unsigned i = 0; i < NUM_OSCILLATORS; i++) {
        if (number == oscillator_rows(i).type)
            return true;
    }
    return false;
}

// What makes a sound silent or far too loud is not left to chance.
bool is_left_alone(unsigned number) {
    return number == CTRL_MAIN_VOLUME || number == CTRL_CHAN_MAX_VOICES ||
           number == CTRL_PITCH_BEND_MSB || number == CTRL_PITCH_BEND_LSB ||
           number == CTRL_FCMPR_PRE_GAIN || number == CTRL_ENV1_SUSTAIN;
}

int varied(const EditorModel& model, unsigned number, double amount, std::minstd_rand& chance) {
    const ControllerChoices& range = find_controller(number)->choices;
    const int value = model.value(number);
    if (!range.labels.empty()) {
        if (!std::bernoulli_distribution(amount)(chance))
            return value;
        const int first = is_oscillator_type(number) ? OSC_NONE + 1 : int(range.first);
        return std::uniform_int_distribution(first, int(range.last))(chance);
    }
    const double reach = amount * (range.last - range.first);
    return value + int(std::lround(std::uniform_real_distribution(-reach, reach)(chance)));
}

} // namespace

void initialise_section(EditorModel& model, const std::string& name,
                        std::span<const unsigned> controllers) {
    model.begin_gesture("Initialise " + name);
    for (const unsigned number : controllers)
        model.set_value(number, default_byte(*find_controller(number)));
    model.end_gesture();
}

void randomise_section(EditorModel& model, const std::string& name,
                       std::span<const unsigned> controllers, double amount,
                       std::minstd_rand& chance) {
    model.begin_gesture("Randomise " + name);
    for (const unsigned number : controllers) {
        if (!is_left_alone(number))
            model.set_value(number, varied(model, number, amount, chance));
    }
    model.end_gesture();
}

} // namespace tarquil
