// The editor in a host's window, idled by the host's loop.

#include <atomic>
#include <cstring>
#include <utility>

#include "formats/vst3/window.h"
#include "frame/editor_frame.h"
#include "frame/host_synth.h"

namespace tarquil::vst3 {

namespace {

constexpr uint64_t IDLE_MS = 16;

// NOLINTNEXTLINE(*-virtual-class-destructor): released, never deleted
class EditorView3 final : public View, public ContentScale, public TimerHandler {
  public:
    EditorView3(Unknown& kept_owner, EditorFrame& shown_frame, int& width_at_first)
        : owner(kept_owner), frame(shown_frame), first_width(width_at_first) {
        owner.add_ref();
    }

    Result query_interface(const uint8_t* id, void** object) override {
        if (is_id(id, View::ID) || is_id(id, Unknown::ID))
            *object = static_cast<View*>(this);
        else if (is_id(id, ContentScale::ID))
            *object = static_cast<ContentScale*>(this);
        else if (is_id(id, TimerHandler::ID))
            *object = static_cast<TimerHandler*>(this);
        else
            *object = nullptr;
        if (*object == nullptr)
            return NO_INTERFACE;
        add_ref();
        return OK;
    }
    uint32_t add_ref() override { return ++references; }
    uint32_t release() override {
        const uint32_t left = --references;
        if (left == 0)
            delete this;
        return left;
    }

    Result is_platform_supported(const char* platform) override {
        return platform != nullptr && std::strcmp(platform, X11_PLATFORM) == 0 ? OK : NO;
    }

    Result attached(void* parent, const char* platform) override {
        if (parent == nullptr)
            return BAD_ARGUMENT;
        if (is_platform_supported(platform) != OK || is_shown_by_another() || is_attached)
            return NO;
        loop.ask(plug_frame);
        // Nobody would call a window without it.
        if (!loop || !open(uintptr_t(parent))) {
            loop.reset();
            return NO;
        }
        return OK;
    }

    Result removed() override {
        if (!is_attached)
            return NO;
        is_attached = false;
        loop->unregister_timer(this);
        loop.reset();
        frame.on_resize = nullptr;
        frame.close();
        return OK;
    }

    // The window gets its own from the system.
    Result on_wheel(float /*distance*/) override { return NO; }
    Result on_key_down(char16_t /*character*/, int16_t /*code*/, int16_t /*modifiers*/) override {
        return NO;
    }
    Result on_key_up(char16_t /*character*/, int16_t /*code*/, int16_t /*modifiers*/) override {
        return NO;
    }
    Result on_focus(Bool /*state*/) override { return OK; }

    Result get_size(Rectangle* size) override {
        if (size == nullptr)
            return BAD_ARGUMENT;
        *size = {0, 0, frame.width(), frame.height()};
        return OK;
    }
    Result on_size(Rectangle* size) override {
        if (size == nullptr)
            return BAD_ARGUMENT;
        if (is_shown_by_another())
            return NO;
        Rectangle fitting = *size;
        check_size(&fitting);
        if (is_left_over(fitting)) {
            wants_own_size = true;
            return OK;
        }
        shown_width = fitting.right - fitting.left;
        shown_height = fitting.bottom - fitting.top;
        frame.resize(shown_width, shown_height);
        return OK;
    }
    Result can_resize() override { return OK; }
    Result check_size(Rectangle* size) override {
        if (size == nullptr)
            return BAD_ARGUMENT;
        int width = size->right - size->left;
        int height = size->bottom - size->top;
        frame.fit_size(width, height);
        size->right = size->left + width;
        size->bottom = size->top + height;
        return OK;
    }
    Result set_frame(PlugFrame* host_frame) override {
        plug_frame = host_frame;
        return OK;
    }
    Result set_scale(float factor) override {
        return frame.suggest_scale(double(factor)) ? OK : NO;
    }

    void on_timer() override {
        frame.idle();
        has_asked = has_asked && !frame.is_seen();
        if (!std::exchange(wants_own_size, false) || plug_frame == nullptr)
            return;
        has_asked = true;
        Rectangle own{0, 0, frame.width(), frame.height()};
        plug_frame->resize_view(this, &own);
    }

  private:
    ~EditorView3() {
        removed();
        owner.release();
    }

    // Some hosts give a window that they show again the size that it had at first, though they have
    // been told of the one that was chosen since: that one is asked for, once.  No user has resized
    // what was not to be seen.
    [[nodiscard]] bool is_left_over(const Rectangle& given) {
        const int width = given.right - given.left;
        return is_attached && !has_asked && width == first_width && width != frame.width() &&
               !frame.is_seen();
    }

    // One of several views of the plug-in has its window.
    [[nodiscard]] bool is_shown_by_another() const { return frame.is_open() && !is_attached; }

    bool open(uintptr_t parent) {
        frame.on_resize = [this](int width, int height) { follow_user(width, height); };
        if (!frame.open(parent)) {
            frame.on_resize = nullptr;
            return false;
        }
        is_attached = true;
        has_asked = wants_own_size = false;
        shown_width = frame.width();
        if (first_width == 0)
            first_width = shown_width;
        shown_height = frame.height();
        loop->register_timer(this, IDLE_MS);
        return true;
    }

    void follow_user(int width, int height) {
        // The host knows what it has asked for itself.
        if (width == shown_width && height == shown_height)
            return;
        const int width_before = std::exchange(shown_width, width);
        const int height_before = std::exchange(shown_height, height);
        Rectangle size{0, 0, width, height};
        if (plug_frame != nullptr && plug_frame->resize_view(this, &size) == OK)
            return;
        frame.resize(width_before, height_before);
        shown_width = frame.width();
        shown_height = frame.height();
    }

    Unknown& owner;
    EditorFrame& frame;
    PlugFrame* plug_frame = nullptr; // the host's, which tells when it goes
    Held<RunLoop> loop;
    bool is_attached = false;
    bool wants_own_size = false;
    bool has_asked = false; // for its own size, since the window was seen
    int& first_width;       // of all windows of the plug-in
    int shown_width = 0;    // as host and user know it, and:
    int shown_height = 0;
    std::atomic<uint32_t> references{1};
};

class EditorPluginWindow final : public PluginWindow {
  public:
    EditorPluginWindow(Player& player, EditListener& listener)
        : synth(player, listener), frame(player, synth) {}

    View* make_view(Unknown& owner) override { return new EditorView3(owner, frame, first_width); }

  private:
    HostSynth synth;
    EditorFrame frame;
    int first_width = 0; // until a window has been shown
};

} // namespace

std::unique_ptr<PluginWindow> make_plugin_window(Player& player, EditListener& listener) {
    return std::make_unique<EditorPluginWindow>(player, listener);
}

} // namespace tarquil::vst3
