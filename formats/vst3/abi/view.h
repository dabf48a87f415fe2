// VST 3's binary interface: the window, and the host's loop that it idles in.

#pragma once

#include "formats/vst3/abi/base.h"

namespace tarquil::vst3 {

inline constexpr char X11_PLATFORM[] = "X11EmbedWindowID";
inline constexpr char EDITOR_VIEW[] = "editor";

struct Rectangle {
    int32_t left;
    int32_t top;
    int32_t right;
    int32_t bottom;
};

class View;

class PlugFrame : public Unknown {
  public:
    static constexpr Id ID = make_id(0x367FAF01, 0xAFA94693, 0x8D4DA2A0, 0xED0882A3);

    virtual Result resize_view(View* view, Rectangle* size) = 0;

  protected:
    ~PlugFrame() = default;
};

class View : public Unknown {
  public:
    static constexpr Id ID = make_id(0x5BC32507, 0xD06049EA, 0xA6151B52, 0x2B755B29);

    virtual Result is_platform_supported(const char* platform) = 0;
    virtual Result attached(void* parent, const char* platform) = 0;
    virtual Result removed() = 0;
    virtual Result on_wheel(float distance) = 0;
    virtual Result on_key_down(char16_t character, int16_t code, int16_t modifiers) = 0;
    virtual Result on_key_up(char16_t character, int16_t code, int16_t modifiers) = 0;
    virtual Result get_size(Rectangle* size) = 0;
    virtual Result on_size(Rectangle* size) = 0;
    virtual Result on_focus(Bool state) = 0;
    virtual Result set_frame(PlugFrame* frame) = 0;
    virtual Result can_resize() = 0;
    virtual Result check_size(Rectangle* size) = 0;

  protected:
    ~View() = default;
};

class ContentScale : public Unknown {
  public:
    static constexpr Id ID = make_id(0x65ED9690, 0x8AC44525, 0x8AADEF7A, 0x72EA703F);

    virtual Result set_scale(float factor) = 0;

  protected:
    ~ContentScale() = default;
};

class EventHandler : public Unknown {
  public:
    static constexpr Id ID = make_id(0x561E65C9, 0x13A0496F, 0x813A2C35, 0x654D7983);

    virtual void on_descriptor(int descriptor) = 0;

  protected:
    ~EventHandler() = default;
};

class TimerHandler : public Unknown {
  public:
    static constexpr Id ID = make_id(0x10BDD94F, 0x41424774, 0x821FAD8F, 0xECA72CA9);

    virtual void on_timer() = 0;

  protected:
    ~TimerHandler() = default;
};

class RunLoop : public Unknown {
  public:
    static constexpr Id ID = make_id(0x18C35366, 0x97764F1A, 0x9C5B8385, 0x7A871389);

    virtual Result register_event_handler(EventHandler* handler, int descriptor) = 0;
    virtual Result unregister_event_handler(EventHandler* handler) = 0;
    virtual Result register_timer(TimerHandler* handler, uint64_t milliseconds) = 0;
    virtual Result unregister_timer(TimerHandler* handler) = 0;

  protected:
    ~RunLoop() = default;
};

} // namespace tarquil::vst3
