// What a user does with the file of the edited bank, where the editor has one.

#pragma once

#include <functional>

#include "editor/kit/ui_host.h"

namespace tarquil {

// Each does nothing in a host, which keeps the bank itself.  `then` comes when it is saved; without
// a file yet, a name is asked for first.
void save_document(UiHost& host, const std::function<void()>& then = nullptr);
void save_document_as(UiHost& host, const std::function<void()>& then = nullptr);
// Asks first whether to save what is changed.
void open_document(UiHost& host);

// Asks whether to save, to discard or to stay; `then` comes in the first two cases, when it is
// saved.
void ask_to_save(UiHost& host, const std::string& before_what, const std::function<void()>& then);

} // namespace tarquil
