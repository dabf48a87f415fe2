// Banks that the user named.

#include "tools/bank_error.h"

#include "instrument/load_error.h"
#include "instrument/names.h"
#include "tools/failure.h"

namespace tarquil {

std::unique_ptr<TarqSettings> load_bank_file(const std::string& path, LoadReport& report) {
    auto bank = std::make_unique<TarqSettings>();
    set_default_names(*bank);
    const int error = bank->text_load(path, &report);
    if (error != 0)
        throw BadInput(explain_bank_error(path, error));
    remove_lone_blanks(*bank);
    return bank;
}

} // namespace tarquil
