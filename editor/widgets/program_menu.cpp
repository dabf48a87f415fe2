// The menu of the bank's 128 programs.

#include "editor/widgets/program_menu.h"

#include "editor/model/editor_model.h"

namespace tarquil {

std::string program_number(unsigned program) {
    std::string number = std::to_string(program);
    number.insert(0, 3 - number.size(), '0');
    return number;
}

std::string numbered_name(const EditorModel& model, unsigned program) {
    return program_number(program) + " " + model.get_state().names[program];
}

std::unique_ptr<Menu> make_program_menu(const EditorModel& model, const Rect& anchor,
                                        unsigned checked,
                                        const std::function<void(unsigned program)>& choose) {
    std::vector<MenuItem> items;
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        items.push_back({numbered_name(model, i), i == checked, true, [choose, i] { choose(i); }});
    return std::make_unique<Menu>(anchor, std::move(items), true);
}

} // namespace tarquil
