// Banks: a load succeeds as a whole or changes nothing, and what loads saves to the same bank.

#include <cstdint>
#include <memory>

#include "common/assertion.h"
#include "instrument/checked_load.h"

namespace tarquil {

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // The first of equal keys counts: instruments that the input does not have are default ones.
    std::string text(reinterpret_cast<const char*>(data), size);
    text += '\n';
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        text += "instrument" + std::to_string(i) + " = hex:\n";

    const auto bank = std::make_unique<TarqSettings>();
    bank->set_song_title("mine");
    const int error = load_bank_checked_from_string(*bank, text);
    if (error != 0) {
        TARQ_ASSERT(error == 1 || error == 2 || error == 3 || error == 6 || error == 8);
        TARQ_ASSERT(bank->get_song_title() == "mine");
        return 0;
    }
    for (const ControllerInfo& info : global_controller_rows()) {
        const int byte = bank->get_global_controller(info.number);
        TARQ_ASSERT(byte == filter_controller(info.number, byte));
    }
    // What was learned can be learned anew, and is the same.
    const LearnedControls learned = bank->get_learned();
    bank->set_learned({});
    TARQ_ASSERT(bank->get_learned() == LearnedControls());
    bank->set_learned(learned);
    TARQ_ASSERT(bank->get_learned() == learned);
    // Saving and loading thrice takes long: every sixteenth length of input does.
    if (size % 16 != 0)
        return 0;
    // An empty title or name comes back as a blank, or "_": the second text is the stable one.
    std::string saved;
    std::string again;
    bank->text_save_to_string(saved);
    TARQ_ASSERT(bank->text_load_from_string(saved) == 0);
    bank->text_save_to_string(saved);
    TARQ_ASSERT(bank->text_load_from_string(saved) == 0);
    bank->text_save_to_string(again);
    TARQ_ASSERT(saved == again);
    return 0;
}

} // namespace tarquil
