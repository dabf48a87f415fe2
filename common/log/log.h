// Log functions.  Shipped builds keep quiet about run-time problems: the error code tells them.

#pragma once

namespace tarquil {

// Set and clear the process-wide flag that asks for log output.
void logEnable();
void logDisable();

// Discards its message, whatever the flag says; the call sites keep their texts checked against
// their arguments.
[[gnu::format(printf, 1, 2)]] void logPrintf(const char* format, ...);

// Shows `text` to the user as one line "Tarquil: TEXT" on standard error; never blocks on the user.
void logMessageBox(const char* text);

} // namespace tarquil
