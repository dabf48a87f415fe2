// Fixed 2:1 converters: symmetric half-band FIR filters of 26 taps.

#include "softsynth/filters/resampler.h"

#include <algorithm>

#include "softsynth/kernels/half_band_sums.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

const float resample_kernel[RESAMPLE_HALF_TAPS] = {
    -0.0053439266F, -0.0115177454F, -0.00050373096F, 0.018825721F,  0.00552462041F,
    -0.0331385434F, -0.0167190339F, 0.0553537011F,   0.0403976999F, -0.0962585136F,
    -0.100925371F,  0.225431904F,   0.616128385F,
};

const float alt_resample_kernel[RESAMPLE_HALF_TAPS] = {
    -0.00631109998F, -0.0135511998F, -0.00118320005F, 0.0208471995F, 0.00558230001F,
    -0.0388610996F,  -0.0207284F,    0.0615013018F,   0.0451789014F, -0.112575598F,
    -0.127783194F,   0.227009997F,   0.658050716F,
};

namespace {

constexpr uint32_t LAST_TAP = 2 * RESAMPLE_HALF_TAPS - 1;

// Tap j of the whole kernel.
float tap(const float* kernel, uint32_t j) {
    return kernel[j < RESAMPLE_HALF_TAPS ? j : LAST_TAP - j];
}

} // namespace

bool AltDownsampler::is_finite() const {
    return all_finite(history, ResampleHistory::SIZE);
}

bool ResampleHistory::is_finite() const {
    return all_finite(samples, SIZE);
}

void Upsampler::resample(const float* in, float* out, uint32_t n) {
    for (uint32_t i = 0; i < n; i++) {
        history.push(in[i]);
        float even = 0.0F;
        float odd = 0.0F;
        for (uint32_t j = 0; j < RESAMPLE_HALF_TAPS; j++) {
            even += history.at(j) * tap(resample_kernel, 2 * j);
            odd += history.at(j) * tap(resample_kernel, 2 * j + 1);
        }
        out[2 * i] = even;
        out[2 * i + 1] = odd;
    }
}

void Downsampler::resample(const float* in, float* out, uint32_t n) {
    for (uint32_t i = 0; i < n; i++) {
        history.push(in[2 * i]);
        history.push(in[2 * i + 1]);
        float sum = 0.0F;
        for (uint32_t j = 0; j < RESAMPLE_HALF_TAPS; j++)
            sum += (history.at(LAST_TAP - j) + history.at(j)) * resample_kernel[j];
        out[i] = sum;
    }
}

void AltDownsampler::resample(const float* in, float* out, uint32_t n) {
    constexpr uint32_t PIECE = 32;
    float window[ResampleHistory::SIZE + 2 * PIECE];
    std::copy_n(history, ResampleHistory::SIZE, window);
    for (uint32_t done = 0; done < n; done += PIECE) {
        const uint32_t length = std::min(PIECE, n - done);
        std::copy_n(in + size_t(2) * done, 2 * length, window + ResampleHistory::SIZE);
        half_band_sums(window + ResampleHistory::SIZE + 1, alt_resample_kernel, out + done,
                       int(length));
        std::copy_n(window + size_t(2) * length, ResampleHistory::SIZE, window);
    }
    std::copy_n(window, ResampleHistory::SIZE, history);
}

} // namespace tarquil
