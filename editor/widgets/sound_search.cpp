// The field that searches the browser of sounds while it is typed in.

#include "editor/widgets/sound_search.h"

#include "editor/kit/text_edit.h"
#include "editor/widgets/sound_list.h"

namespace tarquil {

namespace {

class SearchEntry : public Overlay {
  public:
    SearchEntry(const Rect& field, UiHost& ui_host, std::shared_ptr<SoundBrowser> searched)
        : area(field), host(ui_host), browser(std::move(searched)), edit(browser->search()) {}

    void draw(Canvas& canvas) override { edit.draw(canvas, area, true); }
    void press(const Pointer& pointer) override {
        if (!area.contains(pointer.at))
            finish();
    }
    void press_key(const KeyEvent& key) override {
        if (key.key == Key::TAB || key.key == Key::ESCAPE) {
            browser->end_audition(host.get_model().get_synth());
            finish();
        } else if (!walk_sounds(*browser, host, key) && edit.press_key(key) &&
                   edit.get_text() != browser->search()) {
            browser->end_audition(host.get_model().get_synth());
            browser->set_search(edit.get_text());
        }
    }
    Spoken spoken() override {
        Spoken spoken = edit.spoken("Search sounds", area);
        spoken.is_focused = true;
        if (const auto marked = browser->marked())
            spoken.help = browser->row(*marked).name;
        return spoken;
    }
    [[nodiscard]] bool takes_text() const override { return true; }

  private:
    const Rect area;
    UiHost& host;
    const std::shared_ptr<SoundBrowser> browser;
    TextEdit edit;
};

} // namespace

void SoundSearch::draw(Canvas& canvas, UiHost& /*host*/, const WidgetState& state) {
    const std::string& text = browser->search();
    canvas.fill(area, theme::WELL, 3);
    canvas.frame(area, state.is_focused ? theme::FOCUS : theme::OUTLINE, 3);
    canvas.text(area.inset(8, 2), text.empty() ? "Search name, category, tags, author" : text,
                {theme::NORMAL, text.empty() ? theme::TEXT_DIM : theme::TEXT});
}

void SoundSearch::open(UiHost& host) {
    host.open_overlay(std::make_unique<SearchEntry>(area, host, browser));
}

bool SoundSearch::press(UiHost& host, const Pointer& pointer) {
    if (pointer.button == Pointer::Button::LEFT)
        open(host);
    return false;
}

bool SoundSearch::press_key(UiHost& host, const KeyEvent& key) {
    if (key.key != Key::ENTER)
        return false;
    open(host);
    return true;
}

Spoken SoundSearch::spoken(UiHost& host) {
    Spoken spoken{SpokenRole::FIELD, "Search sounds"};
    spoken.text = browser->search();
    spoken.help = tooltip(host);
    spoken.press = [this, &host] { open(host); };
    spoken.type = [this](const std::string& text) {
        browser->set_search(text);
        return true;
    };
    return spoken;
}

} // namespace tarquil
