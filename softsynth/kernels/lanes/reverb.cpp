// The reverb's delay lines, a chunk of frames at a time.
//
// A chunk is shorter than every delay, so that all that comes out of a line within it is known at
// its start.  Everything but the combs' low-passes then runs in lanes over time; those have the
// combs in lanes.

#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/lanes/columns.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {
namespace {

using Line = ReverbTank::Line;

constexpr uint32_t CHUNK = 64;
static_assert(CHUNK <= ReverbTank::SHORTEST);

// The oldest samples of a line in a row: in place, or copied where the circle closes.
class Oldest {
  public:
    float* take(Line& of_line, uint32_t of_count) {
        line = &of_line;
        count = of_count;
        before_end = line->size - line->position;
        if (count <= before_end)
            return line->samples + line->position;
        move(copy, line->samples + line->position, before_end);
        move(copy + before_end, line->samples, count - before_end);
        return copy;
    }

    // What is in the row becomes the newest.
    void give_back() {
        if (count > before_end) {
            move(line->samples + line->position, copy, before_end);
            move(line->samples, copy + before_end, count - before_end);
        }
        line->position = count < before_end ? line->position + count : count - before_end;
    }

  private:
    static void move(float* to, const float* from, uint32_t length) {
        __builtin_memcpy(to, from, length * sizeof(float));
    }

    Line* line;
    uint32_t count;
    uint32_t before_end;
    float copy[CHUNK];
};

constexpr uint32_t NUM_COMBS = ReverbTank::NUM_COMBS;
constexpr uint32_t ALL_COMBS = 2 * NUM_COMBS;

// Of the combs; a copy, which no store into a line can change.
struct CombSettings {
    float feedback;
    float damp1;
    float damp2;
};

// A single sample of a side's combs.
void run_combs_once(const CombSettings& set, float* const* rows, float* stores, uint32_t i,
                    float in, float* out) {
    float sum = 0.0F;
    for (uint32_t k = 0; k < NUM_COMBS; k++) {
        const float y = rows[k][i];
        sum += y;
        stores[k] = stores[k] * set.damp1 + y * set.damp2;
        rows[k][i] = in + stores[k] * set.feedback;
    }
    *out = sum;
}

// W combs of both sides over the COLUMNS samples from i on, their low-passes in lanes.
template <int W>
inline void run_low_passes(const CombSettings& set, float* const* rows, Lanes<W>& stores,
                           const float* in, uint32_t i) {
    Lanes<W> samples[COLUMNS];
    load_columns(rows, i, samples);
    for (uint32_t j = 0; j < COLUMNS; j++) {
        stores = stores * Lanes<W>::splat(set.damp1) + samples[j] * Lanes<W>::splat(set.damp2);
        samples[j] = Lanes<W>::splat(in[i + j]) + stores * Lanes<W>::splat(set.feedback);
    }
    store_columns(samples, rows, i);
}

// Sums each side's combs into `out`.
void run_combs(ReverbTank& tank, const float* in, float (&out)[2][CHUNK], uint32_t count) {
    constexpr int W = NATIVE_LANES;
    constexpr uint32_t VECTORS = ALL_COMBS / uint32_t(W);
    Oldest oldest[ALL_COMBS];
    float* rows[ALL_COMBS];
    float stores[ALL_COMBS];
    for (uint32_t k = 0; k < ALL_COMBS; k++) {
        ReverbTank::Side& side = tank.sides[k / NUM_COMBS];
        rows[k] = oldest[k].take(side.combs[k % NUM_COMBS], count);
        stores[k] = side.stores[k % NUM_COMBS];
    }
    Lanes<W> lanes[VECTORS];
    for (uint32_t v = 0; v < VECTORS; v++)
        lanes[v] = Lanes<W>::load(stores + v * uint32_t(W));
    const CombSettings set = {tank.feedback, tank.damp1, tank.damp2};
    uint32_t i = 0;
    for (; count - i >= COLUMNS; i += COLUMNS) {
        for (uint32_t s = 0; s < 2; s++) {
            auto sum = Lanes<4>::splat(0.0F);
            for (uint32_t k = 0; k < NUM_COMBS; k++)
                sum += Lanes<4>::load(rows[s * NUM_COMBS + k] + i);
            sum.store(out[s] + i);
        }
        for (uint32_t v = 0; v < VECTORS; v++)
            run_low_passes(set, rows + v * uint32_t(W), lanes[v], in, i);
    }
    for (uint32_t v = 0; v < VECTORS; v++)
        lanes[v].store(stores + v * uint32_t(W));
    for (; i < count; i++) {
        for (uint32_t s = 0; s < 2; s++)
            run_combs_once(set, rows + s * NUM_COMBS, stores + s * NUM_COMBS, i, in[i], out[s] + i);
    }
    for (uint32_t k = 0; k < ALL_COMBS; k++) {
        tank.sides[k / NUM_COMBS].stores[k % NUM_COMBS] = stores[k];
        oldest[k].give_back();
    }
}

void run_allpass(Line& line, float* samples, uint32_t count) {
    Oldest oldest; // NOLINT(cppcoreguidelines-pro-type-member-init): take() fills it
    float* row = oldest.take(line, count);
    for_each_lanes(count, [&]<int W>(uint32_t i) {
        const auto x = Lanes<W>::load(samples + i);
        const auto b = Lanes<W>::load(row + i);
        (x + b * Lanes<W>::splat(ReverbTank::ALLPASS_FEEDBACK)).store(row + i);
        (b - x).store(samples + i);
    });
    oldest.give_back();
}

} // namespace

void reverb(ReverbTank& tank, const float* in, float* wet, uint32_t num_frames) {
    float input[CHUNK];
    float out[2][CHUNK];
    for (uint32_t start = 0; start < num_frames; start += CHUNK) {
        const uint32_t count = num_frames - start < CHUNK ? num_frames - start : CHUNK;
        for (uint32_t i = 0; i < count; i++)
            input[i] = (in[2 * (start + i)] + in[2 * (start + i) + 1]) * ReverbTank::INPUT_GAIN;
        run_combs(tank, input, out, count);
        for (uint32_t s = 0; s < 2; s++) {
            for (Line& line : tank.sides[s].allpasses)
                run_allpass(line, out[s], count);
        }
        for (uint32_t i = 0; i < count; i++) {
            wet[2 * (start + i)] = out[0][i];
            wet[2 * (start + i) + 1] = out[1][i];
        }
    }
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
