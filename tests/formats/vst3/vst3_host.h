// A small VST 3 host: the plug-in by its module's entry, with lists, streams and a handler.

#pragma once

#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "formats/vst3/abi/component.h"
#include "formats/vst3/abi/controller.h"
#include "formats/vst3/abi/factory.h"
#include "formats/vst3/parameters.h"
#include "tests/formats/common/tempo_song.h"

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

    void add(ParameterId id, int32_t frame, double value) {
        auto queue = std::ranges::find(queues, id, &HostPoints::id);
        if (queue == queues.end()) {
            queues.emplace_back().id = id;
            queue = queues.end() - 1;
        }
        queue->points.push_back({frame, value});
    }

    std::vector<HostPoints> queues;
};

class HostStream final : public HostObject<Stream> {
  public:
    explicit HostStream(std::string text = "", int32_t bytes_at_once = 1 << 20)
        : bytes(std::move(text)), piece(bytes_at_once) {}

    Result read(void* buffer, int32_t count, int32_t* bytes_read) override {
        const size_t taken = bytes.copy(static_cast<char*>(buffer), size_t(std::min(count, piece)),
                                        std::min(position, bytes.size()));
        position += taken;
        *bytes_read = int32_t(taken);
        return OK;
    }
    Result write(void* buffer, int32_t count, int32_t* bytes_written) override {
        *bytes_written = std::min(count, piece);
        bytes.append(static_cast<const char*>(buffer), size_t(*bytes_written));
        return OK;
    }
    Result seek(int64_t, int32_t, int64_t*) override { return NOT_IMPLEMENTED; }
    Result tell(int64_t*) override { return NOT_IMPLEMENTED; }

    std::string bytes;
    int32_t piece;
    size_t position = 0;
};

class HostHandler final : public HostObject<ComponentHandler> {
  public:
    Result begin_edit(ParameterId id) override {
        told.push_back("begin " + std::to_string(id));
        return OK;
    }
    Result perform_edit(ParameterId id, double value) override {
        edits.add(id, 0, value);
        told.push_back("perform " + std::to_string(id));
        return OK;
    }
    Result end_edit(ParameterId id) override {
        told.push_back("end " + std::to_string(id));
        return OK;
    }
    Result restart_component(int32_t /*flags*/) override { return OK; }

    std::vector<std::string> told;
    HostChanges edits; // to be handed back with a block
};

// The module, loaded once.
inline Factory* module_factory() {
    static Factory* const factory = [] {
        void* const module = dlopen(PLUGIN_PATH, RTLD_NOW | RTLD_LOCAL);
        if (module == nullptr) {
            std::fprintf(stderr, "%s\n", dlerror());
            std::abort();
        }
        const auto enter = reinterpret_cast<bool (*)(void*)>(dlsym(module, "ModuleEntry"));
        const auto get = reinterpret_cast<Factory* (*)()>(dlsym(module, "GetPluginFactory"));
        return enter(module) ? get() : nullptr;
    }();
    return factory;
}

class Vst3Host {
  public:
    // Not yet set up for 0.  It starts with `state`, a new instance's if empty.
    explicit Vst3Host(double rate, const std::string& state = plain_state()) {
        ClassInfo info{};
        module_factory()->get_class_info(0, &info);
        void* object = nullptr;
        module_factory()->create_instance(info.id.data(), Component::ID.data(), &object);
        component = static_cast<Component*>(object);
        component->initialize(nullptr);
        processor.ask(component);
        controller.ask(component);
        controller->initialize(nullptr);
        mapping.ask(component);
        units.ask(component);
        if (!state.empty())
            load(state);
        if (rate > 0)
            setup(rate);
    }
    Vst3Host(const Vst3Host&) = delete;
    Vst3Host& operator=(const Vst3Host&) = delete;
    ~Vst3Host() {
        processor->set_processing(0);
        component->set_active(0);
        controller->terminate();
        component->terminate();
        processor.reset();
        controller.reset();
        mapping.reset();
        units.reset();
        if (component->release() != 0) {
            std::fprintf(stderr, "the plug-in is still held by someone\n");
            std::abort();
        }
    }

    Result setup(double rate) {
        component->set_active(0);
        ProcessSetup wanted{0, SAMPLE_32, 1024, rate};
        const Result result = processor->setup_processing(&wanted);
        if (result != OK)
            return result;
        component->activate_bus(AUDIO, OUTPUT, 0, 1);
        component->activate_bus(EVENT, INPUT, 0, 1);
        component->set_active(1);
        processor->set_processing(1); // answers nothing of use
        return OK;
    }
    Result run(float* left, float* right, int32_t frames) {
        float* channels[] = {left, right};
        AudioBuffers out{2, 0, {channels}};
        ProcessData data{};
        prepare(out, frames, data);
        const Result result = processor->process(&data);
        finish();
        return result;
    }
    // The same, for watches: what is before and behind the plug-in's own call.
    void prepare(AudioBuffers& out, int32_t frames, ProcessData& data) {
        data = {};
        data.sample_size = SAMPLE_32;
        data.num_frames = frames;
        data.num_outputs = 1;
        data.outputs = &out;
        data.input_changes = &changes;
        data.input_events = &events;
        data.context = context;
    }
    void finish() {
        events.events.clear();
        changes.queues.clear();
    }
    std::vector<float> run(int32_t frames) {
        std::vector<float> left(static_cast<size_t>(frames));
        std::vector<float> right(static_cast<size_t>(frames));
        run(left.data(), right.data(), frames);
        return left;
    } // the left side

    // As hosts turn MIDI into what VST 3 has.
    void add_message(int32_t frame, uint8_t status, uint8_t data1, uint8_t data2) {
        const auto channel = int16_t(status & 0x0FU);
        Event event{};
        event.frame = frame;
        switch (status & 0xF0U) {
        case 0x90:
            event.type = NOTE_ON;
            event.note_on = {channel, int16_t(data1), 0, float(data2) / 127.0F, 0, -1};
            events.add_event(&event);
            break;
        case 0x80:
            event.type = NOTE_OFF;
            event.note_off = {channel, int16_t(data1), float(data2) / 127.0F, -1, 0};
            events.add_event(&event);
            break;
        case 0xC0:
            changes.add(CHANNEL_PROGRAM_ID + uint32_t(channel), frame, data1 / 127.0);
            break;
        default: {
            const bool is_bend = (status & 0xF0U) == 0xE0;
            ParameterId id = 0;
            if (mapping->get_assignment(0, channel, int16_t(is_bend ? MAPPED_BEND : data1), &id) ==
                OK)
                changes.add(id, frame, is_bend ? (data2 * 128 + data1) / 16383.0 : data2 / 127.0);
        }
        }
    }

    std::string save(int32_t piece = 1 << 20) {
        HostStream stream("", piece);
        return component->get_state(&stream) == OK ? stream.bytes : "";
    }
    Result load(const std::string& state, int32_t piece = 1 << 20) {
        HostStream stream(state, piece);
        return component->set_state(&stream);
    }

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
inline ProcessContext context_at(uint32_t frame, double rate) {
    ProcessContext context{};
    context.state = IS_PLAYING | HAS_POSITION | HAS_TEMPO | HAS_BAR | HAS_TIME_SIGNATURE;
    context.rate = rate;
    context.position_quarters = position_at(frame, rate);
    context.bar_quarters = bar_start_at(frame, rate);
    context.quarters_per_minute = tempo_at(frame);
    context.time_signature_beats = int32_t(BEATS_PER_BAR);
    context.time_signature_unit = 4;
    return context;
}

} // namespace tarquil::vst3
