// One byte for every controller number, to key/value text and back.

#include "instrument/controller_bytes.h"

namespace tarquil {

const ControllerBytes& default_controller_bytes() {
    static const ControllerBytes defaults = [] {
        ControllerBytes bytes{};
        for (const ControllerInfo& info : controller_rows())
            bytes[info.number] = uint8_t(default_byte(info));
        return bytes;
    }();
    return defaults;
}

void write_controllers(TextFileMemoryWriter& writer, std::span<const ControllerInfo> rows,
                       const ControllerBytes& bytes) {
    for (const ControllerInfo& info : rows)
        writer.write_float(info.key, map_char_to_float(info.number, bytes[info.number]));
}

void read_controllers(const TextFileReader& reader, std::span<const ControllerInfo> rows,
                      ControllerBytes& bytes, LoadReport* report) {
    for (const ControllerInfo& info : rows) {
        float value = 0.0F;
        if (!reader.get_float(info.key, value)) {
            report_missing_key(report, info.key);
            continue;
        }
        const NearestByte nearest = nearest_byte(info.number, value);
        if (!nearest.in_range)
            report_out_of_range(report, info.number, value);
        bytes[info.number] = uint8_t(nearest.byte);
    }
}

} // namespace tarquil
