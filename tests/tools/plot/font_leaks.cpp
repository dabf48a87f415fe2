// What the leak check of the sanitizers is told to leave out.

// Fontconfig keeps the patterns of the fonts that cairo asked for until the process ends.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}
