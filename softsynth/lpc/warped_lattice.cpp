// The synthesis filter: an all-pole lattice whose delays are all-passes.

#include "softsynth/lpc/warped_lattice.h"

#include <cmath>

#include "common/assertion.h"

namespace tarquil {

namespace {

// A memory below this is cleared: it would fade into denormals, which are slow.
constexpr float QUIET = 1e-15F;

} // namespace

WarpedLattice::WarpedLattice(double filter_warping)
    : warping(filter_warping), pole(float(warping)),
      cross(float(std::sqrt(1.0 - warping * warping))) {
    TARQ_ASSERT(warping >= 0.0 && warping < 1.0);
    set_reflections({});
}

void WarpedLattice::set_reflections(const Reflections& reflections) {
    double alpha = 1.0;
    for (size_t m = 0; m < LPC_ORDER; m++) {
        const double k = reflections[m];
        const double r = 1.0 / (1.0 - warping * k * alpha);
        forward[m] = float(r * std::sqrt(1.0 - k * k));
        backward[m] = float(r * k);
        alphas[m] = float(alpha);
        alpha = (k - warping * alpha) * r;
    }
    for (float& state : states)
        state = std::fabs(state) < QUIET ? 0.0F : state;
}

void WarpedLattice::process(float* samples, uint32_t num_samples) {
    std::array<float, LPC_ORDER> s = states;
    for (uint32_t n = 0; n < num_samples; n++) {
        std::array<float, LPC_ORDER> u;     // NOLINT(cppcoreguidelines-pro-type-member-init)
        std::array<float, LPC_ORDER> betas; // NOLINT(cppcoreguidelines-pro-type-member-init)
        float beta = 0.0F;
        for (size_t m = 0; m < LPC_ORDER; m++) {
            betas[m] = beta;
            u[m] = cross * s[m] - pole * beta;
            beta = forward[m] * u[m];
        }
        float f = samples[n];
        for (size_t m = LPC_ORDER; m-- > 0;) {
            f = forward[m] * f - backward[m] * u[m];
            const float g = alphas[m] * f + betas[m];
            s[m] = cross * g + pole * s[m];
        }
        samples[n] = f;
    }
    states = s;
}

} // namespace tarquil
