// Stands in for the kernel's MIDI sequencer, which machines without sound lack: loaded before a
// host, it takes what the host plays and never has an event for it.  Hosts hand a plug-in its
// events themselves.
//
// The parameters are those of alsa/seq.h, its records as void.

#include <errno.h>
#include <poll.h>
#include <unistd.h>

enum { CLIENT = 128 };

static int input[2] = {-1, -1}; // a pipe that nobody writes to
static int num_ports = 0;

int snd_seq_open(void **seq, const char *name, int streams, int mode) {
    if (input[0] < 0 && pipe(input) != 0)
        return -errno;
    *seq = input;
    return 0;
}

int snd_seq_poll_descriptors(void *seq, struct pollfd *descriptors, unsigned room, short events) {
    descriptors->fd = input[0];
    descriptors->events = POLLIN;
    return 1;
}

int snd_seq_event_input(void *seq, void **event) {
    *event = 0;
    return -EAGAIN;
}

int snd_seq_poll_descriptors_count(void *seq, short events) { return 1; }
int snd_seq_client_id(void *seq) { return CLIENT; }
int snd_seq_create_simple_port(void *seq, const char *name, unsigned caps, unsigned type) {
    return num_ports++;
}

// There is nobody else.
int snd_seq_get_any_client_info(void *seq, int client, void *info) { return -ENOENT; }
int snd_seq_get_any_port_info(void *seq, int client, int port, void *info) { return -ENOENT; }
int snd_seq_query_next_client(void *seq, void *info) { return -ENOENT; }
int snd_seq_query_next_port(void *seq, void *info) { return -ENOENT; }
int snd_seq_query_port_subscribers(void *seq, void *subscribers) { return -ENOENT; }

// Done, and nothing happens.
int snd_seq_close(void *seq) { return 0; }
int snd_seq_set_client_name(void *seq, const char *name) { return 0; }
int snd_seq_alloc_queue(void *seq) { return 0; }
int snd_seq_free_queue(void *seq, int queue) { return 0; }
int snd_seq_control_queue(void *seq, int queue, int type, int value, void *event) { return 0; }
int snd_seq_get_queue_status(void *seq, int queue, void *status) { return 0; }
int snd_seq_get_queue_tempo(void *seq, int queue, void *tempo) { return 0; }
int snd_seq_set_queue_tempo(void *seq, int queue, void *tempo) { return 0; }
int snd_seq_set_queue_timer(void *seq, int queue, void *timer) { return 0; }
int snd_seq_delete_simple_port(void *seq, int port) { return 0; }
int snd_seq_get_port_info(void *seq, int port, void *info) { return 0; }
int snd_seq_set_port_info(void *seq, int port, void *info) { return 0; }
int snd_seq_subscribe_port(void *seq, void *subscription) { return 0; }
int snd_seq_unsubscribe_port(void *seq, void *subscription) { return 0; }
int snd_seq_event_input_pending(void *seq, int fetch) { return 0; }
int snd_seq_event_output(void *seq, void *event) { return 0; }
int snd_seq_event_output_direct(void *seq, void *event) { return 0; }
int snd_seq_drain_output(void *seq) { return 0; }
int snd_seq_drop_output(void *seq) { return 0; }
int snd_seq_drop_input(void *seq) { return 0; }
int snd_seq_remove_events(void *seq, void *condition) { return 0; }
