// Why a command stops early: one line for the user and the process's exit status.

#pragma once

#include <stdexcept>
#include <string>

namespace tarquil {

// The exit statuses of every command.
enum ExitStatus {
    STATUS_DONE = 0,
    STATUS_CANNOT = 1,    // a resource that the command needs is not there
    STATUS_BAD_INPUT = 2, // an option, an input file or an output name is to blame
};

// Thrown by the tools' own code, never by the engine; caught where a command ends.
class Failure : public std::runtime_error {
  public:
    Failure(ExitStatus exit_status, const std::string& message)
        : std::runtime_error(message), status(exit_status) {}

    [[nodiscard]] ExitStatus get_status() const { return status; }

  private:
    ExitStatus status;
};

class BadInput : public Failure {
  public:
    explicit BadInput(const std::string& message) : Failure(STATUS_BAD_INPUT, message) {}
};

} // namespace tarquil
