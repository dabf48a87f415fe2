// Banks that the user named.

#include "tools/bank_error.h"

#include "common/failure.h"
#include "common/load_string.h"
#include "instrument/checked_load.h"
#include "instrument/load_error.h"
#include "instrument/names.h"
#include "instrument/text_error.h"
#include "instrument/text_kind.h"
#include "sounds/shipped_sounds.h"

namespace tarquil {

std::unique_ptr<TarqSettings> load_bank_file(const std::string& path, LoadReport& report) {
    if (const TarqSettings* shipped = find_shipped_bank(path))
        return std::make_unique<TarqSettings>(*shipped);
    auto bank = std::make_unique<TarqSettings>();
    set_default_names(*bank);
    std::string text;
    int error = load_file_to_string(path, text);
    if (error == 0 && !is_text_of(TextKind::BANK, text))
        error = WRONG_KIND;
    if (error == 0)
        error = bank->text_load_from_string(text, &report);
    if (error != 0)
        throw BadInput(explain_bank_error(path, error));
    remove_lone_blanks(*bank);
    return bank;
}

void load_bank_to_play(TarqSettings& bank, const std::string& path, LoadReport& report) {
    if (const TarqSettings* shipped = find_shipped_bank(path)) {
        bank = *shipped;
        return;
    }
    const int error = load_bank_checked(bank, path, &report);
    if (error != 0)
        throw BadInput(explain_bank_error(path, error));
}

} // namespace tarquil
