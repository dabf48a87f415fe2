// A small VST 3 host: the plug-in by its module's entry, with lists, streams and a handler.

#pragma once

#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "formats/vst3/abi/component.h"
#include "formats/vst3/abi/controller.h"
#include "formats/vst3/abi/factory.h"
#include "formats/vst3/parameters.h"
#include "tests/formats/common/tempo_song.h"
#include "tests/formats/drivers/format_driver.h"

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
    Result add_point(int32_t, double value, int32_t*) override {
        take(id, value);
        return OK;
    }

    ParameterId id = 0;
    std::function<void(ParameterId id, double value)> take; // what the plug-in puts out
    std::vector<Point> points;
};

class HostChanges final : public HostObject<ParameterChanges> {
  public:
    int32_t get_parameter_count() override { return int32_t(queues.size()); }
    ParameterPoints* get_parameter_data(int32_t index) override { return &queues[size_t(index)]; }
    ParameterPoints* add_parameter_data(const ParameterId* id, int32_t*) override {
        told.id = *id;
        return &told;
    }

    void add(ParameterId id, int32_t frame, double value) {
        auto queue = std::ranges::find(queues, id, &HostPoints::id);
        if (queue == queues.end()) {
            queues.emplace_back().id = id;
            queue = queues.end() - 1;
        }
        queue->points.push_back({frame, value});
    }

    std::vector<HostPoints> queues;
    HostPoints told;
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

class Vst3Host final : public FormatDriver {
  public:
    // Not yet set up for 0.  It starts with `state`, a new instance's if empty.
    explicit Vst3Host(double rate, const std::string& state = plain_state()) {
        told_changes.told.take = [this](ParameterId id, double value) {
            note_told({"", unsigned(id), value});
        };
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
            activate(rate);
    }
    ~Vst3Host() override {
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

    bool activate(double rate) override {
        component->set_active(0);
        ProcessSetup wanted{0, SAMPLE_32, 1024, rate};
        if (processor->setup_processing(&wanted) != OK)
            return false;
        component->activate_bus(AUDIO, OUTPUT, 0, 1);
        component->activate_bus(EVENT, INPUT, 0, 1);
        component->set_active(1);
        processor->set_processing(1); // answers nothing of use
        return true;
    }
    void deactivate() override { component->set_active(0); }

    void prepare(float* left, float* right, uint32_t frames) override {
        sides[0] = left;
        sides[1] = right;
        data = {};
        data.sample_size = SAMPLE_32;
        data.num_frames = int32_t(frames);
        data.num_outputs = 1;
        data.outputs = &out;
        data.input_changes = &changes;
        data.output_changes = &told_changes;
        data.input_events = &events;
        data.context = context;
    }
    void call() noexcept override { answer = processor->process(&data); }
    void finish() override {
        events.events.clear();
        changes.queues.clear();
    }
    uint32_t latency_frames() override { return processor->get_latency_frames(); }

    // As hosts turn MIDI into what VST 3 has.
    void add(const SongMessage& message) override {
        const auto [status, data1, data2] = message.bytes;
        const auto frame = int32_t(message.frame);
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
    void set(unsigned number, int byte, uint32_t frame) override {
        changes.add(number, int32_t(frame), normalized(*find_host_control(number), byte));
    }
    void tell_tempo(uint32_t song_frame, double rate) override {
        song_context = context_at(song_frame, rate);
        context = &song_context;
    }
    void add_specials() override {
        changes.add(EDITED_PROGRAM_ID, 20, 0.5);
        for (uint32_t channel = 0; channel < 16; channel++)
            changes.add(CHANNEL_PROGRAM_ID + channel, int32_t(channel), 0.25);
        for (int32_t frame = 0; frame < 20000; frame++) // more than there is room to sort
            changes.add(CTRL_PANNING, frame, 0.5);
        Event odd{};
        odd.type = NOTE_ON;
        odd.note_on = {-3, 200, 0, std::numeric_limits<float>::quiet_NaN(), 0, -1};
        events.add_event(&odd);
        odd.type = 999;
        events.add_event(&odd);
        static constexpr uint8_t RESET[] = {0xF0, 0x7E, 0x7F, 9, 1, 0xF7};
        odd.type = DATA;
        odd.data = {sizeof(RESET), 0, RESET};
        events.add_event(&odd);
    }

    using FormatDriver::load;
    using FormatDriver::save;
    std::string save(size_t piece) override {
        HostStream stream("", int32_t(piece));
        return component->get_state(&stream) == OK ? stream.bytes : "";
    }
    bool load(const std::string& state, size_t piece) override {
        HostStream stream(state, int32_t(piece));
        return component->set_state(&stream) == OK;
    }
    void look(unsigned round) override {
        String128 text;
        for (ParameterId id = round % 5; id < 128; id += 5) {
            const double value = controller->get_normalized(id);
            controller->get_parameter_text(id, value, text);
            controller->set_normalized(id, double(round % 10) / 9);
        }
        units->get_program_name(1, int32_t(round % 128), text);
    }
    std::vector<std::string> take_told() override {
        return take_noted([](const Told& one) {
            return value_of(*find_host_control(one.controller), one.value).value_or(-1);
        });
    }
    // Controllers that channels have no hidden parameter for can be learned only, and parameters
    // come first within a frame.
    [[nodiscard]] std::vector<SongMessage>
    passed(const std::vector<SongMessage>& messages) const override {
        std::vector<SongMessage> kept = messages;
        std::erase_if(kept, [](const SongMessage& m) {
            return (m.bytes[0] & 0xF0U) == 0xB0 && !midi_parameter_id(0, m.bytes[1]);
        });
        std::ranges::stable_sort(kept, [](const SongMessage& a, const SongMessage& b) {
            const auto is_note = [](const SongMessage& m) { return m.bytes[0] < 0xA0; };
            return a.frame != b.frame ? a.frame < b.frame : !is_note(a) && is_note(b);
        });
        return kept;
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
    // Of the last block.
    Result answer = OK;

  private:
    ProcessContext song_context{};
    float* sides[2] = {};
    AudioBuffers out{2, 0, {sides}};
    ProcessData data{};
    HostChanges told_changes;
};

} // namespace tarquil::vst3
