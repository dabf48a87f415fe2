// The plug-in's window as CLAP's extension "gui" sees it.

#pragma once

#include <clap/ext/gui.h>

#include <memory>

namespace tarquil {

class ClapPlugin;

// All on the main thread, in the order that the extension says.
class ClapWindow {
  public:
    ClapWindow() = default;
    ClapWindow(const ClapWindow&) = delete;
    ClapWindow& operator=(const ClapWindow&) = delete;
    virtual ~ClapWindow() = default;

    virtual bool create(bool is_floating) = 0;
    virtual void destroy() = 0;
    virtual bool show() = 0;
    virtual bool hide() = 0;
    virtual void idle() = 0;

    virtual bool set_scale(double scale) = 0;
    virtual void get_size(uint32_t& width, uint32_t& height) = 0;
    virtual void adjust_size(uint32_t& width, uint32_t& height) = 0;
    virtual bool set_size(uint32_t width, uint32_t height) = 0;
    virtual bool set_parent(uintptr_t parent) = 0;
    virtual bool set_transient(uintptr_t below) = 0;
    virtual void suggest_title(const char* title) = 0;
};

// Null where the build has no windows.
std::unique_ptr<ClapWindow> make_clap_window(ClapPlugin& plugin);

} // namespace tarquil
