// The page of the browser: all sounds that there are, to be searched and loaded.

#include "editor/model/sound_browser.h"
#include "editor/model/sound_ids.h"
#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/widgets/button.h"
#include "editor/widgets/sound_list.h"
#include "editor/widgets/sound_search.h"

namespace tarquil {

namespace {

using Browser = std::shared_ptr<SoundBrowser>;

void add_filter(Page& page, const Rect& area, const Browser& browser, const char* name,
                SoundBrowser::Filter filter) {
    page.add<Button>(
        area,
        [browser, filter, name](UiHost& /*host*/) {
            return Button::Look{name, true, browser->filter() == filter};
        },
        [browser, filter](UiHost& host) {
            browser->end_audition(host.get_model().get_synth());
            browser->set_filter(filter);
        });
}

void keep_program(UiHost& host, SoundBrowser& browser) {
    std::string path;
    const std::string problem = browser.keep_program(host.get_model(), path);
    if (problem.empty())
        host.show_message("Written " + path, MessageKind::DONE);
    else
        host.show_message(problem, MessageKind::FAILED);
}

void add_files(Page& page, Rect row, const Browser& browser) {
    page.add<Button>(
        row.cut_right(140), "Keep this program",
        [browser](UiHost& host) { keep_program(host, *browser); },
        "Writes the edited program into your folder,\n" + browser->user_folder());
    row.cut_right(6);
    page.add<Button>(
        row.cut_right(90), "Read again",
        [browser](UiHost& /*host*/) { browser->read_folder_again(); },
        "Looks for new files in your folder,\n" + browser->user_folder());
}

} // namespace

Page make_sounds_page() {
    Page page{"Sounds", {}, {}};
    const auto browser = std::make_shared<SoundBrowser>(
        SoundLibrary::usual_folder(), sound_ids_path("favourites"), sound_ids_path("recent"));
    Rect rest = add_panel(page, PAGE_AREA, "Sounds");
    Rect row = rest.cut_top(28);
    rest.cut_top(6);
    page.add<SoundSearch>(row.cut_left(262), browser);
    row.cut_left(10);
    constexpr std::pair<const char*, SoundBrowser::Filter> FILTERS[] = {
        {"All", SoundBrowser::Filter::ALL},
        {"This bank", SoundBrowser::Filter::BANK},
        {"Shipped", SoundBrowser::Filter::SHIPPED},
        {"Your files", SoundBrowser::Filter::FILES},
        {"Favourites", SoundBrowser::Filter::FAVOURITES},
        {"Recent", SoundBrowser::Filter::RECENT}};
    for (const auto& [name, filter] : FILTERS) {
        add_filter(page, row.cut_left(76), browser, name, filter);
        row.cut_left(4);
    }
    add_files(page, row, browser);
    page.add<SoundList>(rest, browser);
    return page;
}

} // namespace tarquil
