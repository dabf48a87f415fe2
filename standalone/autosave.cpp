// Keeps what is edited where the next session finds it.

#include "standalone/autosave.h"

namespace tarquil {

std::string Autosave::poll(Time now) {
    if (!document.is_changed()) {
        backup.discard();
        kept_revision.reset();
        changed_since.reset();
        return "";
    }
    const std::optional<uint64_t> revision = model.revision();
    if (backup.has_kept() && revision && revision == kept_revision)
        return "";
    if (!changed_since)
        changed_since = now;
    if (now - *changed_since < INTERVAL)
        return "";
    changed_since.reset();
    return keep_now();
}

std::string Autosave::keep_now() {
    if (!document.is_changed())
        return "";
    std::string problem = backup.keep(document.text(), document.path());
    if (problem.empty())
        kept_revision = model.revision();
    return problem;
}

} // namespace tarquil
