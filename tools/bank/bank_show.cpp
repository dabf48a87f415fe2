// `tarquil bank show`: the controllers of an instrument or of the global section.

#include "tools/bank/bank_show.h"

#include <algorithm>
#include <span>
#include <vector>

#include "common/number_text.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/controller_table.h"
#include "tools/bank/json_text.h"

namespace tarquil {

namespace {

struct Row {
    const ControllerInfo* info;
    float value; // as in the file
    int byte;
    std::string display;
};

template <typename ByteOf>
std::vector<Row> make_rows(std::span<const ControllerInfo> infos, const ByteOf& byte_of) {
    std::vector<Row> rows;
    for (const ControllerInfo& info : infos) {
        const int byte = byte_of(info.number);
        rows.push_back({&info, map_char_to_float(info.number, byte), byte,
                        controller_display(info.number, byte)});
    }
    return rows;
}

std::vector<Row> instrument_rows(const Instrument& instrument) {
    return make_rows(channel_controller_rows(),
                     [&](unsigned number) { return instrument.get_controller(number); });
}

std::vector<Row> global_rows(const TarqSettings& bank) {
    return make_rows(global_controller_rows(),
                     [&](unsigned number) { return bank.get_global_controller(number); });
}

std::string padded(const std::string& text, size_t width) {
    return text + std::string(width > text.size() ? width - text.size() : 0, ' ');
}

std::string aligned_right(const std::string& text, size_t width) {
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

std::string as_table(const std::vector<Row>& rows) {
    constexpr size_t VALUE_WIDTH = 12;
    constexpr size_t BYTE_WIDTH = 5;
    size_t key_width = 0;
    for (const Row& row : rows)
        key_width = std::max(key_width, std::string(row.info->key).size());
    std::string text;
    for (const Row& row : rows)
        text += padded(row.info->key, key_width) +
                aligned_right(number_to_text(double(row.value)), VALUE_WIDTH) +
                aligned_right(std::to_string(row.byte), BYTE_WIDTH) + "  " + row.display + "\n";
    return text;
}

nlohmann::ordered_json as_json(const std::vector<Row>& rows) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const Row& row : rows)
        list.push_back({{"key", row.info->key},
                        {"name", row.info->name},
                        {"value", text_to_number(number_to_text(double(row.value)))},
                        {"byte", row.byte},
                        {"display", row.display}});
    return list;
}

} // namespace

std::string show_instrument(const TarqSettings& bank, unsigned number, bool json) {
    const Instrument& instrument = bank.get_instrument(number);
    const std::vector<Row> rows = instrument_rows(instrument);
    if (!json)
        return "instrument " + std::to_string(number) + ": " + instrument.get_name() + "\n" +
               as_table(rows);
    nlohmann::ordered_json root;
    root["number"] = number;
    root["name"] = instrument.get_name();
    root["controllers"] = as_json(rows);
    return json_text(root);
}

std::string show_globals(const TarqSettings& bank, bool json) {
    const std::vector<Row> rows = global_rows(bank);
    if (!json)
        return as_table(rows);
    nlohmann::ordered_json root;
    root["title"] = bank.get_song_title();
    root["author"] = bank.get_song_author();
    root["controllers"] = as_json(rows);
    return json_text(root);
}

} // namespace tarquil
