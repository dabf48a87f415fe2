// A sound that is tried.

#include "player/audition.h"

#include <algorithm>

#include "common/assertion.h"
#include "player/controller_events.h"

namespace tarquil {

namespace {

constexpr unsigned TRIED_CHANNEL = 0;

uint32_t samples_of(uint32_t milliseconds) {
    return uint32_t(uint64_t(milliseconds) * SAMPLE_RATE / 1000);
}

} // namespace

AuditionRequest::AuditionRequest(const ControllerBytes& sound, const Phrase& phrase)
    : bytes(sound) {
    for (const PhraseNote& note : phrase) {
        const uint32_t end = std::max(note.start_ms + note.length_ms, note.start_ms + 1);
        notes.push_back({samples_of(note.start_ms), midi_status(MIDI_NOTE_ON, TRIED_CHANNEL),
                         note.key, note.velocity});
        notes.push_back({samples_of(end), midi_status(MIDI_NOTE_OFF, TRIED_CHANNEL), note.key, 0});
    }
    // A key that is struck again comes up first.
    std::stable_sort(notes.begin(), notes.end(), [](const midi_event& one, const midi_event& two) {
        return one.time != two.time ? one.time < two.time
                                    : midi_kind(one.status) < midi_kind(two.status);
    });
}

void Audition::begin(const AuditionRequest& request, const ControllerBytes& globals) {
    is_ending = !side.rests();
    is_beginning = !request.notes.empty();
    playing = is_beginning ? &request : nullptr;
    globals_now = globals;
    next_note = 0;
    played = 0;
}

void Audition::end() {
    is_ending = !side.rests();
    is_beginning = false;
    playing = nullptr;
}

void Audition::put(const midi_event& event, uint32_t time) {
    TARQ_ASSERT(num_events < CAPACITY);
    events[num_events] = event;
    events[num_events++].time = time;
}

void Audition::run(Tarquil* engine, float* pcm, uint32_t frames, uint32_t time) {
    if (playing == nullptr && side.rests())
        return;
    for (uint32_t done = 0; done < frames; done += SideEngine::LONGEST_RUN) {
        const uint32_t piece = std::min(frames - done, SideEngine::LONGEST_RUN);
        const uint32_t start = time + done;
        num_events = 0;
        if (is_ending)
            put({.status = midi_status(MIDI_SILENCE, TRIED_CHANNEL), .data1 = SILENCE_MASTER},
                start);
        if (is_beginning) {
            num_events += program_events(playing->bytes, TRIED_CHANNEL, start, &events[num_events]);
            num_events += global_events(globals_now, start, &events[num_events]);
        }
        is_beginning = is_ending = false;
        for (; playing != nullptr && next_note < playing->notes.size() && num_events < CAPACITY &&
               playing->notes[next_note].time < played + piece;
             next_note++) {
            const midi_event& note = playing->notes[next_note];
            put(note, start + std::max(note.time, played) - played);
        }
        side.run(engine, {events.data(), num_events}, pcm + size_t(2) * done, piece, start);
        if (playing == nullptr)
            continue;
        played += piece;
        if (side.rests() && next_note == playing->notes.size())
            playing = nullptr;
        else if (played > playing->notes.back().time + LONGEST_TAIL)
            end();
    }
}

} // namespace tarquil
