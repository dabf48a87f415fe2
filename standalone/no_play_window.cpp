// Stands in for the window where the build has no editor.

#include "standalone/play_window.h"

namespace tarquil {

std::unique_ptr<PlayWindow> open_play_window(Player& /*player*/, const PlaySettings& /*settings*/,
                                             std::string& reason) {
    reason = "this program was built without the editor: --no-window plays without one";
    return nullptr;
}

} // namespace tarquil
