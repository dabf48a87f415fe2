// A limiter without delay: no sample beyond the ceiling, and every sample as it was while none
// would be.
//
// Own design.  Sound comes in pieces that are known as a whole before they are put out; within a
// piece the gain falls along the lower convex hull of what its frames want, from where it was:
//
//   wanted(t)  = min(1, ceiling / peak(t))          peak of both sides
//   gain       falls straight to the frame that asks for the steepest fall, and again from there;
//              it holds until the piece's end
//
// and in a piece that wants no less it rises, each frame by a share of what is left to the least
// that the last frames wanted.  These are more than half a period of the lowest tone, so that the
// gain does not follow a bass note's waves.  A peak in a piece's first frames leaves no time to
// ramp; but what was just below the ceiling before can only be beyond it by its own slope, so the
// gain falls about as the sound rises, for that one piece.

#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

namespace tarquil {

class Limiter {
  public:
    static constexpr float CEILING = 0.891250938F; // -1 dBFS
    static constexpr uint32_t PIECE = 64;          // frames; longer runs are cut

    // Limits interleaved stereo, finite, in place.
    void render(float* frames, uint32_t num_frames);

    // Nothing changes while nothing is beyond the ceiling.
    [[nodiscard]] bool is_idle() const { return gain == 1.0F; }

  private:
    void render_piece(float* frames, uint32_t num_frames);
    void fall(const float* wanted, float* gains, uint32_t num_frames);
    void rise(float* gains, uint32_t num_frames);
    // What the last frames wanted, of these as well.
    void remember(float least_wanted, uint32_t num_frames);
    [[nodiscard]] float least_remembered() const { return *std::ranges::min_element(remembered); }

    // What is remembered are the last 29 to 36 ms; half a period of 20 Hz is 25.
    static constexpr uint32_t SLOT = 5 * PIECE;
    static constexpr uint32_t NUM_SLOTS = 5;

    // memory
    float gain = 1.0F; // of the last frame
    std::array<float, NUM_SLOTS> remembered = {1.0F, 1.0F, 1.0F, 1.0F, 1.0F};
    uint32_t slot = 0;
    uint32_t slot_frames = 0;
};

} // namespace tarquil
