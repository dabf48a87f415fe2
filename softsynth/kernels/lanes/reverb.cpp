// The reverb's delay lines, a chunk of frames at a time.
//
// A chunk is shorter than every delay, so that all that comes out of a line within it is known at
// its start.  Everything but the combs' low-passes then runs in lanes over time; those have the
// combs in lanes.

#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/lanes/lanes.h"

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
        for (uint32_t i = 0; i < count; i++)
            copy[i] = *place(i);
        return copy;
    }

    // What is in the row becomes the newest.
    void give_back() {
        for (uint32_t i = 0; count > before_end && i < count; i++)
            *place(i) = copy[i];
        line->position = count < before_end ? line->position + count : count - before_end;
    }

  private:
    float* place(uint32_t i) const {
        return line->samples + (i < before_end ? line->position + i : i - before_end);
    }

    Line* line;
    uint32_t count;
    uint32_t before_end;
    float copy[CHUNK];
};

// Four combs of a side, their low-passes in lanes.
constexpr uint32_t BANK = 4;
constexpr uint32_t BANKS = ReverbTank::NUM_COMBS / BANK;

// Runs a bank over the four samples from i on, which it adds to `sum`.  Rows lie over time but
// while the low-passes run.
inline void run_bank(const ReverbTank& tank, float* const* rows, Lanes<4>& store, uint32_t i,
                     const Lanes<4>& in, Lanes<4>& sum) {
    Lanes<4> y[BANK];
    for (uint32_t k = 0; k < BANK; k++) {
        y[k] = Lanes<4>::load(rows[k] + i);
        sum += y[k];
        y[k] *= Lanes<4>::splat(tank.damp2);
    }
    transpose(y);
    for (Lanes<4>& at_a_time : y) {
        store = store * Lanes<4>::splat(tank.damp1) + at_a_time;
        at_a_time = store;
    }
    transpose(y);
    for (uint32_t k = 0; k < BANK; k++)
        (in + y[k] * Lanes<4>::splat(tank.feedback)).store(rows[k] + i);
}

// The same for a single sample.
void run_combs_once(const ReverbTank& tank, float* const* rows, float* stores, uint32_t i, float in,
                    float* out) {
    float sum = 0.0F;
    for (uint32_t k = 0; k < ReverbTank::NUM_COMBS; k++) {
        const float y = rows[k][i];
        sum += y;
        stores[k] = stores[k] * tank.damp1 + y * tank.damp2;
        rows[k][i] = in + stores[k] * tank.feedback;
    }
    *out = sum;
}

// Sums the combs into `out`.
void run_combs(const ReverbTank& tank, ReverbTank::Side& side, const float* in, float* out,
               uint32_t count) {
    Oldest oldest[ReverbTank::NUM_COMBS];
    float* rows[ReverbTank::NUM_COMBS];
    for (uint32_t k = 0; k < ReverbTank::NUM_COMBS; k++)
        rows[k] = oldest[k].take(side.combs[k], count);
    Lanes<4> stores[BANKS];
    for (uint32_t bank = 0; bank < BANKS; bank++)
        stores[bank] = Lanes<4>::load(side.stores + BANK * bank);
    uint32_t i = 0;
    for (; count - i >= 4; i += 4) {
        const auto x = Lanes<4>::load(in + i);
        auto sum = Lanes<4>::splat(0.0F);
        for (uint32_t bank = 0; bank < BANKS; bank++)
            run_bank(tank, rows + BANK * bank, stores[bank], i, x, sum);
        sum.store(out + i);
    }
    for (uint32_t bank = 0; bank < BANKS; bank++)
        stores[bank].store(side.stores + BANK * bank);
    for (; i < count; i++)
        run_combs_once(tank, rows, side.stores, i, in[i], out + i);
    for (Oldest& row : oldest)
        row.give_back();
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
        for (uint32_t s = 0; s < 2; s++) {
            run_combs(tank, tank.sides[s], input, out[s], count);
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
