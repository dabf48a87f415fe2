// The JACK client library, opened when it is wanted, so that the program starts without it.

#pragma once

#include <jack/jack.h>
#include <jack/midiport.h>

#include <string>

namespace tarquil {

#define TARQUIL_JACK_FUNCTIONS(F)                                                                  \
    F(activate)                                                                                    \
    F(client_close)                                                                                \
    F(client_open)                                                                                 \
    F(connect)                                                                                     \
    F(free)                                                                                        \
    F(get_buffer_size)                                                                             \
    F(get_ports)                                                                                   \
    F(get_sample_rate)                                                                             \
    F(midi_event_get)                                                                              \
    F(midi_get_event_count)                                                                        \
    F(on_shutdown)                                                                                 \
    F(port_get_buffer)                                                                             \
    F(port_get_latency_range)                                                                      \
    F(port_name)                                                                                   \
    F(port_register)                                                                               \
    F(port_set_latency_range)                                                                      \
    F(recompute_total_latencies)                                                                   \
    F(set_buffer_size)                                                                             \
    F(set_error_function)                                                                          \
    F(set_info_function)                                                                           \
    F(set_latency_callback)                                                                        \
    F(set_process_callback)                                                                        \
    F(set_sample_rate_callback)                                                                    \
    F(set_xrun_callback)

// Each function without the library's prefix.
struct JackLibrary {
    // Null, and a reason, when this machine has none.  It stays open: its threads outlive clients.
    static const JackLibrary* get(std::string& reason);

// NOLINTNEXTLINE(bugprone-macro-parentheses): a declaration, not an expression
#define TARQUIL_DECLARE(name) decltype(&::jack_##name) name = nullptr;
    TARQUIL_JACK_FUNCTIONS(TARQUIL_DECLARE)
#undef TARQUIL_DECLARE
};

} // namespace tarquil
