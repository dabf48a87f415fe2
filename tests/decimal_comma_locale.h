// A locale with a decimal comma for the length of a test.

#pragma once

#include <clocale>
#include <cstdlib>
#include <string>

#include "tests/temp_directory.h"

namespace tarquil {

// Takes a locale of the system, or has one made (the package "locales" holds its source).
class DecimalCommaLocale {
  public:
    DecimalCommaLocale() : before(std::setlocale(LC_ALL, nullptr)) {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "nl_NL.UTF-8"})
            found = found || (std::setlocale(LC_ALL, name) != nullptr && has_comma());
        found = found || make();
    }
    DecimalCommaLocale(const DecimalCommaLocale&) = delete;
    DecimalCommaLocale& operator=(const DecimalCommaLocale&) = delete;
    ~DecimalCommaLocale() {
        std::setlocale(LC_ALL, before.c_str());
        unsetenv("LOCPATH");
    }

    [[nodiscard]] bool available() const { return found; }

  private:
    static bool has_comma() { return std::string(std::localeconv()->decimal_point) == ","; }

    bool make() {
        const std::string command =
            "localedef -c -i de_DE -f UTF-8 " + directory.path("de_DE.UTF-8") + " >/dev/null 2>&1";
        if (std::system(command.c_str()) != 0) // NOLINT(cert-env33-c)
            return false;
        setenv("LOCPATH", directory.path().c_str(), 1);
        return std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr && has_comma();
    }

    TempDirectory directory;
    std::string before;
    bool found = false;
};

} // namespace tarquil
