// Starting notes.

#include <memory>

#include "bench/kernels/kernel_row.h"
#include "player/shared_waveforms.h"
#include "softsynth/voices/channel.h"
#include "softsynth/voices/voice_pool.h"

namespace tarquil {

namespace {

// A note of three groups of 255 copies; every second one or none has been played before.
KernelRow note_row(bool again) {
    struct Setup {
        VoicePool pool;
        PhaseRandom random;
        TimelineMemory timelines;
        Channel channel;
        Voice voice;
        uint32_t time = 0;
    };
    const auto setup = std::make_shared<Setup>();
    constexpr int MOST_COPIES = 127;
    setup->channel.attach(setup->pool, setup->random, shared_waveforms(), setup->timelines);
    ControllerArray& controllers = setup->channel.get_controllers();
    for (const unsigned c : {CTRL_OSC1_MULTI_COUNT, CTRL_OSC2_MULTI_COUNT, CTRL_OSC3_MULTI_COUNT})
        controllers.get_controller(c).push_back({0, MOST_COPIES});
    for (const unsigned c : {CTRL_OSC1_TYPE, CTRL_OSC2_TYPE, CTRL_OSC3_TYPE})
        controllers.get_controller(c).push_back({0, OSC_SAW});
    controllers.reset();
    return {again ? "note-on of 3 x 255 copies, played before" : "note-on of 3 x 255 copies",
            KernelRow::MICROSECONDS, 1,
            [setup, again] {
                // Fine tuning makes a new tuning of each note.
                if (!again) {
                    setup->time++;
                    for (unsigned i = 0; i < 3; i++)
                        setup->channel.get_controllers()
                            .get_controller(CTRL_OSC1_FINE_TUNE + i)
                            .push_back({0, int32_t(setup->time / 128 + 40 * i) % 128});
                    setup->channel.get_controllers().reset();
                }
                setup->voice.note_on(setup->channel, again ? 60 : int(setup->time % 128), 100, 0);
            },
            false};
}

} // namespace

std::vector<KernelRow> note_rows() {
    return {note_row(false), note_row(true)};
}

} // namespace tarquil
