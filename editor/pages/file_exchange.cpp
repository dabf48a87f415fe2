// Instruments and banks to and from files that the user chooses.

#include "editor/pages/file_exchange.h"

#include <filesystem>

#include "editor/kit/window_size.h"
#include "editor/widgets/given_sound.h"
#include "editor/widgets/menu.h"
#include "editor/widgets/program_menu.h"
#include "editor/widgets/question.h"
#include "instrument/storable_text.h"

namespace tarquil {

namespace {

constexpr const char* INSTRUMENT_ENDING = ".tqi";
constexpr const char* BANK_ENDING = ".tqb";

std::string file_name(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

std::string slot_name(unsigned slot) {
    return "slot " + program_number(slot);
}

// Tells that it is done; gives the problem back.
std::string report(UiHost& host, std::string problem, const std::string& done) {
    if (problem.empty())
        host.show_message(done, MessageKind::DONE);
    return problem;
}

void say(UiHost& host, const std::string& problem) {
    if (!problem.empty())
        host.show_message(problem, MessageKind::FAILED);
}

std::string load_instrument(UiHost& host, const std::string& path, unsigned slot) {
    return report(host, host.get_model().import_instrument(path, slot),
                  "Loaded " + path + " into " + slot_name(slot));
}

std::string load_bank(UiHost& host, const std::string& path) {
    return report(host, host.get_model().import_bank(path), "Loaded the bank " + path);
}

// One of a bank's instruments.
void choose_instrument(UiHost& host, const std::string& path, unsigned slot) {
    auto bank = std::make_shared<TarqSettings>();
    const std::string problem = host.get_model().read_bank_file(path, *bank);
    if (!problem.empty()) {
        say(host, problem);
        return;
    }
    std::vector<MenuItem> items;
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        const Instrument& instrument = bank->get_instrument(i);
        items.push_back({program_number(i) + " " + instrument.get_name(), false, true,
                         [&host, bank, i, slot, path] {
                             host.get_model().load_instrument(bank->get_instrument(i), slot);
                             host.show_message("Loaded " + bank->get_instrument(i).get_name() +
                                                   " of " + path + " into " + slot_name(slot),
                                               MessageKind::DONE);
                         }});
    }
    host.open_overlay(
        std::make_unique<Menu>(Rect{WINDOW_WIDTH / 2, 60, 0, 0}, std::move(items), true));
}

void offer_bank(UiHost& host, const std::string& path, unsigned slot) {
    host.open_overlay(std::make_unique<Question>(
        file_name(path) +
            " is a bank of 128 instruments, not one instrument.\n"
            "Load one of them into " +
            slot_name(slot) + ", or replace the whole bank?",
        std::vector<Question::Answer>{
            {"Choose one\u2026", [&host, path, slot] { choose_instrument(host, path, slot); }},
            {"Load as bank", [&host, path] { say(host, load_bank(host, path)); }},
            {"Cancel", nullptr}}));
}

void offer_instrument(UiHost& host, const std::string& path) {
    const unsigned slot = host.get_view_state().selected_slot;
    host.open_overlay(std::make_unique<Question>(
        file_name(path) + " is one instrument, not a bank.\nLoad it into " + slot_name(slot) +
            ", which holds " + host.get_model().get_state().names[slot] + "?",
        std::vector<Question::Answer>{
            {"Load instrument",
             [&host, path, slot] { say(host, load_instrument(host, path, slot)); }},
            {"Cancel", nullptr}}));
}

} // namespace

void import_instrument(UiHost& host, unsigned slot) {
    host.choose_file({"Import instrument into " + slot_name(slot), INSTRUMENT_ENDING, false, "",
                      [&host, slot](const std::string& path) -> std::string {
                          if (host.get_model().kind_of_file(path) != TextKind::BANK)
                              return load_instrument(host, path, slot);
                          offer_bank(host, path, slot);
                          return "";
                      },
                      BANK_ENDING});
}

void load_dropped_file(UiHost& host, const std::string& path, unsigned channel) {
    EditorModel& model = host.get_model();
    if (model.kind_of_file(path) == TextKind::BANK) {
        offer_bank(host, path, model.get_state().channel_programs[channel]);
        return;
    }
    Instrument loaded;
    std::string problem = model.read_instrument_file(path, loaded);
    if (problem.empty() && loaded.get_name().empty())
        loaded.set_name(storable_text(std::filesystem::path(path).stem().string()));
    if (problem.empty())
        problem = model.give_to_channel(loaded, channel);
    if (problem.empty())
        tell_given_sound(host, channel);
    say(host, problem);
}

void export_instrument(UiHost& host, unsigned slot) {
    host.choose_file({"Export instrument", INSTRUMENT_ENDING, true,
                      host.get_model().get_state().names[slot] + INSTRUMENT_ENDING,
                      [&host, slot](const std::string& path) {
                          return report(host, host.get_model().export_instrument(path, slot),
                                        "Written " + path);
                      }});
}

void import_bank(UiHost& host) {
    host.choose_file({"Import bank", BANK_ENDING, false, "",
                      [&host](const std::string& path) -> std::string {
                          if (host.get_model().kind_of_file(path) != TextKind::INSTRUMENT)
                              return load_bank(host, path);
                          offer_instrument(host, path);
                          return "";
                      },
                      INSTRUMENT_ENDING});
}

void export_bank(UiHost& host) {
    host.choose_file({"Export bank", BANK_ENDING, true, std::string("bank") + BANK_ENDING,
                      [&host](const std::string& path) {
                          return report(host, host.get_model().export_bank(path),
                                        "Written " + path);
                      }});
}

} // namespace tarquil
