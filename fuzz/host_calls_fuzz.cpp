// A host that calls anything at any time: MIDI of any bytes, parameters of any float, blocks of 0
// to 16384 frames, rates, suspend and resume, programs.
//
// Each call is a byte that chooses it and the bytes that it takes.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "common/assertion.h"
#include "vst/tarq_vst.h"

namespace tarquil {

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

constexpr int32_t MAX_BLOCK = 16384;
constexpr int32_t MAX_FRAMES = 4 * MAX_BLOCK; // in all, to keep inputs quick

class Calls {
  public:
    Calls(const uint8_t* data, size_t size) : next(data), end(data + size) {}

    [[nodiscard]] bool is_done() const { return next == end; }

    // Zeros when the input is at its end.
    template <typename Value> Value take() {
        Value value{};
        const size_t count = std::min(sizeof(Value), size_t(end - next));
        std::memcpy(&value, next, count);
        next += count;
        return value;
    }

  private:
    const uint8_t* next;
    const uint8_t* end;
};

class Host {
  public:
    Host() : effect((new TarqVST(answer))->getAeffect()) { call(effOpen); }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host() { call(effClose); }

    intptr_t call(int32_t opcode, int32_t index = 0, intptr_t value = 0, void* ptr = nullptr,
                  float opt = 0.0F) {
        return effect->dispatcher(effect, opcode, index, value, ptr, opt);
    }

    void perform(Calls& calls) {
        char text[256] = "";
        switch (calls.take<uint8_t>() % 16) {
        case 0:
        case 1:
        case 2:
            render(calls.take<uint16_t>() % (MAX_BLOCK + 1));
            break;
        case 3:
        case 4:
        case 5:
        case 6:
            queue_midi(calls);
            break;
        case 7: {
            const int32_t index = calls.take<int16_t>();
            effect->setParameter(effect, index, calls.take<float>());
            TARQ_ASSERT(std::isfinite(effect->getParameter(effect, index)));
            break;
        }
        case 8: {
            const int32_t index = calls.take<uint8_t>() % 173;
            effect->setParameter(effect, index, float(calls.take<uint8_t>()) / 255);
            break;
        }
        case 9:
            call(effSetSampleRate, 0, 0, nullptr, calls.take<float>());
            break;
        case 10:
            call(effSetBlockSize, 0, calls.take<int32_t>());
            break;
        case 11:
            call(effMainsChanged, 0, calls.take<uint8_t>() % 2);
            break;
        case 12:
            call(effSetProgram, 0, calls.take<int16_t>());
            break;
        case 13:
            call(effCopyProgram, calls.take<int16_t>());
            break;
        case 14:
            std::memset(text, calls.take<uint8_t>(), 80);
            call(effSetProgramName, 0, 0, text);
            break;
        default: {
            const int32_t opcode = calls.take<int8_t>();
            if (opcode != effClose && opcode != effEditOpen)
                call(opcode, calls.take<int16_t>(), calls.take<int16_t>());
            break;
        }
        }
    }

    [[nodiscard]] bool is_tired() const { return rendered >= MAX_FRAMES; }

  private:
    static intptr_t VST_CALL answer(AEffect*, int32_t, int32_t, intptr_t, void*, float) {
        return 0;
    }

    void queue_midi(Calls& calls) {
        VstMidiEvent event;
        event.deltaFrames =
            calls.take<uint8_t>() < 250 ? calls.take<int16_t>() : calls.take<int32_t>();
        for (int i = 0; i < 3; i++)
            event.midiData[i] = calls.take<char>();
        VstEvents events;
        events.numEvents = 1;
        events.events[0] = reinterpret_cast<VstEvent*>(&event);
        call(effProcessEvents, 0, 0, &events);
    }

    void render(int32_t frames) {
        std::vector<float> left(static_cast<size_t>(frames), 0.0F);
        std::vector<float> right(left);
        float* outputs[] = {left.data(), right.data()};
        effect->processReplacing(effect, nullptr, outputs, frames);
        for (const float sample : left)
            TARQ_ASSERT(std::fabs(sample) <= 1.0F);
        rendered += frames;
    }

    AEffect* effect;
    int32_t rendered = 0;
};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Host host;
    for (Calls calls(data, size); !calls.is_done() && !host.is_tired();)
        host.perform(calls);
    return 0;
}

} // namespace tarquil
