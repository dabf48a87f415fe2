// A connection to a message bus of its own.

#include "editor/access/bus.h"

namespace tarquil {

namespace {

const BusReference DAEMON{"org.freedesktop.DBus", "/org/freedesktop/DBus"};
constexpr const char* DAEMON_INTERFACE = "org.freedesktop.DBus";

// The process's handling of signals is left as it is.
DBusConnection* open(const DBusLibrary& dbus, const std::string& address) {
    dbus.connection_set_change_sigpipe(0);
    DBusConnection* const connection = dbus.connection_open_private(address.c_str(), nullptr);
    dbus.connection_set_change_sigpipe(1);
    if (connection != nullptr)
        dbus.connection_set_exit_on_disconnect(connection, 0);
    return connection;
}

} // namespace

Bus::Bus(const DBusLibrary& library, const std::string& address)
    : dbus(library), connection(open(library, address)) {
    call(DAEMON, DAEMON_INTERFACE, "Hello", nullptr, [this](const BusMessage& answer) {
        if (!answer.is_error())
            own_name = BusReader(dbus, answer).text().value_or("");
    });
}

Bus::~Bus() {
    if (connection == nullptr)
        return;
    dbus.connection_close(connection);
    dbus.connection_unref(connection);
}

bool Bus::is_open() const {
    return connection != nullptr && dbus.connection_get_is_connected(connection) != 0;
}

void Bus::call(const BusReference& object, const char* interface, const char* member,
               const BusWriter::Fill& arguments, Answer answer, bool starts_service) {
    if (connection == nullptr)
        return;
    const BusMessage message(
        dbus,
        dbus.message_new_method_call(object.owner.c_str(), object.path.c_str(), interface, member));
    dbus.message_set_auto_start(message.get(), starts_service ? 1 : 0);
    BusWriter writer(dbus, message);
    if (arguments)
        arguments(writer);
    uint32_t number = 0;
    dbus.connection_send(connection, message.get(), &number);
    if (answer)
        waiting[number] = std::move(answer);
}

void Bus::signal(const std::string& path, const std::string& interface, const char* member,
                 const BusWriter::Fill& arguments) {
    if (connection == nullptr)
        return;
    const BusMessage message(dbus,
                             dbus.message_new_signal(path.c_str(), interface.c_str(), member));
    BusWriter writer(dbus, message);
    arguments(writer);
    dbus.connection_send(connection, message.get(), nullptr);
}

void Bus::watch_signals(const std::string& rule) {
    call(
        DAEMON, DAEMON_INTERFACE, "AddMatch", [&](BusWriter& writer) { writer.text(rule); },
        nullptr);
}

void Bus::answer_call(const BusMessage& call) {
    const bool is_silent = dbus.message_get_no_reply(call.get()) != 0;
    const BusMessage reply(dbus, dbus.message_new_method_return(call.get()));
    BusWriter writer(dbus, reply);
    const bool is_known = on_call && on_call(call, writer);
    if (is_silent)
        return;
    if (is_known) {
        dbus.connection_send(connection, reply.get(), nullptr);
        return;
    }
    const BusMessage error(dbus, dbus.message_new_error(call.get(), DBUS_ERROR_UNKNOWN_METHOD,
                                                        "There is no such thing"));
    dbus.connection_send(connection, error.get(), nullptr);
}

void Bus::handle(const BusMessage& message) {
    switch (message.type()) {
    case DBUS_MESSAGE_TYPE_METHOD_CALL:
        answer_call(message);
        return;
    case DBUS_MESSAGE_TYPE_SIGNAL:
        if (on_signal)
            on_signal(message);
        return;
    default:
        if (auto found = waiting.extract(dbus.message_get_reply_serial(message.get())))
            found.mapped()(message);
    }
}

bool Bus::look(int wait_ms) {
    if (connection == nullptr)
        return false;
    dbus.connection_read_write(connection, wait_ms);
    bool has_come = false;
    while (DBusMessage* const message = dbus.connection_pop_message(connection)) {
        has_come = true;
        handle(BusMessage(dbus, message));
    }
    if (has_come)
        dbus.connection_read_write(connection, 0);
    return has_come;
}

} // namespace tarquil
