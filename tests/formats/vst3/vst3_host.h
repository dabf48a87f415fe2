// A small VST 3 host: the plug-in by its module's entry, with lists, streams and a handler.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "formats/vst3/abi/component.h"
#include "formats/vst3/abi/controller.h"
#include "formats/vst3/abi/factory.h"
#include "tests/formats/common/format_song.h"

namespace tarquil::vst3 {

// The host's own objects outlive what the plug-in holds of them.
template <typename Interface> class HostObject : public Interface {
  public:
    virtual ~HostObject() = default;
    Result query_interface(const uint8_t* id, void** object) override {
        const bool is_known = is_id(id, Interface::ID);
        *object = is_known ? static_cast<Interface*>(this) : nullptr;
        references += is_known ? 1 : 0;
        return is_known ? OK : NO_INTERFACE;
    }
    uint32_t add_ref() override { return uint32_t(++references); }
    uint32_t release() override { return uint32_t(--references); }

    int references = 0;
};

class HostEvents final : public HostObject<EventList> {
  public:
    int32_t get_event_count() override { return int32_t(events.size()); }
    Result get_event(int32_t index, Event* event) override {
        *event = events[size_t(index)];
        return OK;
    }
    Result add_event(Event* event) override {
        events.push_back(*event);
        return OK;
    }

    std::vector<Event> events;
};

class HostPoints final : public HostObject<ParameterPoints> {
  public:
    struct Point {
        int32_t frame;
        double value;
    };

    ParameterId get_parameter_id() override { return id; }
    int32_t get_point_count() override { return int32_t(points.size()); }
    Result get_point(int32_t index, int32_t* frame, double* value) override {
        *frame = points[size_t(index)].frame;
        *value = points[size_t(index)].value;
        return OK;
    }
    Result add_point(int32_t, double, int32_t*) override { return NOT_IMPLEMENTED; }

    ParameterId id = 0;
    std::vector<Point> points;
};

class HostChanges final : public HostObject<ParameterChanges> {
  public:
    int32_t get_parameter_count() override { return int32_t(queues.size()); }
    ParameterPoints* get_parameter_data(int32_t index) override { return &queues[size_t(index)]; }
    ParameterPoints* add_parameter_data(const ParameterId*, int32_t*) override { return nullptr; }

    void add(ParameterId id, int32_t frame, double value);

    std::vector<HostPoints> queues;
};

class HostStream final : public HostObject<Stream> {
  public:
    explicit HostStream(std::string text = "", int32_t bytes_at_once = 1 << 20)
        : bytes(std::move(text)), piece(bytes_at_once) {}

    Result read(void* buffer, int32_t count, int32_t* bytes_read) override;
    Result write(void* buffer, int32_t count, int32_t* bytes_written) override;
    Result seek(int64_t, int32_t, int64_t*) override { return NOT_IMPLEMENTED; }
    Result tell(int64_t*) override { return NOT_IMPLEMENTED; }

    std::string bytes;
    int32_t piece;
    size_t position = 0;
};

class HostHandler final : public HostObject<ComponentHandler> {
  public:
    Result begin_edit(ParameterId id) override;
    Result perform_edit(ParameterId id, double value) override;
    Result end_edit(ParameterId id) override;
    Result restart_component(int32_t flags) override;

    std::vector<std::string> told;
    HostChanges edits; // to be handed back with a block
    int restarts = 0;
};

// The module, loaded once.
Factory* module_factory();

class Vst3Host {
  public:
    // Not yet set up for 0.  It starts with `state`, a new instance's if empty.
    explicit Vst3Host(double rate, const std::string& state = plain_state());
    Vst3Host(const Vst3Host&) = delete;
    Vst3Host& operator=(const Vst3Host&) = delete;
    ~Vst3Host();

    Result setup(double rate);
    Result run(float* left, float* right, int32_t frames);
    // The same, for watches: what is before and behind the plug-in's own call.
    void prepare(AudioBuffers& out, int32_t frames, ProcessData& data);
    void finish();
    std::vector<float> run(int32_t frames); // the left side

    void add_message(int32_t frame, uint8_t status, uint8_t data1, uint8_t data2);

    std::string save(int32_t piece = 1 << 20);
    Result load(const std::string& state, int32_t piece = 1 << 20);

    Component* component = nullptr;
    Held<AudioProcessor> processor;
    Held<EditController> controller;
    Held<MidiMapping> mapping;
    Held<UnitInformation> units;

    // Of the next block.
    HostEvents events;
    HostChanges changes;
    const ProcessContext* context = nullptr;
};

// What a host says of the song that follows a tempo at that frame of it.
ProcessContext context_at(uint32_t frame, double rate);

} // namespace tarquil::vst3
