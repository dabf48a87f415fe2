// The part of the plug-in that hosts show: parameters, programs, the window.

#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "formats/vst3/abi/component.h"
#include "formats/vst3/abi/controller.h"
#include "formats/vst3/window.h"
#include "frame/edit_listener.h"
#include "player/hosted_player.h"

namespace tarquil::vst3 {

// Every call comes from the host's thread for user interfaces.  It shares the player with the part
// that sounds, and is held through it.
class Controller final : public EditController,
                         public MidiMapping,
                         public UnitInformation,
                         private EditListener {
  public:
    Controller(Unknown& whole, HostedPlayer& player) : owner(whole), hosted(player) {}

    // Gives the player what the host has set and no block has brought yet: a state that is saved
    // now has it.
    void settle();

    // Null when it has no such interface.
    void* find(const uint8_t* id);

    Result query_interface(const uint8_t* id, void** object) override {
        return owner.query_interface(id, object);
    }
    uint32_t add_ref() override { return owner.add_ref(); }
    uint32_t release() override { return owner.release(); }

    Result initialize(Unknown* host) override;
    Result terminate() override;

    // The state is the other part's.
    Result set_component_state(Stream* stream) override;
    Result set_state(Stream* stream) override;
    Result get_state(Stream* stream) override;

    int32_t get_parameter_count() override;
    Result get_parameter_info(int32_t index, ParameterInfo* info) override;
    Result get_parameter_text(ParameterId id, double value, char16_t* text) override;
    Result get_parameter_by_text(ParameterId id, char16_t* text, double* value) override;
    double normalized_to_plain(ParameterId id, double value) override;
    double plain_to_normalized(ParameterId id, double value) override;
    // What the host has set last, until the player has another value.
    double get_normalized(ParameterId id) override;
    // For showing: what sounds comes with the blocks.
    Result set_normalized(ParameterId id, double value) override;
    Result set_component_handler(ComponentHandler* handler) override;
    View* create_view(const char* name) override;

    Result get_assignment(int32_t bus, int16_t channel, int16_t number, ParameterId* id) override;

    int32_t get_unit_count() override;
    Result get_unit_info(int32_t index, UnitInfo* info) override;
    int32_t get_program_list_count() override;
    Result get_program_list_info(int32_t index, ProgramListInfo* info) override;
    Result get_program_name(int32_t list, int32_t program, char16_t* name) override;
    Result get_program_info(int32_t list, int32_t program, const char* attribute,
                            char16_t* value) override;
    Result has_program_pitch_names(int32_t list, int32_t program) override;
    Result get_program_pitch_name(int32_t list, int32_t program, int16_t key,
                                  char16_t* name) override;
    int32_t get_selected_unit() override { return selected_unit; }
    Result select_unit(int32_t unit) override;
    Result get_unit_by_bus(int32_t media_type, int32_t direction, int32_t bus, int32_t channel,
                           int32_t* unit) override;
    Result set_unit_program_data(int32_t list_or_unit, int32_t program, Stream* stream) override;

  private:
    struct Shown {
        double value = 0;
        int player_value = 0; // when it was set
    };

    void begin_edit(unsigned number) override;
    void edited(unsigned number, int value) override;
    void end_edit(unsigned number) override;
    void programs_changed() override;

    Unknown& owner;
    HostedPlayer& hosted;
    Held<ComponentHandler> handler;
    std::unordered_map<ParameterId, Shown> shown;
    std::unique_ptr<PluginWindow> window;
    int32_t selected_unit = ROOT_UNIT;
};

} // namespace tarquil::vst3
