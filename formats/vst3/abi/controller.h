// VST 3's binary interface: parameters, units and programs.

#pragma once

#include "formats/vst3/abi/base.h"

namespace tarquil::vst3 {

enum RestartFlag : int32_t { VALUES_CHANGED = 1 << 2, LATENCY_CHANGED = 1 << 3 };

class ComponentHandler : public Unknown {
  public:
    static constexpr Id ID = make_id(0x93A0BEA3, 0x0BD045DB, 0x8E890B0C, 0xC1E46AC6);

    virtual Result begin_edit(ParameterId id) = 0;
    virtual Result perform_edit(ParameterId id, double value) = 0;
    virtual Result end_edit(ParameterId id) = 0;
    virtual Result restart_component(int32_t flags) = 0;

  protected:
    ~ComponentHandler() = default;
};

class ComponentHandler2 : public Unknown {
  public:
    static constexpr Id ID = make_id(0xF040B4B3, 0xA36045EC, 0xABCDC045, 0xB4D5A2CC);

    virtual Result set_dirty(Bool state) = 0;
    virtual Result request_open_editor(const char* name) = 0;
    virtual Result start_group_edit() = 0;
    virtual Result finish_group_edit() = 0;

  protected:
    ~ComponentHandler2() = default;
};

struct ParameterInfo {
    ParameterId id;
    String128 title;
    String128 short_title;
    String128 units;
    int32_t step_count; // 0: continuous
    double default_value;
    int32_t unit;
    int32_t flags;
};
static_assert(sizeof(ParameterInfo) == 792);

enum ParameterFlag : int32_t {
    CAN_AUTOMATE = 1 << 0,
    IS_LIST = 1 << 3,
    IS_HIDDEN = 1 << 4,
    IS_PROGRAM_CHANGE = 1 << 15,
};

class View;

class EditController : public PluginBase {
  public:
    static constexpr Id ID = make_id(0xDCD7BBE3, 0x7742448D, 0xA874AACC, 0x979C759E);

    virtual Result set_component_state(Stream* stream) = 0;
    virtual Result set_state(Stream* stream) = 0;
    virtual Result get_state(Stream* stream) = 0;
    virtual int32_t get_parameter_count() = 0;
    virtual Result get_parameter_info(int32_t index, ParameterInfo* info) = 0;
    virtual Result get_parameter_text(ParameterId id, double value, char16_t* text) = 0;
    virtual Result get_parameter_by_text(ParameterId id, char16_t* text, double* value) = 0;
    virtual double normalized_to_plain(ParameterId id, double value) = 0;
    virtual double plain_to_normalized(ParameterId id, double value) = 0;
    virtual double get_normalized(ParameterId id) = 0;
    virtual Result set_normalized(ParameterId id, double value) = 0;
    virtual Result set_component_handler(ComponentHandler* handler) = 0;
    virtual View* create_view(const char* name) = 0;

  protected:
    ~EditController() = default;
};

class MidiMapping : public Unknown {
  public:
    static constexpr Id ID = make_id(0xDF0FF9F7, 0x49B74669, 0xB63AB732, 0x7ADBF5E5);

    // Controllers 0..127, channel pressure and pitch bend.
    virtual Result get_assignment(int32_t bus, int16_t channel, int16_t number,
                                  ParameterId* id) = 0;

  protected:
    ~MidiMapping() = default;
};
inline constexpr unsigned MAPPED_PRESSURE = 128;
inline constexpr unsigned MAPPED_BEND = 129;

struct UnitInfo {
    int32_t id;
    int32_t parent;
    String128 name;
    int32_t program_list;
};
static_assert(sizeof(UnitInfo) == 268);
inline constexpr int32_t ROOT_UNIT = 0;
inline constexpr int32_t NO_PARENT = -1;
inline constexpr int32_t NO_PROGRAM_LIST = -1;

struct ProgramListInfo {
    int32_t id;
    String128 name;
    int32_t num_programs;
};
static_assert(sizeof(ProgramListInfo) == 264);

class UnitInformation : public Unknown {
  public:
    static constexpr Id ID = make_id(0x3D4BD6B5, 0x913A4FD2, 0xA886E768, 0xA5EB92C1);

    virtual int32_t get_unit_count() = 0;
    virtual Result get_unit_info(int32_t index, UnitInfo* info) = 0;
    virtual int32_t get_program_list_count() = 0;
    virtual Result get_program_list_info(int32_t index, ProgramListInfo* info) = 0;
    virtual Result get_program_name(int32_t list, int32_t program, char16_t* name) = 0;
    virtual Result get_program_info(int32_t list, int32_t program, const char* attribute,
                                    char16_t* value) = 0;
    virtual Result has_program_pitch_names(int32_t list, int32_t program) = 0;
    virtual Result get_program_pitch_name(int32_t list, int32_t program, int16_t key,
                                          char16_t* name) = 0;
    virtual int32_t get_selected_unit() = 0;
    virtual Result select_unit(int32_t unit) = 0;
    virtual Result get_unit_by_bus(int32_t media_type, int32_t direction, int32_t bus,
                                   int32_t channel, int32_t* unit) = 0;
    virtual Result set_unit_program_data(int32_t list_or_unit, int32_t program, Stream* stream) = 0;

  protected:
    ~UnitInformation() = default;
};

} // namespace tarquil::vst3
