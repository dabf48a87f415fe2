// A message of D-Bus, written and read item by item.

#include "editor/access/bus_message.h"

#include "common/printable_text.h"

namespace tarquil {

namespace {

constexpr size_t LONGEST_TEXT = 4096; // characters

} // namespace

BusWriter::BusWriter(const DBusLibrary& library, const BusMessage& message) : dbus(library) {
    dbus.message_iter_init_append(message.get(), &place);
}

BusWriter& BusWriter::basic(int type, const void* value) {
    dbus.message_iter_append_basic(&place, type, value);
    return *this;
}

// The library ends the process that sends it anything but UTF-8.
BusWriter& BusWriter::text(const std::string& text) {
    std::string printable;
    for (size_t start = 0; start <= text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        printable +=
            (start > 0 ? "\n" : "") +
            printable_text(std::string_view(text).substr(start, end - start), LONGEST_TEXT);
        start = end + 1;
    }
    const char* const bytes = printable.c_str();
    return basic(DBUS_TYPE_STRING, &bytes);
}

BusWriter& BusWriter::path(const std::string& path) {
    const char* const bytes = path.c_str();
    return basic(DBUS_TYPE_OBJECT_PATH, &bytes);
}

BusWriter& BusWriter::integer(int32_t value) {
    return basic(DBUS_TYPE_INT32, &value);
}

BusWriter& BusWriter::word(uint32_t value) {
    return basic(DBUS_TYPE_UINT32, &value);
}

BusWriter& BusWriter::boolean(bool value) {
    const dbus_bool_t word = value ? 1 : 0;
    return basic(DBUS_TYPE_BOOLEAN, &word);
}

BusWriter& BusWriter::real(double value) {
    return basic(DBUS_TYPE_DOUBLE, &value);
}

BusWriter& BusWriter::reference(const BusReference& object) {
    return structure([&](BusWriter& inside) { inside.text(object.owner).path(object.path); });
}

BusWriter& BusWriter::container(int type, const char* of, const Fill& fill) {
    BusWriter inside(dbus);
    if (dbus.message_iter_open_container(&place, type, of, &inside.place) == 0)
        return *this;
    fill(inside);
    dbus.message_iter_close_container(&place, &inside.place);
    return *this;
}

BusWriter& BusWriter::structure(const Fill& fill) {
    return container(DBUS_TYPE_STRUCT, nullptr, fill);
}

BusWriter& BusWriter::array(const char* of, const Fill& fill) {
    return container(DBUS_TYPE_ARRAY, of, fill);
}

BusWriter& BusWriter::entry(const Fill& fill) {
    return container(DBUS_TYPE_DICT_ENTRY, nullptr, fill);
}

BusWriter& BusWriter::variant(const char* of, const Fill& fill) {
    return container(DBUS_TYPE_VARIANT, of, fill);
}

BusReader::BusReader(const DBusLibrary& library, const BusMessage& message) : dbus(&library) {
    is_at_end = dbus->message_iter_init(message.get(), &place) == 0;
}

int BusReader::type() {
    return is_at_end ? DBUS_TYPE_INVALID : dbus->message_iter_get_arg_type(&place);
}

void BusReader::advance() {
    is_at_end = dbus->message_iter_next(&place) == 0;
}

std::optional<std::string> BusReader::text() {
    if (type() != DBUS_TYPE_STRING && type() != DBUS_TYPE_OBJECT_PATH)
        return std::nullopt;
    const char* bytes = nullptr;
    dbus->message_iter_get_basic(&place, static_cast<void*>(&bytes));
    advance();
    return bytes;
}

std::optional<int32_t> BusReader::integer() {
    if (type() != DBUS_TYPE_INT32 && type() != DBUS_TYPE_UINT32)
        return std::nullopt;
    int32_t value = 0;
    dbus->message_iter_get_basic(&place, &value);
    advance();
    return value;
}

std::optional<bool> BusReader::boolean() {
    if (type() != DBUS_TYPE_BOOLEAN)
        return std::nullopt;
    dbus_bool_t value = 0;
    dbus->message_iter_get_basic(&place, &value);
    advance();
    return value != 0;
}

std::optional<double> BusReader::real() {
    if (type() != DBUS_TYPE_DOUBLE)
        return std::nullopt;
    double value = 0.0;
    dbus->message_iter_get_basic(&place, &value);
    advance();
    return value;
}

std::optional<BusReader> BusReader::inside() {
    const int outer = type();
    if (outer != DBUS_TYPE_VARIANT && outer != DBUS_TYPE_STRUCT && outer != DBUS_TYPE_ARRAY &&
        outer != DBUS_TYPE_DICT_ENTRY)
        return std::nullopt;
    BusReader reader(*dbus);
    dbus->message_iter_recurse(&place, &reader.place);
    advance();
    return reader;
}

} // namespace tarquil
