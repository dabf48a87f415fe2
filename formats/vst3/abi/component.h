// VST 3's binary interface: the part that sounds.

#pragma once

#include "formats/vst3/abi/base.h"

namespace tarquil::vst3 {

enum MediaType : int32_t { AUDIO, EVENT };
enum BusDirection : int32_t { INPUT, OUTPUT };
enum SampleSize : int32_t { SAMPLE_32, SAMPLE_64 };

struct BusInfo {
    int32_t media_type;
    int32_t direction;
    int32_t num_channels;
    String128 name;
    int32_t bus_type; // 0: main
    uint32_t flags;
};
static_assert(sizeof(BusInfo) == 276);
inline constexpr uint32_t BUS_IS_ACTIVE_BY_DEFAULT = 1;

struct RoutingInfo {
    int32_t media_type;
    int32_t bus;
    int32_t channel;
};

class Component : public PluginBase {
  public:
    static constexpr Id ID = make_id(0xE831FF31, 0xF2D54301, 0x928EBBEE, 0x25697802);

    virtual Result get_controller_class_id(uint8_t* class_id) = 0;
    virtual Result set_io_mode(int32_t mode) = 0;
    virtual int32_t get_bus_count(int32_t media_type, int32_t direction) = 0;
    virtual Result get_bus_info(int32_t media_type, int32_t direction, int32_t index,
                                BusInfo* info) = 0;
    virtual Result get_routing_info(RoutingInfo* in, RoutingInfo* out) = 0;
    virtual Result activate_bus(int32_t media_type, int32_t direction, int32_t index,
                                Bool state) = 0;
    virtual Result set_active(Bool state) = 0;
    virtual Result set_state(Stream* stream) = 0;
    virtual Result get_state(Stream* stream) = 0;

  protected:
    ~Component() = default;
};

using SpeakerArrangement = uint64_t;
inline constexpr SpeakerArrangement STEREO = 3; // left and right

struct ProcessSetup {
    int32_t process_mode;
    int32_t sample_size;
    int32_t max_frames;
    double rate;
};
static_assert(sizeof(ProcessSetup) == 24);

struct AudioBuffers {
    int32_t num_channels;
    uint64_t silence_flags; // bit c: channel c is silent
    union {
        float** channels_32;
        double** channels_64;
    };
};
static_assert(sizeof(AudioBuffers) == 24);

struct NoteOn {
    int16_t channel;
    int16_t key;
    float tuning;
    float velocity;
    int32_t length;
    int32_t note_id;
};

struct NoteOff {
    int16_t channel;
    int16_t key;
    float velocity;
    int32_t note_id;
    float tuning;
};

struct DataEvent {
    uint32_t size;
    uint32_t type; // 0: a system exclusive message
    const uint8_t* bytes;
};

struct KeyPressure {
    int16_t channel;
    int16_t key;
    float pressure;
    int32_t note_id;
};

enum EventType : uint16_t { NOTE_ON, NOTE_OFF, DATA, KEY_PRESSURE };

struct Event {
    int32_t bus;
    int32_t frame;
    double beat;
    uint16_t flags;
    uint16_t type; // EventType
    union {
        NoteOn note_on;
        NoteOff note_off;
        DataEvent data;
        KeyPressure key_pressure;
        // Two pointers and two numbers, the largest of the kinds that are not taken.
        struct {
            uint16_t numbers[4];
            const void* text;
        } other;
    };
};
static_assert(sizeof(Event) == 48);

class EventList : public Unknown {
  public:
    static constexpr Id ID = make_id(0x3A2C4214, 0x346349FE, 0xB2C4F397, 0xB9695A44);

    virtual int32_t get_event_count() = 0;
    virtual Result get_event(int32_t index, Event* event) = 0;
    virtual Result add_event(Event* event) = 0;

  protected:
    ~EventList() = default;
};

class ParameterPoints : public Unknown {
  public:
    static constexpr Id ID = make_id(0x01263A18, 0xED074F6F, 0x98C9D356, 0x4686F9BA);

    virtual ParameterId get_parameter_id() = 0;
    virtual int32_t get_point_count() = 0;
    virtual Result get_point(int32_t index, int32_t* frame, double* value) = 0;
    virtual Result add_point(int32_t frame, double value, int32_t* index) = 0;

  protected:
    ~ParameterPoints() = default;
};

class ParameterChanges : public Unknown {
  public:
    static constexpr Id ID = make_id(0xA4779663, 0x0BB64A56, 0xB44384A8, 0x466FEB9D);

    virtual int32_t get_parameter_count() = 0;
    virtual ParameterPoints* get_parameter_data(int32_t index) = 0;
    virtual ParameterPoints* add_parameter_data(const ParameterId* id, int32_t* index) = 0;

  protected:
    ~ParameterChanges() = default;
};

// ProcessContext::state
inline constexpr uint32_t IS_PLAYING = 1 << 1;
inline constexpr uint32_t HAS_POSITION = 1 << 9;
inline constexpr uint32_t HAS_TEMPO = 1 << 10;
inline constexpr uint32_t HAS_BAR = 1 << 11;
inline constexpr uint32_t HAS_TIME_SIGNATURE = 1 << 13;

struct ProcessContext {
    uint32_t state;
    double rate;
    int64_t position_frames;
    int64_t system_nanoseconds;
    int64_t continuous_frames;
    double position_quarters;
    double bar_quarters;
    double cycle_start_quarters;
    double cycle_end_quarters;
    double quarters_per_minute;
    int32_t time_signature_beats;
    int32_t time_signature_unit;
    uint8_t chord_key;
    uint8_t chord_root;
    int16_t chord_mask;
    int32_t smpte_subframes;
    uint32_t frames_per_second;
    uint32_t frame_rate_flags;
    int32_t frames_to_clock;
};
static_assert(sizeof(ProcessContext) == 112);

struct ProcessData {
    int32_t process_mode;
    int32_t sample_size;
    int32_t num_frames;
    int32_t num_inputs;
    int32_t num_outputs;
    AudioBuffers* inputs;
    AudioBuffers* outputs;
    ParameterChanges* input_changes;
    ParameterChanges* output_changes;
    EventList* input_events;
    EventList* output_events;
    const ProcessContext* context;
};
static_assert(sizeof(ProcessData) == 80);

class AudioProcessor : public Unknown {
  public:
    static constexpr Id ID = make_id(0x42043F99, 0xB7DA453C, 0xA569E79D, 0x9AAEC33D);

    virtual Result set_bus_arrangements(SpeakerArrangement* inputs, int32_t num_inputs,
                                        SpeakerArrangement* outputs, int32_t num_outputs) = 0;
    virtual Result get_bus_arrangement(int32_t direction, int32_t index,
                                       SpeakerArrangement* arrangement) = 0;
    virtual Result can_process_sample_size(int32_t sample_size) = 0;
    virtual uint32_t get_latency_frames() = 0;
    virtual Result setup_processing(ProcessSetup* setup) = 0;
    virtual Result set_processing(Bool state) = 0;
    virtual Result process(ProcessData* data) = 0;
    virtual uint32_t get_tail_frames() = 0;

  protected:
    ~AudioProcessor() = default;
};
inline constexpr uint32_t INFINITE_TAIL = UINT32_MAX;

// What a plug-in needs of the context.
inline constexpr uint32_t NEEDS_POSITION = 1 << 2;
inline constexpr uint32_t NEEDS_BAR = 1 << 3;
inline constexpr uint32_t NEEDS_TEMPO = 1 << 6;
inline constexpr uint32_t NEEDS_TIME_SIGNATURE = 1 << 7;
inline constexpr uint32_t NEEDS_TRANSPORT_STATE = 1 << 10;

class ProcessContextRequirements : public Unknown {
  public:
    static constexpr Id ID = make_id(0x2A654303, 0xEF764E3D, 0x95B5FE83, 0x730EF6D0);

    virtual uint32_t get_requirements() = 0;

  protected:
    ~ProcessContextRequirements() = default;
};

} // namespace tarquil::vst3
