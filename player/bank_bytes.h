// The bytes of a bank's sounds, where the audio thread and others read and change them at once.

#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "instrument/settings.h"

namespace tarquil {

// Each byte is an atomic of its own: a reader sees some value that was written, and never waits.
class BankBytes {
  public:
    explicit BankBytes(const TarqSettings& bank);

    // Byte 0..127 of controller `number` (0..205): of `program` (0..127), or the global one.
    [[nodiscard]] uint8_t get(unsigned program, unsigned number) const {
        return load(programs[program][number]);
    }
    [[nodiscard]] uint8_t get_global(unsigned number) const { return load(globals[number]); }
    void set(unsigned program, unsigned number, int value) {
        programs[program][number].store(uint8_t(value), std::memory_order_relaxed);
    }
    void set_global(unsigned number, int value) {
        globals[number].store(uint8_t(value), std::memory_order_relaxed);
    }

    void set_program(unsigned number, const ControllerBytes& bytes) {
        store(programs[number], bytes);
    }
    [[nodiscard]] ControllerBytes program(unsigned number) const { return copy(programs[number]); }
    [[nodiscard]] ControllerBytes global() const { return copy(globals); }

  private:
    using Bytes = std::array<std::atomic<uint8_t>, NUM_CONTROLLERS>;

    static uint8_t load(const std::atomic<uint8_t>& byte) {
        return byte.load(std::memory_order_relaxed);
    }
    static ControllerBytes copy(const Bytes& bytes);
    static void store(Bytes& bytes, const ControllerBytes& values);

    std::array<Bytes, MAX_INSTRUMENTS> programs;
    Bytes globals;
};

} // namespace tarquil
