// Short renders, each of a single feature.

#include "tests/golden/scenes.h"

namespace tarquil {

namespace {

// Three notes, the last held until half a second before the end.
void play_phrase(EngineHost& host, int note = 48) {
    for (int i = 0; i < 3; i++) {
        const auto start = uint32_t(i) * 9000;
        host.note_on(0, note + 7 * i, 70 + 25 * i, start);
        host.note_off(0, note + 7 * i, start + (i == 2 ? 24000 : 8000));
    }
}

using Settings = std::vector<std::pair<unsigned, int>>;

Scene scene_with(const std::string& name, const Settings& settings, int note = 48) {
    return {name, [settings, note](EngineHost& host) {
                for (const auto& [controller, value] : settings)
                    host.set(0, controller, value);
                play_phrase(host, note);
            }};
}

Scene filter_scene(const std::string& name, int type, int depth) {
    return scene_with(name, {{CTRL_FILTER1_TYPE, type},
                             {CTRL_FILTER1_DEPTH, depth},
                             {CTRL_FILTER1_CUTOFF, 60},
                             {CTRL_FILTER1_RESONANCE, 60},
                             {CTRL_FILTER1_KEY_FOLLOW, 1},
                             {CTRL_CUTOFF1_INFLUENCE1_SOURCE, INFL_ENV2},
                             {CTRL_CUTOFF1_INFLUENCE1_AMOUNT, 100},
                             {CTRL_ENV2_DECAY, 40}});
}

Scene insert_scene(const std::string& name, int type, const std::vector<int>& parameters) {
    Settings settings = {{CTRL_CHANFX1_TYPE, type}};
    for (unsigned i = 0; i < parameters.size(); i++)
        settings.emplace_back(CTRL_CHANFX1_PARAM1 + i, parameters[i]);
    return scene_with(name, settings);
}

Scene stereo_scene(const std::string& name, int type, const std::vector<int>& parameters) {
    Settings settings = {{CTRL_CHANFX2_TYPE, type}};
    for (unsigned i = 0; i < parameters.size(); i++)
        settings.emplace_back(CTRL_CHANFX2_PARAM1 + i, parameters[i]);
    return scene_with(name, settings);
}

Scene wave_scene(const std::string& name, int type) {
    return scene_with(name, {{CTRL_OSC1_TYPE, type}}, 57);
}

std::vector<Scene> make_scenes() {
    std::vector<Scene> scenes = {
        wave_scene("wave-sine", OSC_SINE),
        wave_scene("wave-saw", OSC_SAW),
        wave_scene("wave-square", OSC_SQUARE),
        wave_scene("wave-triangle", OSC_TRIANGLE),
        wave_scene("wave-noise", OSC_NOISE),
        scene_with(
            "unison-random-phase",
            {{CTRL_OSC1_MULTI_COUNT, 7}, {CTRL_OSC1_SPREAD, 70}, {CTRL_OSC1_RANDOMIZE_PHASE, 127}}),
        scene_with("unison-in-phase", {{CTRL_OSC1_MULTI_COUNT, 3}, {CTRL_OSC1_SPREAD, 50}}),
        scene_with("three-groups", {{CTRL_OSC1_OSC2_MIX, 64},
                                    {CTRL_OSC3_VOLUME, 90},
                                    {CTRL_OSC3_COARSE_TUNE, 52},
                                    {CTRL_OSC2_FINE_TUNE, 70}}),
        scene_with("ring-modulation",
                   {{CTRL_OSC1_OSC2_RING_MODULATOR, 1}, {CTRL_OSC2_COARSE_TUNE, 83}}),
        scene_with("portamento", {{CTRL_PORTAMENTO_TIME, 64}}),
        scene_with("vibrato-and-sweep", {{CTRL_OSC1_INFLUENCE_SOURCE, INFL_LFO1},
                                         {CTRL_OSC1_INFLUENCE_AMOUNT, 66},
                                         {CTRL_LFO1_SPEED, 80},
                                         {CTRL_LFO1_PHASE, 32},
                                         {CTRL_AMPLITUDE_INFLUENCE_SOURCE, INFL_LFO2},
                                         {CTRL_AMPLITUDE_INFLUENCE_AMOUNT, 90},
                                         {CTRL_LFO2_TYPE, OSC_TRIANGLE}}),
        scene_with("frequency-modulation", {{CTRL_OSC2_INFLUENCE_SOURCE, INFL_OSC1},
                                            {CTRL_OSC2_INFLUENCE_AMOUNT, 127},
                                            {CTRL_OSC1_OSC2_MIX, 127}}),
        scene_with("channel-equaliser", {{CTRL_CHAN_FILTER1_TYPE, FILTER_LOW_SHELF},
                                         {CTRL_CHAN_FILTER1_CUTOFF, 40},
                                         {CTRL_CHAN_FILTER1_GAIN, 90},
                                         {CTRL_CHAN_FILTER2_TYPE, FILTER_PEAKING_EQ},
                                         {CTRL_CHAN_FILTER2_CUTOFF, 80},
                                         {CTRL_CHAN_FILTER2_GAIN, 30},
                                         {CTRL_CHAN_FILTER3_TYPE, FILTER_NOTCH},
                                         {CTRL_CHAN_FILTER3_CUTOFF, 70},
                                         {CTRL_CHAN_FILTER4_TYPE, FILTER_ALLPASS},
                                         {CTRL_CHAN_FILTER4_CUTOFF, 60}}),
        insert_scene("insert-distortion", 1, {40, 100, 80, 30}),
        insert_scene("insert-compressor", 2, {40, 90, 20, 60, 70}),
        insert_scene("insert-lo-fi", 3, {90, 5}),
        insert_scene("insert-filter", 4, {70, 40, FILTER_BANDPASS, 3}),
        insert_scene("insert-ladder", 4, {70, 90, FILTER_LADDER_START_MARKER + 3, 0}),
        insert_scene("insert-exciter", 5, {110}),
        stereo_scene("stereo-delay", 1, {30, 45, 80}),
        stereo_scene("stereo-chorus", 2, {40, 60, 80, OSC_SINE}),
        stereo_scene("stereo-flanger", 3, {20, 40, 90, OSC_TRIANGLE, 90}),
        scene_with("reverb", {{CTRL_AUX1_LEVEL, 127}, {CTRL_REVERB_WIDTH, 100}}),
        scene_with("master-delay", {{CTRL_AUX2_LEVEL, 127}, {CTRL_DELAY_FEEDBACK, 100}}),
        scene_with("master-compressor", {{CTRL_FCMPR_BAND1_THRESHOLD, 40},
                                         {CTRL_FCMPR_BAND1_RATIO, 127},
                                         {CTRL_FCMPR_BAND2_THRESHOLD, 50},
                                         {CTRL_FCMPR_BAND2_RATIO, 60},
                                         {CTRL_FCMPR_BAND3_MAKEUP_GAIN, 100},
                                         {CTRL_FCMPR_BAND4_THRESHOLD, 30},
                                         {CTRL_FCMPR_BAND4_RATIO, 90},
                                         {CTRL_FCMPR_PRE_GAIN, 90}}),
        scene_with("retrigger", {{CTRL_RETRIGGER_BPM, 120},
                                 {CTRL_RETRIGGER_SPEEDUP, 66},
                                 {CTRL_RETRIGGER_WET_LEVEL, 127}}),
    };
    for (int type = FILTER_LOWPASS; type <= FILTER_HIGH_SHELF; type++)
        scenes.push_back(filter_scene("filter-" + std::to_string(type), type, 1 + type % 4));
    scenes.push_back(filter_scene("filter-shaped", 9 + FILTER_LOWPASS, 2));
    for (int type = FILTER_LADDER_START_MARKER; type < FILTER_LADDER_START_MARKER + 7; type++)
        scenes.push_back(filter_scene("ladder-" + std::to_string(type), type, 0));
    return scenes;
}

} // namespace

const std::vector<Scene>& golden_scenes() {
    static const std::vector<Scene> scenes = make_scenes();
    return scenes;
}

std::vector<float> render_scene(const Scene& scene) {
    EngineHost host;
    scene.prepare(host);
    return host.render(SCENE_FRAMES);
}

} // namespace tarquil
