// The menu of the bank's 128 programs, with a search.

#pragma once

#include <functional>
#include <memory>
#include <string>

#include "editor/widgets/menu.h"

namespace tarquil {

class EditorModel;

// "003".
std::string program_number(unsigned program);

// "003 name", counted from 0 as the host does.
std::string numbered_name(const EditorModel& model, unsigned program);

std::unique_ptr<Menu> make_program_menu(const EditorModel& model, const Rect& anchor,
                                        unsigned checked,
                                        const std::function<void(unsigned program)>& choose);

} // namespace tarquil
