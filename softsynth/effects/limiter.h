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
// and in a piece that wants no less it rises by a share of what is left each frame.  A peak in a
// piece's first frames leaves no time to ramp; but what was just below the ceiling before can only
// be beyond it by its own slope, so the gain falls about as the sound rises, for that one piece.

#pragma once

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
    void rise(float least_wanted, float* gains, uint32_t num_frames);

    float gain = 1.0F; // memory: of the last frame
};

} // namespace tarquil
