// What sounds on a channel reads of its controllers: as they are, or, when it fades, as they were
// when the channel was silenced.

#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "softsynth/voices/controller.h"

namespace tarquil {

// The controllers' bytes at one time.
struct FrozenControls {
    void take(const ControllerArray& controllers, uint32_t at_time) {
        for (unsigned number = 0; number < NUM_CONTROLLERS; number++)
            bytes[number] = uint8_t(controllers.get_controller(number).get_last_int_value());
        time = at_time;
    }

    std::array<uint8_t, NUM_CONTROLLERS> bytes{};
    uint32_t time = 0;
};

// Each method is that of the controller `number`.
class SoundControls {
  public:
    // With `frozen_controls` nothing changes any more from their time on.
    explicit SoundControls(const ControllerArray& live_controls,
                           const FrozenControls* frozen_controls = nullptr)
        : live(live_controls), frozen(frozen_controls) {}

    [[nodiscard]] bool is_frozen_at(uint32_t time) const {
        return frozen != nullptr && time >= frozen->time;
    }
    // True when nothing changes within the block.
    [[nodiscard]] bool are_still() const { return frozen == nullptr && live.is_still(); }
    [[nodiscard]] int last_int_value(unsigned number) const {
        return frozen != nullptr ? frozen->bytes[number]
                                 : live.get_controller(number).get_last_int_value();
    }
    [[nodiscard]] float last_value(unsigned number) const {
        return live.get_controller(number).do_mapping(last_int_value(number));
    }
    [[nodiscard]] float last_cubed_value(unsigned number) const {
        return cubed(last_value(number));
    }

    void render(unsigned number, MonoBuffer& buf, uint32_t start, bool is_cubed) const {
        live.get_controller(number).render(buf, start, is_cubed);
        if (frozen != nullptr)
            freeze(buf, start, is_cubed ? last_cubed_value(number) : last_value(number));
    }
    void render_controls(unsigned number, MonoBuffer& buf, uint32_t start, uint32_t first,
                         bool is_cubed) const {
        live.get_controller(number).render_controls(buf, start, first, is_cubed);
        if (frozen != nullptr)
            freeze(buf, start, is_cubed ? last_cubed_value(number) : last_value(number));
    }
    void render_controls(unsigned number, MonoBuffer& buf, uint32_t start, uint32_t first,
                         const float* by_byte) const {
        live.get_controller(number).render_controls(buf, start, first, by_byte);
        if (frozen != nullptr)
            freeze(buf, start, by_byte[last_int_value(number)]);
    }
    void render_sqr(unsigned number, MonoBuffer& buf, MonoBuffer& buf2, uint32_t start) const {
        live.get_controller(number).render_sqr(buf, buf2, start);
        if (frozen == nullptr)
            return;
        freeze(buf, start, std::sqrt(1.0F - last_value(number)));
        freeze(buf2, start, std::sqrt(last_value(number)));
    }

  private:
    void freeze(MonoBuffer& buf, uint32_t start, float value) const {
        float* samples = buf.get_first_sample_ptr();
        const uint32_t size = buf.get_buf_size();
        const uint32_t first = std::max(frozen->time, start) - start;
        std::fill(samples + std::min(first, size), samples + size, value);
    }

    const ControllerArray& live;
    const FrozenControls* frozen;
};

} // namespace tarquil
