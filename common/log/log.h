// Log functions.  Nothing is logged unless the user asks for it: error codes tell what went wrong.

#pragma once

namespace tarquil {

// Set and clear the process-wide flag that asks for log output.  At start it is set when the
// environment has TARQUIL_LOG=1.
void logEnable();
void logDisable();

// Prints to standard error when the flag is set; looks at the flag and nothing more when it is not.
// Printing may block: a log that is on is for finding a fault, not for playing.
[[gnu::format(printf, 1, 2)]] void logPrintf(const char* format, ...);

// Shows `text` to the user as one line "Tarquil: TEXT" on standard error; never blocks on the user.
void logMessageBox(const char* text);

} // namespace tarquil
