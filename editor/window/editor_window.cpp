// A window on the screen that shows an EditorView.

#include "editor/window/editor_window.h"

#include <chrono>
#include <cmath>
#include <cstring>
#include <optional>

#include "Application.hpp"
#include "Cairo.hpp"
#include "Window.hpp"
#include "editor/access/screen_reader.h"
#include "editor/kit/key_repeat.h"
#include "editor/view/editor_view.h"
#include "editor/window/direct_paint.h"
#include "editor/window/file_drop.h"
#include "editor/window/lifted_keys.h"
#include "editor/window/pointer_watch.h"
#include "editor/window/visible_size.h"
#include "editor/window/window_place.h"
#include "editor/window/x_error_trap.h"

namespace tarquil {

namespace {

using Clock = std::chrono::steady_clock;

constexpr uint32_t FIRST_PRINTABLE = 0x20;
constexpr uint32_t DELETE_CHARACTER = 0x7F;
constexpr uint32_t ENTER_CHARACTER = 0x0D;
constexpr uint32_t TAB_CHARACTER = 0x09;

// How often the host's window is looked for, in idles: it may go first.
constexpr unsigned IDLES_PER_CHECK = 30;

// Less could not be read, in a host's window that is smaller still.
constexpr double SMALLEST_FITTING = 0.5;

std::optional<Key> special_key(uint32_t key) {
    switch (key) {
    case DGL::kKeyBackspace:
        return Key::BACKSPACE;
    case DGL::kKeyEscape:
        return Key::ESCAPE;
    case DGL::kKeyDelete:
        return Key::DEL;
    case ENTER_CHARACTER:
        return Key::ENTER;
    case TAB_CHARACTER:
        return Key::TAB;
    case DGL::kKeyLeft:
        return Key::LEFT;
    case DGL::kKeyRight:
        return Key::RIGHT;
    case DGL::kKeyUp:
        return Key::UP;
    case DGL::kKeyDown:
        return Key::DOWN;
    case DGL::kKeyHome:
        return Key::HOME;
    case DGL::kKeyEnd:
        return Key::END;
    case DGL::kKeyPageUp:
        return Key::PAGE_UP;
    case DGL::kKeyPageDown:
        return Key::PAGE_DOWN;
    default:
        return std::nullopt;
    }
}

int view_button(uint32_t button) {
    constexpr int MIDDLE = 2;
    constexpr int RIGHT = 3;
    return button == DGL::kMouseButtonRight    ? RIGHT
           : button == DGL::kMouseButtonMiddle ? MIDDLE
                                               : 1;
}

// The page is drawn into memory and shown as one picture: every screen gets the same pixels, and
// cairo keeps nothing for a display that is closed with each window.
class Picture {
  public:
    Picture() = default;
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture() { cairo_surface_destroy(surface); }

    // True when that made it empty.
    bool resize(int width, int height) {
        if (is_of_size(width, height))
            return false;
        cairo_surface_destroy(surface);
        surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
        return true;
    }

    // True while it has that size.
    [[nodiscard]] bool is_of_size(int width, int height) const {
        return surface != nullptr && cairo_image_surface_get_width(surface) == width &&
               cairo_image_surface_get_height(surface) == height;
    }

    [[nodiscard]] cairo_surface_t* get_surface() const { return surface; }

  private:
    cairo_surface_t* surface = nullptr;
};

// By itself, since cairo leaves 32 bytes behind for each display that a picture was shown on, which
// a leak check has to know.
[[gnu::noinline]] void show_picture(cairo_t* window, cairo_surface_t* picture) {
    cairo_set_source_surface(window, picture, 0, 0);
    cairo_paint(window);
}

// In pixels, as Canvas::clip grows them.
PixelArea pixel_area(const Rect& area, double scale) {
    const auto left = int(std::floor(area.x * scale));
    const auto top = int(std::floor(area.y * scale));
    return {left, top, int(std::ceil(area.right() * scale)) - left,
            int(std::ceil(area.bottom() * scale)) - top};
}

int pixels(int units, double scale) {
    return int(std::lround(units * scale));
}

} // namespace

struct EditorWindow::Content {
    Content(EditorWindow& window, uintptr_t parent_window, EditorView& shown_view,
            const std::string& shown_title);

    // Turns the toolkit's events into the view's.
    class Surface : public DGL::CairoTopLevelWidget {
      public:
        Surface(DGL::Window& window, Content& owner)
            : DGL::CairoTopLevelWidget(window), content(owner) {}

      protected:
        void onCairoDisplay(const DGL::CairoGraphicsContext& context) override;
        bool onMouse(const MouseEvent& event) override;
        bool onMotion(const MotionEvent& event) override;
        bool onScroll(const ScrollEvent& event) override;
        bool onKeyboard(const KeyboardEvent& event) override;
        bool onCharacterInput(const CharacterInputEvent& event) override;

      private:
        template <typename Event> [[nodiscard]] PointerEvent pointer(const Event& event) const;

        Content& content;
    };

    class Frame : public DGL::Window {
      public:
        Frame(DGL::Application& application, uintptr_t parent, uint width, uint height,
              const EditorWindow& shown)
            : DGL::Window(application, parent, width, height, 1.0, false), owner(shown) {}
        bool is_closed = false;

      protected:
        bool onClose() override {
            is_closed = !owner.may_close || owner.may_close();
            return is_closed;
        }

      private:
        const EditorWindow& owner;
    };

    void show_changes();
    bool follow_size();
    // In pixels, of what is drawn: the view may have another scale already.
    [[nodiscard]] int pixels_wide() const { return pixels(EditorView::WIDTH, shown_scale); }
    [[nodiscard]] int pixels_high() const { return pixels(shown_height, shown_scale); }
    void follow_focus();
    void follow_keys();
    void check_parent();
    void fit_into_host(const XConnection& connection);
    [[nodiscard]] double wanted_scale() const { return std::min(view.scale(), fitting_scale); }
    ScreenReader::Window told_window();
    bool is_readers_key(bool is_press, uint32_t code, uint32_t modifiers);

    EditorWindow& owner;
    EditorView& view;
    const uintptr_t parent;
    double shown_scale;
    int shown_height; // in units
    // What the host's window has room for, where that is less than was chosen; and what it had at
    // the last look, since a host may be about to follow.
    double fitting_scale = EditorSettings::MAX_SCALE;
    double last_room = EditorSettings::MAX_SCALE;
    double last_chosen; // by the user or the host
    KeyRepeat key_repeat;
    LiftedKeys lifted_keys;
    bool is_dead = false; // its window is gone
    bool is_seen = false;
    bool has_keys = false;
    unsigned idles = 0;
    Picture picture;
    Clock::time_point last_tick = Clock::now();
    DGL::Application app;
    Frame frame;
    Surface surface;
    DirectPaint direct_paint;
    PointerWatch pointer_watch;
    FileDrop file_drop;
    std::string title;
    std::unique_ptr<WindowPlaceFinder> place_finder; // once it is wanted
    ScreenReader screen_reader;
    bool is_key_taken = false; // the last one, by a screen reader
};

ScreenReader::Window EditorWindow::Content::told_window() {
    return {[this] {
                Spoken spoken = view.spoken();
                spoken.name = title;
                return spoken;
            },
            [this](const std::function<void()>& action) { view.act(action); },
            [this] {
                if (place_finder == nullptr)
                    place_finder =
                        std::make_unique<WindowPlaceFinder>(frame.getNativeWindowHandle());
                return place_finder->find(shown_scale);
            }};
}

EditorWindow::Content::Content(EditorWindow& window, uintptr_t parent_window,
                               EditorView& shown_view, const std::string& shown_title)
    : owner(window), view(shown_view), parent(parent_window), shown_scale(view.scale()),
      shown_height(view.height()), last_chosen(shown_scale), app(parent_window == 0),
      frame(app, parent_window, uint(pixels(EditorView::WIDTH, shown_scale)),
            uint(pixels(shown_height, shown_scale)), window),
      surface(frame, *this), direct_paint(frame.getNativeWindowHandle()),
      pointer_watch(frame.getNativeWindowHandle()), file_drop(frame.getNativeWindowHandle()),
      title(shown_title), screen_reader(told_window()) {
    surface.setSize(uint(pixels(EditorView::WIDTH, shown_scale)),
                    uint(pixels(shown_height, shown_scale)));
    view.write_clipboard = [this](const std::string& text) {
        return frame.setClipboard(nullptr, text.c_str(), text.size() + 1);
    };
    view.read_clipboard = [this] {
        size_t size = 0;
        const auto* const text = static_cast<const char*>(frame.getClipboard(size));
        return text != nullptr ? std::string(text, strnlen(text, size)) : std::string();
    };
    const auto place = [this](int x, int y) { return Point{x / shown_scale, y / shown_scale}; };
    file_drop.moved = [this, place](int x, int y) { return view.drag_file(place(x, y)); };
    file_drop.left = [this] { view.end_file_drag(); };
    file_drop.dropped = [this, place](const std::vector<std::string>& paths, int x, int y) {
        view.drop_files(paths, place(x, y));
    };
    if (parent == 0)
        frame.setTitle(title.c_str());
    frame.show();
}

void EditorWindow::Content::Surface::onCairoDisplay(const DGL::CairoGraphicsContext& context) {
    const bool is_empty = content.picture.resize(content.pixels_wide(), content.pixels_high());
    cairo_t* cr = cairo_create(content.picture.get_surface());
    cairo_scale(cr, content.shown_scale, content.shown_scale);
    if (is_empty)
        content.view.draw(cr);
    else
        content.view.draw_changes(cr);
    cairo_destroy(cr);
    show_picture(context.handle, content.picture.get_surface());
    content.direct_paint.follow(cairo_get_target(context.handle));
}

// Past the toolkit, which would hear of it from the server at its next idle, and show it at the one
// after that.  Meters move 30 times a second: only where they have moved the window is painted.
void EditorWindow::Content::show_changes() {
    if (!direct_paint.is_possible() || !picture.is_of_size(pixels_wide(), pixels_high())) {
        surface.repaint();
        return;
    }
    cairo_t* cr = cairo_create(picture.get_surface());
    cairo_scale(cr, shown_scale, shown_scale);
    std::vector<PixelArea> areas;
    for (const Rect& area : view.draw_changes(cr))
        areas.push_back(pixel_area(area, shown_scale));
    cairo_destroy(cr);
    direct_paint.paint(picture.get_surface(), areas);
}

template <typename Event>
PointerEvent EditorWindow::Content::Surface::pointer(const Event& event) const {
    PointerEvent pointer;
    pointer.x = event.pos.getX() / content.shown_scale;
    pointer.y = event.pos.getY() / content.shown_scale;
    pointer.shift = (event.mod & DGL::kModifierShift) != 0;
    pointer.control = (event.mod & DGL::kModifierControl) != 0;
    pointer.time_ms = event.time;
    return pointer;
}

bool EditorWindow::Content::Surface::onMouse(const MouseEvent& event) {
    PointerEvent where = pointer(event);
    where.button = view_button(event.button);
    // The user may have clicked into the host meanwhile.
    if (event.press && content.has_keys)
        content.frame.focus();
    if (event.press)
        content.view.press(where);
    else
        content.view.release(where);
    return true;
}

bool EditorWindow::Content::Surface::onMotion(const MotionEvent& event) {
    content.view.move(pointer(event));
    return true;
}

bool EditorWindow::Content::Surface::onScroll(const ScrollEvent& event) {
    content.view.wheel(pointer(event), event.delta.getY());
    return true;
}

// A screen reader hears of the keys of a window of its own first; in a host's that is the host's.
bool EditorWindow::Content::is_readers_key(bool is_press, uint32_t code, uint32_t modifiers) {
    constexpr uint32_t X_SHIFT = 1;
    constexpr uint32_t X_CONTROL = 4;
    constexpr uint32_t X_ALT = 8; // Mod1, and Mod4 is the other, on all usual keyboards
    constexpr uint32_t X_SUPER = 64;
    constexpr std::pair<uint32_t, uint32_t> MASKS[] = {{DGL::kModifierShift, X_SHIFT},
                                                       {DGL::kModifierControl, X_CONTROL},
                                                       {DGL::kModifierAlt, X_ALT},
                                                       {DGL::kModifierSuper, X_SUPER}};
    if (parent != 0 || !screen_reader.hears_keys() || place_finder == nullptr)
        return false;
    ScreenReader::Keystroke key;
    key.is_press = is_press;
    key.code = code;
    for (const auto& [modifier, mask] : MASKS)
        key.modifiers |= (modifiers & modifier) != 0 ? mask : 0;
    key.symbol = place_finder->symbol_of(code, (modifiers & DGL::kModifierShift) != 0);
    key.name = WindowPlaceFinder::name_of(key.symbol);
    return screen_reader.takes_key(key);
}

bool EditorWindow::Content::Surface::onKeyboard(const KeyboardEvent& event) {
    content.is_key_taken = content.is_readers_key(event.press, event.keycode, event.mod);
    if (content.is_key_taken)
        return true;
    if (!event.press) {
        content.key_repeat.release(event.keycode, event.time);
        return false;
    }
    const bool is_struck =
        content.key_repeat.press(event.keycode, event.time, [this](uint32_t code) {
            content.view.release_computer_key(code);
        });
    const std::optional<Key> key = special_key(event.key);
    const bool shortcut = (event.mod & DGL::kModifierControl) != 0;
    if (key || shortcut) {
        KeyEvent pressed;
        pressed.key = key.value_or(Key::CHARACTER);
        if (!key && event.key >= FIRST_PRINTABLE && event.key < DELETE_CHARACTER)
            pressed.text = char(event.key);
        pressed.shift = (event.mod & DGL::kModifierShift) != 0;
        pressed.control = shortcut;
        if (content.view.key(pressed))
            return true;
    }
    constexpr uint32_t OTHERS = DGL::kModifierAlt | DGL::kModifierSuper;
    if (!key && !shortcut && (event.mod & OTHERS) == 0 && is_struck)
        content.view.press_computer_key(event.keycode, event.key);
    return false;
}

bool EditorWindow::Content::Surface::onCharacterInput(const CharacterInputEvent& event) {
    if (content.is_key_taken || event.character < FIRST_PRINTABLE ||
        event.character == DELETE_CHARACTER || (event.mod & DGL::kModifierControl) != 0)
        return false;
    // It plays, over and over perhaps: a text field that opens meanwhile gets none of it.
    if (content.view.computer_keys_down().contains(event.keycode))
        return true;
    KeyEvent typed;
    typed.text = event.string;
    typed.shift = (event.mod & DGL::kModifierShift) != 0;
    return content.view.key(typed);
}

// True when there is all to draw anew.
bool EditorWindow::Content::follow_size() {
    const bool is_new = view.scale() != last_chosen || view.height() != shown_height;
    if (is_new)
        fitting_scale = EditorSettings::MAX_SCALE; // until the host has shown what it makes of it
    last_chosen = view.scale();
    if (wanted_scale() == shown_scale && !is_new)
        return false;
    shown_scale = wanted_scale();
    shown_height = view.height();
    surface.setSize(uint(pixels_wide()), uint(pixels_high()));
    surface.repaint();
    if (is_new && owner.on_resize)
        owner.on_resize(owner.width(), owner.height());
    return true;
}

// Some hosts take a wish for a size and keep theirs: what lies beyond could not be reached.
void EditorWindow::Content::fit_into_host(const XConnection& connection) {
    const auto visible = find_visible_size(connection, frame.getNativeWindowHandle());
    is_seen = visible.has_value();
    if (!is_seen)
        return;
    // A pixel is a rounding of the host's.
    double room = std::min((visible->width + 1.0) / EditorView::WIDTH,
                           (visible->height + 1.0) / view.height());
    room = room >= view.scale() ? EditorSettings::MAX_SCALE
                                : std::max(room - 1.0 / EditorView::WIDTH, SMALLEST_FITTING);
    if (room == last_room)
        fitting_scale = room;
    last_room = room;
    // It has put a window that was too large into its middle.
    if (visible->is_corner_cut && fitting_scale < view.scale())
        move_to_corner(connection, frame.getNativeWindowHandle());
}

// In a host's window the keyboard is taken while a text field is open or keys play, and given back.
void EditorWindow::Content::follow_focus() {
    const bool wants_keys = view.wants_keys() || view.plays_computer_keys();
    if (parent == 0 || wants_keys == has_keys)
        return;
    has_keys = wants_keys;
    if (has_keys)
        frame.focus();
    else
        focus_window(parent);
}

void EditorWindow::Content::follow_keys() {
    const auto let_go = [this](uint32_t code) { view.release_computer_key(code); };
    key_repeat.look(let_go);
    lifted_keys.look(view.computer_keys_down(), let_go);
}

void EditorWindow::Content::check_parent() {
    if (parent == 0 || ++idles % IDLES_PER_CHECK != 0)
        return;
    const XErrorTrap trap;
    const XConnection connection;
    is_dead = !window_exists(connection, parent);
    if (!is_dead)
        fit_into_host(connection);
}

EditorWindow::EditorWindow(uintptr_t parent, EditorView& shown_view, const std::string& title) {
    // Held until the toolkit has one, since a server may go with its last connection.
    const XConnection connection;
    if (!connection.is_open())
        return;
    const XErrorTrap trap;
    content = std::make_unique<Content>(*this, parent, shown_view, title);
}

EditorWindow::~EditorWindow() {
    const XErrorTrap trap;
    if (content != nullptr && content->parent == 0)
        content->app.quit(); // closes the window in the order that the toolkit wants
    content.reset();
}

bool EditorWindow::is_open() const {
    return content != nullptr;
}

bool EditorWindow::is_seen() const {
    const XErrorTrap trap;
    return content->is_seen && find_visible_size(XConnection(), native_handle()).has_value();
}

bool EditorWindow::is_closed_by_user() const {
    return content != nullptr && (content->frame.is_closed || content->app.isQuitting());
}

void EditorWindow::set_title(const std::string& title) {
    const XErrorTrap trap;
    content->title = title;
    content->frame.setTitle(title.c_str());
}

void EditorWindow::stay_above(uintptr_t window) {
    const XErrorTrap trap;
    content->frame.setTransientParent(window);
}

uintptr_t EditorWindow::native_handle() const {
    return content->frame.getNativeWindowHandle();
}

void EditorWindow::idle() {
    if (content == nullptr || content->is_dead)
        return;
    content->check_parent();
    if (content->is_dead)
        return;
    const XErrorTrap trap;
    const Clock::time_point now = Clock::now();
    const std::chrono::duration<double> passed = now - content->last_tick;
    content->last_tick = now;
    // What the user has done is on the screen when the call returns.
    content->app.idle();
    content->follow_keys();
    if (content->pointer_watch.has_left())
        content->view.leave();
    content->file_drop.look();
    content->screen_reader.idle();
    const bool is_resized = content->follow_size();
    if (content->view.tick(passed.count()) || is_resized) {
        content->show_changes();
        content->app.idle();
    }
    content->direct_paint.flush_whole();
    content->follow_focus();
    if (XErrorTrap::has_caught() && content->parent != 0)
        content->is_dead = !window_exists(XConnection(), content->parent);
}

int EditorWindow::width() const {
    return pixels(EditorView::WIDTH, content->view.scale());
}

int EditorWindow::height() const {
    return pixels(content->view.height(), content->view.scale());
}

} // namespace tarquil
