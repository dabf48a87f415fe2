// `tarquil bank list`: which instruments a bank has.

#include "tools/bank/bank_list.h"

#include <algorithm>
#include <utility>

#include "instrument/names.h"
#include "tools/bank/json_text.h"
#include "tools/bank_error.h"

namespace tarquil {

namespace {

constexpr size_t NUMBER_WIDTH = 3;
constexpr size_t NAME_WIDTH = 24; // where there are categories

constexpr std::pair<const char*, InstrumentText> SAID[] = {{"author", InstrumentText::AUTHOR},
                                                           {"category", InstrumentText::CATEGORY},
                                                           {"tags", InstrumentText::TAGS},
                                                           {"comment", InstrumentText::COMMENT}};

bool is_default(const Instrument& instrument, unsigned number) {
    return instrument.save_to_string() == built_in_instrument(number).save_to_string();
}

std::string list_as_table(const TarqSettings& bank, bool all) {
    std::string text;
    if (!bank.get_song_title().empty())
        text += "title:  " + bank.get_song_title() + "\n";
    if (!bank.get_song_author().empty())
        text += "author: " + bank.get_song_author() + "\n";
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        const Instrument& instrument = bank.get_instrument(i);
        if (!all && is_default(instrument, i))
            continue;
        const std::string number = std::to_string(i);
        const std::string_view category = instrument.get_text(InstrumentText::CATEGORY);
        text +=
            std::string(NUMBER_WIDTH - number.size(), ' ') + number + "  " + instrument.get_name();
        if (!category.empty()) {
            text +=
                std::string(NAME_WIDTH - std::min(NAME_WIDTH, instrument.get_name().size()), ' ');
            text.append("  ").append(category);
        }
        text += "\n";
    }
    return text;
}

std::string list_as_json(const TarqSettings& bank, bool all) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        const Instrument& instrument = bank.get_instrument(i);
        if (!all && is_default(instrument, i))
            continue;
        nlohmann::ordered_json entry{{"number", i}, {"name", instrument.get_name()}};
        for (const auto& [key, said] : SAID)
            if (!instrument.get_text(said).empty())
                entry[key] = instrument.get_text(said);
        list.push_back(std::move(entry));
    }
    nlohmann::ordered_json root;
    root["title"] = bank.get_song_title();
    root["author"] = bank.get_song_author();
    root["instruments"] = std::move(list);
    return json_text(root);
}

} // namespace

std::string list_bank(const TarqSettings& bank, const BankListOptions& options) {
    return options.json ? list_as_json(bank, options.all) : list_as_table(bank, options.all);
}

} // namespace tarquil
