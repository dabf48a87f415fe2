// A connection to a message bus of its own, whatever the host does on the same bus.  Nothing waits:
// answers come when `look` finds them.

#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "editor/access/bus_message.h"

namespace tarquil {

class Bus {
  public:
    Bus(const DBusLibrary& library, const std::string& address);
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;
    ~Bus();

    // False when there was no bus, or no longer is.
    [[nodiscard]] bool is_open() const;
    // On the bus; empty until it has answered.
    [[nodiscard]] const std::string& name() const { return own_name; }

    using Answer = std::function<void(const BusMessage& answer)>;
    // `answer` may be null.  `starts_service`: whoever it is for is started when it is not there.
    void call(const BusReference& object, const char* interface, const char* member,
              const BusWriter::Fill& arguments, Answer answer, bool starts_service = false);
    void signal(const std::string& path, const std::string& interface, const char* member,
                const BusWriter::Fill& arguments);
    void watch_signals(const std::string& rule);

    // `answer`: fills the answer; false when there is no such thing.
    std::function<bool(const BusMessage& call, BusWriter& answer)> on_call;
    std::function<void(const BusMessage& signal)> on_signal;

    // Handles what has come, after waiting for it at most so long.  True when something had.
    bool look(int wait_ms);

  private:
    void handle(const BusMessage& message);
    void answer_call(const BusMessage& call);

    const DBusLibrary& dbus;
    DBusConnection* const connection;
    std::string own_name;
    std::map<uint32_t, Answer> waiting; // by the call's number
};

} // namespace tarquil
