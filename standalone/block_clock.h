// When the blocks of a device begin, without the jitter of whoever wakes up for them, and the frame
// of a message that carries a time.
//
// A message plays one and a quarter blocks after its time, to the frame: notes keep their distance.
// The quarter is for blocks whose thread wakes up before what came in last can be seen.  The loop
// that smooths the wake-ups is of the second order (F. Adriaensen, "Using a DLL to filter time",
// 2005), since a device's clock never quite has its rate.

#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>

namespace tarquil {

class BlockClock {
  public:
    void start(double device_rate, uint32_t frames) {
        rate = device_rate;
        period = frames / device_rate;
        length = period;
        is_running = false;
    }

    // A block begins at the time `now`, in seconds.
    void begin_block(double now) {
        // After a gap, or while a device fills its buffer, there is nothing to smooth.
        if (!is_running || std::fabs(now - next) > MAX_ERROR_PERIODS * period) {
            begin = now;
            length = period;
            next = now + length;
            is_running = true;
            return;
        }
        const double omega = 2 * std::numbers::pi * BANDWIDTH_HZ * period;
        const double error = now - next;
        begin = next;
        next += std::numbers::sqrt2 * omega * error + length;
        length += omega * omega * error;
    }

    // The frame in the block of a message with the time `stamp`: below 0 for one that comes late,
    // beyond the block for one that belongs to the next.
    [[nodiscard]] int64_t frame_of(double stamp) const {
        return std::llrint((stamp - begin + length + MARGIN_PERIODS * period) * rate);
    }

  private:
    static constexpr double BANDWIDTH_HZ = 0.5;
    static constexpr double MAX_ERROR_PERIODS = 0.75;
    static constexpr double MARGIN_PERIODS = 0.25;

    double rate = 1;
    double period = 1; // seconds, as the rate says
    double length = 1; // seconds, as measured

    bool is_running = false;
    double begin = 0; // seconds
    double next = 0;
};

} // namespace tarquil
