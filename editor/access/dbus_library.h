// The D-Bus library, opened when it is wanted, so that the program starts without it.

#pragma once

#include <dbus/dbus.h>

namespace tarquil {

#define TARQUIL_DBUS_FUNCTIONS(F)                                                                  \
    F(connection_close)                                                                            \
    F(connection_get_is_connected)                                                                 \
    F(connection_open_private)                                                                     \
    F(connection_pop_message)                                                                      \
    F(connection_read_write)                                                                       \
    F(connection_send)                                                                             \
    F(connection_set_change_sigpipe)                                                               \
    F(connection_set_exit_on_disconnect)                                                           \
    F(connection_unref)                                                                            \
    F(message_get_interface)                                                                       \
    F(message_get_member)                                                                          \
    F(message_get_no_reply)                                                                        \
    F(message_get_path)                                                                            \
    F(message_get_reply_serial)                                                                    \
    F(message_get_type)                                                                            \
    F(message_iter_append_basic)                                                                   \
    F(message_iter_close_container)                                                                \
    F(message_iter_get_arg_type)                                                                   \
    F(message_iter_get_basic)                                                                      \
    F(message_iter_init)                                                                           \
    F(message_iter_init_append)                                                                    \
    F(message_iter_next)                                                                           \
    F(message_iter_open_container)                                                                 \
    F(message_iter_recurse)                                                                        \
    F(message_new_error)                                                                           \
    F(message_new_method_call)                                                                     \
    F(message_new_method_return)                                                                   \
    F(message_new_signal)                                                                          \
    F(message_set_auto_start)                                                                      \
    F(message_unref)

// Each function without the library's prefix.
struct DBusLibrary {
    // Null when this machine has none.  It stays open.
    static const DBusLibrary* get();

// NOLINTNEXTLINE(bugprone-macro-parentheses): a declaration, not an expression
#define TARQUIL_DECLARE(name) decltype(&::dbus_##name) name = nullptr;
    TARQUIL_DBUS_FUNCTIONS(TARQUIL_DECLARE)
#undef TARQUIL_DECLARE
};

} // namespace tarquil
