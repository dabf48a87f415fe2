// Tells a host what the user does in the plug-in's editor.

#pragma once

#include "frame/edit_listener.h"

namespace tarquil {

class TarqVST;

class EditTeller : public EditListener {
  public:
    // The plug-in stays as long as the object.
    explicit EditTeller(TarqVST& edited_plugin) : plugin(edited_plugin) {}

    void begin_edit(unsigned number) override;
    void edited(unsigned number, int value) override;
    void end_edit(unsigned number) override;
    void programs_changed() override;
    [[nodiscard]] std::string warning() const override;

  private:
    TarqVST& plugin;
};

} // namespace tarquil
