// A message of D-Bus, written and read item by item.

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "editor/access/dbus_library.h"

namespace tarquil {

// An object on the bus: whose it is, and its path.
struct BusReference {
    std::string owner;
    std::string path;
};

class BusMessage {
  public:
    // Takes the library's message over; it may be null.
    BusMessage(const DBusLibrary& library, DBusMessage* taken) : dbus(&library), message(taken) {}
    BusMessage(BusMessage&& other) noexcept : dbus(other.dbus), message(other.message) {
        other.message = nullptr;
    }
    BusMessage& operator=(BusMessage&&) = delete;
    BusMessage(const BusMessage&) = delete;
    BusMessage& operator=(const BusMessage&) = delete;
    ~BusMessage() {
        if (message != nullptr)
            dbus->message_unref(message);
    }

    [[nodiscard]] DBusMessage* get() const { return message; }
    [[nodiscard]] bool is_error() const { return type() == DBUS_MESSAGE_TYPE_ERROR; }
    [[nodiscard]] int type() const { return dbus->message_get_type(message); }
    // Empty where the message has none.
    [[nodiscard]] std::string path() const { return text(dbus->message_get_path(message)); }
    [[nodiscard]] std::string interface() const {
        return text(dbus->message_get_interface(message));
    }
    [[nodiscard]] std::string member() const { return text(dbus->message_get_member(message)); }

  private:
    static std::string text(const char* found) { return found != nullptr ? found : ""; }

    const DBusLibrary* dbus;
    DBusMessage* message;
};

// Adds items at the end of a message, or within a container of one.
class BusWriter {
  public:
    BusWriter(const DBusLibrary& library, const BusMessage& message);

    BusWriter& text(const std::string& text); // what is no UTF-8 is replaced
    BusWriter& path(const std::string& path);
    BusWriter& integer(int32_t value);
    BusWriter& word(uint32_t value);
    BusWriter& boolean(bool value);
    BusWriter& real(double value);
    BusWriter& reference(const BusReference& object); // "(so)"

    using Fill = std::function<void(BusWriter&)>;
    BusWriter& structure(const Fill& fill);
    BusWriter& array(const char* of, const Fill& fill);
    BusWriter& entry(const Fill& fill); // of an array of pairs
    BusWriter& variant(const char* of, const Fill& fill);

  private:
    explicit BusWriter(const DBusLibrary& library) : dbus(library) {}
    BusWriter& basic(int type, const void* value);
    BusWriter& container(int type, const char* of, const Fill& fill);

    const DBusLibrary& dbus;
    DBusMessageIter place{};
};

// Takes items from the start on; nothing where the next one is of another type.
class BusReader {
  public:
    BusReader(const DBusLibrary& library, const BusMessage& message);

    std::optional<std::string> text(); // or a path
    std::optional<int32_t> integer();  // or a word
    std::optional<bool> boolean();
    std::optional<double> real();
    // The items within a variant or another container.
    std::optional<BusReader> inside();

  private:
    explicit BusReader(const DBusLibrary& library) : dbus(&library) {}
    [[nodiscard]] int type();
    void advance();

    const DBusLibrary* dbus;
    DBusMessageIter place{};
    bool is_at_end = false;
};

} // namespace tarquil
