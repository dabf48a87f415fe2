// Messages of the storage layer kept from the user for a while.

#pragma once

namespace tarquil {

// While an object lives, descriptor 1 leads nowhere: short source files name only the controllers
// that differ, and every other key would be reported; and a user may ask for quiet.
class SilentMessages {
  public:
    SilentMessages();
    SilentMessages(const SilentMessages&) = delete;
    SilentMessages& operator=(const SilentMessages&) = delete;
    ~SilentMessages();

  private:
    int before; // -1 when there was no descriptor 1
};

} // namespace tarquil
