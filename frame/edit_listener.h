// Who is told of what the user does in a window.

#pragma once

#include <string>

namespace tarquil {

// Every call comes from the window's thread.
class EditListener {
  public:
    EditListener() = default;
    EditListener(const EditListener&) = delete;
    EditListener& operator=(const EditListener&) = delete;
    virtual ~EditListener() = default;

    // A controller's changes, each within a gesture: the knob is grasped, turned, let go.
    virtual void begin_edit(unsigned number) = 0;
    virtual void edited(unsigned number, int value) = 0; // 0..127
    virtual void end_edit(unsigned number) = 0;

    // Another program is edited, or whole sounds, names, banks or what messages mean have changed.
    virtual void programs_changed() = 0;

    // What is wrong with how this host plays, for the window; empty for nothing.
    [[nodiscard]] virtual std::string warning() const { return ""; }
};

} // namespace tarquil
