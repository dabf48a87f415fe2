// Draws every page of the editor into PNG files, without a display, and compares them with stored
// ones.
//
//     tarquil_editor_pictures write FOLDER BANK.tqb            all pages, for looking at
//     tarquil_editor_pictures check STORED BANK.tqb OUT        differences beyond the tolerance
//     tarquil_editor_pictures update STORED BANK.tqb           new stored pictures
//
// Stored pictures have half the size of a window at 100 %; the same page at 200 %, made as small,
// must look like them, too.

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "common/characters.h"
#include "editor/model/bank_synth.h"
#include "editor/pictures/picture.h"
#include "editor/view/editor_view.h"
#include "editor/view/morph_strip.h"
#include "editor/widgets/learned_list.h"
#include "instrument/checked_load.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/filter_type.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

namespace {

// A page with the demo bank's program or the built-in sound behind it.
struct Scene {
    std::string name;
    std::string title; // of the page
    unsigned page = 0;
    bool is_demo = false;
    void (*prepare)(EditorView& view) = nullptr; // what the user does first
    ThemeKind theme = ThemeKind::DARK;
};

void set_meters(BankSynth& synth) {
    synth.meters.voices = 12;
    synth.meters.active_channels = 0x000B;
    synth.meters.peaks = {0.6F, 0.35F};
    synth.meters.band_levels = {0.5F, 0.2F, 0.1F, 0.02F};
    synth.meters.band_gains = {0.5F, 0.8F, 1.0F, 1.0F};
    for (const size_t key : {60U, 63U, 67U, 70U})
        synth.keys.channels[synth.program % NUM_CHANNELS].keys.set(key);
    synth.keys.channels[NUM_CHANNELS - 1].keys.set(36).set(43);
    NoteView& note = synth.meters.note;
    note.is_sounding = 1;
    note.note = 43;
    note.envelopes[0] = {EnvelopeStage::DECAY, 0.2F, 0.9F};
    note.envelopes[1] = {EnvelopeStage::DECAY, 0.04F, 0.75F};
    note.envelopes[2] = {EnvelopeStage::ATTACK, 0.0F, 0.0F};
    note.lfo_phases[0] = 0.15F;
    note.cutoff = 5.5F;
    note.lowest_cutoff = 4.0F;
    note.highest_cutoff = 6.3F;
    note.resonance = 2.0F;
    synth.output.resize(OutputScope::NUM_FRAMES);
    for (size_t i = 0; i < synth.output.size(); i++) {
        for (const double hertz : {110.0, 220.0, 331.0, 1470.0, 5900.0})
            synth.output[i] += float(33.0 / hertz * std::sin(0.0001424759 * hertz * double(i)));
    }
}

std::string file_name(const std::string& title) {
    std::string name;
    for (const char c : title) {
        const char lower = lower_case(c);
        name.push_back(lower >= 'a' && lower <= 'z' ? lower : '-');
    }
    return name;
}

PointerEvent at(double x, double y, int button = 1) {
    PointerEvent event;
    event.x = x;
    event.y = y;
    event.button = button;
    return event;
}

void open_program_menu(EditorView& view) {
    view.press(at(150, 22));
    for (const char* character : {"b", "a"})
        view.key({Key::CHARACTER, character, false, false});
}

void open_context_menu(EditorView& view) {
    view.press(at(544, 190, 3));
    view.move(at(560, 205));
}

void type_nonsense(EditorView& view) {
    view.press(at(544, 223));
    view.key({Key::CHARACTER, "x", false, false});
    view.key({Key::ENTER, "", false, false});
}

void show_tooltip(EditorView& view) {
    view.move(at(860, 195));
    view.tick(1.0);
}

void show_learned(EditorView& view) {
    LearnedControls learned;
    learned.learn(74, CTRL_FILTER1_CUTOFF);
    learned.learn(1, CTRL_LFO1_SPEED);
    learned.set(71, LearnedControl{CTRL_FILTER1_RESONANCE, 100, 10});
    view.get_model().set_learned("Learn", learned);
    view.open_overlay(std::make_unique<LearnedList>(view));
}

void morph(EditorView& view) {
    EditorModel& model = view.get_model();
    model.compare();
    model.set_value(CTRL_OSC2_TYPE, 4);
    model.set_value(CTRL_OSC1_OSC2_MIX, 100);
    model.compare();
    open_morph(view);
    model.set_morph(0.4);
}

void follow_tempo(EditorView& view) {
    view.get_model().set_tempo_sync(true);
    view.tick(1.0);
}

void choose_file(EditorView& view) {
    view.choose_file({"Import bank", ".tqb", false, "",
                      [](const std::string& /*path*/) { return std::string(); }});
}

unsigned page_of(const EditorView& view, const std::string& title) {
    unsigned page = 0;
    while (view.get_pages()[page].title != title)
        page++;
    return page;
}

std::vector<Scene> make_scenes(bool for_looking) {
    std::vector<Scene> scenes;
    BankSynth synth;
    EditorModel model(synth);
    EditorSettings settings;
    const EditorView view(model, settings, false);
    for (unsigned page = 0; page < view.get_pages().size(); page++) {
        const std::string& title = view.get_pages()[page].title;
        const std::string name = file_name(title);
        scenes.push_back({"demo-" + name, title, page, true});
        scenes.push_back({"default-" + name, title, page, false});
    }
    const std::string first = view.get_pages()[0].title;
    for (const ThemeKind theme : {ThemeKind::LIGHT, ThemeKind::HIGH_CONTRAST}) {
        for (unsigned page = 0; page < view.get_pages().size(); page++) {
            const std::string& title = view.get_pages()[page].title;
            const bool is_kept = title == "Oscillators" || title == "Equaliser" || title == "Bank";
            if (for_looking || is_kept)
                scenes.push_back({theme_key(theme) + ("-" + file_name(title)), title, page, true,
                                  nullptr, theme});
        }
    }
    scenes.push_back({"open-programs", first, 0, true, open_program_menu});
    scenes.push_back({"open-context", first, 0, true, open_context_menu});
    scenes.push_back({"open-entry", first, 0, true, type_nonsense});
    scenes.push_back({"open-tooltip", first, 0, true, show_tooltip});
    scenes.push_back({"open-learned", first, 0, true, show_learned});
    scenes.push_back({"open-morph", first, 0, true, morph});
    scenes.push_back({"tempo-lfos", "LFOs", page_of(view, "LFOs"), true, follow_tempo});
    if (for_looking) // what lies in the folder depends on the machine
        scenes.push_back({"open-files", first, 0, true, choose_file});
    return scenes;
}

// The first program whose controller `number` is at least `least`, else program 0.
unsigned program_with(const TarqSettings& bank, unsigned number, int least) {
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        if (bank.get_instrument(i).get_controller(number) >= least)
            return i;
    }
    return 0;
}

// One whose plot on the page has something to show.
unsigned program_for(const TarqSettings& bank, const std::string& page) {
    if (page == "Filter" || page == "Envelopes")
        return program_with(bank, CTRL_FILTER1_TYPE, FILTER_LADDER_START_MARKER);
    if (page == "Mono effects")
        return program_with(bank, CTRL_CHANFX1_TYPE, MONO_EFFECT_DISTORTION);
    if (page == "Equaliser")
        return program_with(bank, CTRL_CHAN_FILTER2_TYPE, FILTER_LOWPASS);
    if (page == "Modulation")
        return program_with(bank, CTRL_OSC2_INFLUENCE_SOURCE, INFL_ENV1);
    return 0;
}

struct Enlargement {
    int scale;         // 1 for 100 %
    int max_tile_mean; // tolerance of Picture::compare
};

// Letters are drawn anew at each scale, not enlarged.
constexpr Enlargement ENLARGEMENTS[] = {{1, 6}, {2, 16}};

Picture draw_scene(const Scene& scene, int scale, const TarqSettings& demo) {
    BankSynth synth;
    if (scene.is_demo) {
        synth.bank = demo;
        synth.program = program_for(demo, scene.title);
        set_meters(synth);
    }
    EditorModel model(synth);
    EditorSettings settings;
    settings.scale = scale;
    settings.theme = theme_key(scene.theme);
    EditorView view(model, settings, false);
    view.show_page(scene.page);
    view.tick(1.0);
    if (scene.prepare != nullptr)
        scene.prepare(view);
    Picture picture(int(WINDOW_WIDTH) * scale, view.height() * scale);
    cairo_scale(picture.context(), scale, scale);
    view.draw(picture.context()); // asks for the responses
    view.wait_for_responses();
    view.draw(picture.context());
    return picture;
}

// As large as stored ones.
Picture draw_small(const Scene& scene, int scale, const TarqSettings& demo) {
    Picture picture = draw_scene(scene, scale, demo);
    for (int size = 2 * scale; size > 1; size /= 2)
        picture = picture.halved();
    return picture;
}

int fail(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    return 1;
}

std::string png_path(const std::string& folder, const Scene& scene, int scale) {
    return folder + "/" + scene.name + (scale == 1 ? "" : "-" + std::to_string(100 * scale)) +
           ".png";
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    using namespace tarquil;
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() < 3)
        return fail("usage: tarquil_editor_pictures write|check|update FOLDER BANK.tqb [OUT]");
    const std::string& mode = arguments[0];
    const std::string& folder = arguments[1];
    const std::string out = arguments.size() > 3 ? arguments[3] : "";
    const auto demo = std::make_unique<TarqSettings>();
    if (load_bank_checked(*demo, arguments[2]) != 0)
        return fail(arguments[2] + ": cannot be loaded");
    std::error_code error;
    std::filesystem::create_directories(mode == "check" && !out.empty() ? out : folder, error);
    int num_different = 0;
    for (const Scene& scene : make_scenes(mode == "write")) {
        for (const auto [scale, max_tile_mean] : ENLARGEMENTS) {
            if (mode == "update" && scale != 1)
                continue;
            // Another theme has other colours; what a size does is the same in all.
            if (mode == "check" && scale != 1 && scene.theme != ThemeKind::DARK)
                continue;
            const std::string path = png_path(folder, scene, scale);
            const Picture picture =
                mode == "write" ? draw_scene(scene, scale, *demo) : draw_small(scene, scale, *demo);
            if (mode != "check") {
                if (!picture.save(path))
                    return fail(path + ": cannot be written");
                continue;
            }
            const std::string difference =
                picture.compare(Picture::load(png_path(folder, scene, 1)), max_tile_mean);
            if (difference.empty())
                continue;
            num_different++;
            std::fprintf(stderr, "%s at %d %%: %s\n", scene.name.c_str(), 100 * scale,
                         difference.c_str());
            if (!out.empty() && !picture.save(png_path(out, scene, scale)))
                return fail(out + ": cannot be written into");
        }
    }
    return num_different == 0 ? 0 : 1;
}
