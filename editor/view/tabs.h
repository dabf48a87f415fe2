// The row of tabs that chooses a page.

#pragma once

#include <functional>
#include <vector>

#include "editor/kit/page.h"

namespace tarquil {

void add_tabs(Page& header, const std::vector<Page>& pages,
              const std::function<unsigned()>& get_current,
              const std::function<void(unsigned)>& show);

} // namespace tarquil
