// The bytes of a bank's sounds, where the audio thread and others read and change them at once.

#include "player/bank_bytes.h"

#include <algorithm>

namespace tarquil {

BankBytes::BankBytes(const TarqSettings& bank) {
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        set_program(i, bank.get_instrument(i).get_bytes());
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++)
        set_global(number, bank.get_global_controller(number));
}

void BankBytes::store(Bytes& bytes, const ControllerBytes& values) {
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++)
        bytes[number].store(values[number], std::memory_order_relaxed);
}

ControllerBytes BankBytes::copy(const Bytes& bytes) {
    ControllerBytes copied;
    std::transform(bytes.begin(), bytes.end(), copied.begin(), load);
    return copied;
}

} // namespace tarquil
