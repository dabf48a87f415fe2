// The page of the bank: its slots, files and the song's title.

#include "editor/pages/file_exchange.h"
#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/widgets/amount_text.h"
#include "editor/widgets/button.h"
#include "editor/widgets/slot_grid.h"
#include "editor/widgets/text_field.h"

namespace tarquil {

namespace {

unsigned selected(UiHost& host) {
    return host.get_view_state().selected_slot;
}

void toggle_general_midi(UiHost& host) {
    EditorModel& model = host.get_model();
    const bool is_on = model.get_state().dialect == MidiDialect::GENERAL_MIDI;
    model.set_dialect(is_on ? MidiDialect::NATIVE : MidiDialect::GENERAL_MIDI);
}

void copy(UiHost& host) {
    host.set_clipboard(host.get_model().copied_text(selected(host)));
    host.show_message("Copied to the clipboard, as text", MessageKind::DONE);
}

void paste(UiHost& host) {
    const std::string reason = host.get_model().paste_text(host.get_clipboard(), selected(host));
    if (!reason.empty())
        host.show_message(reason, MessageKind::FAILED);
}

void add_slot_buttons(Page& page, Rect area) {
    constexpr double HEIGHT = 28;
    constexpr double SPACE = 6;
    const auto next = [&] {
        const Rect row = area.cut_top(HEIGHT);
        area.cut_top(SPACE);
        return row;
    };
    page.add<Button>(
        next(),
        [](UiHost& host) {
            return Button::Look{"Play on channel " +
                                std::to_string(host.get_model().channel() + 1)};
        },
        [](UiHost& host) { host.get_model().choose_program(selected(host)); },
        "Gives the selected program to the selected channel and edits it");
    page.add<Button>(
        next(), "Edit without playing",
        [](UiHost& host) { host.get_model().select_program(selected(host)); },
        "Edits the selected program without playing it: what sounds stays as it is");
    const Rect row = next();
    page.add<Button>(
        column_of(row, 0, 3, SPACE), "Initialise",
        [](UiHost& host) { host.get_model().initialise_program(selected(host)); },
        "Puts the built-in sound into its place");
    page.add<Button>(column_of(row, 1, 3, SPACE), "Copy", copy,
                     "To the desktop's clipboard, as the text of a file");
    page.add<Button>(column_of(row, 2, 3, SPACE), "Paste", paste,
                     "The clipboard's program into the selected one's place");
    page.add<Button>(
        next(), "Swap with the edited program",
        [](UiHost& host) {
            EditorModel& model = host.get_model();
            model.swap_programs(model.get_state().program, selected(host));
        },
        "Also: drag one program onto another");
    page.add<Button>(next(), "Import instrument\u2026",
                     [](UiHost& host) { import_instrument(host, selected(host)); });
    page.add<Button>(next(), "Export instrument\u2026",
                     [](UiHost& host) { export_instrument(host, selected(host)); });
}

} // namespace

Page make_bank_page() {
    Page page{"Bank", {}, {}};
    Rect rest = PAGE_AREA;
    Rect right = rest.cut_right(262);
    rest.cut_right(GAP);
    // Without a title: 22 rows of 24 take all the height.
    add_panel(page, rest, "");
    page.add<SlotGrid>(rest.inset(4, 0));
    add_slot_buttons(page, add_panel(page, right.cut_top(236), "Selected program"));
    right.cut_top(GAP);
    Rect bank = add_panel(page, right.cut_top(134), "Bank");
    page.add<Button>(bank.cut_top(28), "Import bank\u2026", import_bank,
                     "Replaces all instruments and the global settings; undo brings them back");
    bank.cut_top(6);
    page.add<Button>(bank.cut_top(28), "Export bank\u2026", export_bank);
    bank.cut_top(6);
    const Rect switches = bank.cut_top(28);
    page.add<Button>(
        column_of(switches, 0, 2, 6),
        [](UiHost& host) {
            const bool is_on = host.get_model().get_state().dialect == MidiDialect::GENERAL_MIDI;
            return Button::Look{"General MIDI", true, is_on};
        },
        toggle_general_midi,
        "Lit: controllers, pedals, bends and drums as General MIDI means them\n"
        "Else: the synthesizer's own controller numbers\nKept with the bank");
    page.add<Button>(
        column_of(switches, 1, 2, 6),
        [](UiHost& host) {
            return Button::Look{"Follow tempo", true, host.get_model().get_state().tempo_sync};
        },
        [](UiHost& host) {
            host.get_model().set_tempo_sync(!host.get_model().get_state().tempo_sync);
        },
        "Lit: delays, LFOs and the retrigger follow the host's tempo,\n"
        "with the note length nearest to their time at 120 bpm\nKept with the bank");
    right.cut_top(GAP);
    Rect song = add_panel(page, right, "Song");
    const TextStyle heading{theme::SMALL, theme::TEXT_MUTED};
    page.add<Caption>(song.cut_top(18), "Title", heading);
    page.add<TextField>(
        song.cut_top(28), "Title", "no title",
        [](EditorModel& model) { return model.get_state().song_title; },
        [](EditorModel& model, const std::string& text) {
            model.set_song(text, model.get_state().song_author);
        });
    song.cut_top(10);
    page.add<Caption>(song.cut_top(18), "Author", heading);
    page.add<TextField>(
        song.cut_top(28), "Author", "no author",
        [](EditorModel& model) { return model.get_state().song_author; },
        [](EditorModel& model, const std::string& text) {
            model.set_song(model.get_state().song_title, text);
        });
    return page;
}

} // namespace tarquil
