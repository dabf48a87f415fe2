// How a byte for every controller becomes key/value text and back.

#include "instrument/controller_bytes.h"

#include "common/number_text.h"

namespace tarquil {

void write_controllers(TextFileMemoryWriter& writer, std::span<const ControllerInfo> rows,
                       const ControllerBytes& bytes) {
    for (const ControllerInfo& info : rows)
        writer.write_float(info.key, map_char_to_float(info.number, bytes[info.number]));
}

void write_changed_controllers(TextFileMemoryWriter& writer, std::span<const ControllerInfo> rows,
                               const ControllerBytes& bytes, const ControllerBytes& defaults) {
    for (const ControllerInfo& info : rows) {
        if (bytes[info.number] != defaults[info.number])
            writer.write_float(info.key, map_char_to_float(info.number, bytes[info.number]));
    }
}

bool ControllerValues::take(std::string_view key, std::string_view value) {
    size_t row = expected;
    if (row >= rows.size() || key != rows[row].key) {
        const ControllerInfo* info = find_controller_by_key(key);
        if (info == nullptr || info < rows.data() || info >= rows.data() + rows.size())
            return false;
        row = size_t(info - rows.data());
    }
    expected = row + 1;
    if (values[row].empty())
        values[row] = value;
    return true;
}

void ControllerValues::apply(ControllerBytes& bytes, MissingKeys missing,
                             LoadReport* report) const {
    for (size_t row = 0; row < rows.size(); row++) {
        const ControllerInfo& info = rows[row];
        if (values[row].empty()) {
            if (missing == MissingKeys::REPORTED)
                report_missing_key(report, info.key);
            continue;
        }
        const auto value = float(text_to_number(values[row]));
        const NearestByte nearest = nearest_byte(info.number, value);
        if (!nearest.in_range)
            report_out_of_range(report, info.number, value);
        bytes[info.number] = uint8_t(nearest.byte);
    }
}

} // namespace tarquil
