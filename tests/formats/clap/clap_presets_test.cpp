// Tests of the presets that the CLAP plug-in offers a host's browser.

#include <gtest/gtest.h>

#include <set>

#include "formats/clap/abi/preset_discovery.h"
#include "formats/clap/abi/preset_load.h"
#include "sounds/shipped_sounds.h"
#include "tests/formats/clap/clap_host.h"

namespace tarquil {

namespace {

struct Preset {
    std::string name;
    std::string key;
    std::string plugin;
    std::string soundpack;
    std::set<std::string> features;
};

// A browser that reads until it has `wanted` presets.
struct Browser {
    explicit Browser(const char* factory_id, size_t wanted_presets = SIZE_MAX)
        : wanted(wanted_presets) {
        const auto* factory = static_cast<const ClapPresetDiscoveryFactory*>(
            ClapTestHost::entry().get_factory(factory_id));
        if (factory == nullptr || factory->count(factory) != 1)
            throw std::runtime_error("no presets");
        EXPECT_EQ(factory->get_descriptor(factory, 1), nullptr);
        EXPECT_EQ(factory->create(factory, &indexer, "another"), nullptr);
        provider = factory->create(factory, &indexer, factory->get_descriptor(factory, 0)->id);
        EXPECT_EQ(locations.size() + soundpacks.size(), 0U); // not before init
        EXPECT_TRUE(provider->init(provider));
        EXPECT_TRUE(provider->get_metadata(provider, locations.at(0).kind, locations.at(0).location,
                                           &receiver));
    }
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;
    ~Browser() { provider->destroy(provider); }

    static Browser& of(const ClapPresetReceiver* asked) {
        return *static_cast<Browser*>(asked->receiver_data);
    }
    static Browser& of(const ClapPresetIndexer* asked) {
        return *static_cast<Browser*>(asked->indexer_data);
    }
    static Preset& last(const ClapPresetReceiver* asked) { return of(asked).presets.back(); }

    size_t wanted;
    const ClapPresetProvider* provider = nullptr;
    std::vector<ClapPresetLocation> locations;
    std::vector<std::string> soundpacks;
    std::vector<Preset> presets;

    ClapPresetReceiver receiver = {
        .receiver_data = this,
        .on_error = [](const ClapPresetReceiver*, int32_t, const char* text) { FAIL() << text; },
        .begin_preset =
            [](const ClapPresetReceiver* asked, const char* name, const char* key) {
                if (of(asked).presets.size() == of(asked).wanted)
                    return false;
                Preset& preset = of(asked).presets.emplace_back();
                preset.name = name;
                preset.key = key;
                return true;
            },
        .add_plugin_id =
            [](const ClapPresetReceiver* asked, const ClapUniversalPluginId* id) {
                last(asked).plugin = std::string(id->abi) + ":" + id->id;
            },
        .set_soundpack_id = [](const ClapPresetReceiver* asked,
                               const char* id) { last(asked).soundpack = id; },
        .set_flags = [](const ClapPresetReceiver*, uint32_t) {},
        .add_creator = [](const ClapPresetReceiver*, const char*) {},
        .set_description = [](const ClapPresetReceiver*, const char*) {},
        .set_timestamps = [](const ClapPresetReceiver*, uint64_t, uint64_t) {},
        .add_feature = [](const ClapPresetReceiver* asked,
                          const char* text) { last(asked).features.insert(text); },
        .add_extra_info = [](const ClapPresetReceiver*, const char*, const char*) {}};
    ClapPresetIndexer indexer = {
        .clap_version = CLAP_VERSION,
        .name = "test",
        .vendor = "",
        .url = "",
        .version = "1",
        .indexer_data = this,
        .declare_filetype = [](const ClapPresetIndexer*,
                               const ClapPresetFiletype*) { return true; },
        .declare_location =
            [](const ClapPresetIndexer* asked, const ClapPresetLocation* location) {
                of(asked).locations.push_back(*location);
                return true;
            },
        .declare_soundpack =
            [](const ClapPresetIndexer* asked, const ClapPresetSoundpack* soundpack) {
                of(asked).soundpacks.emplace_back(soundpack->id);
                return true;
            },
        .get_extension = [](const ClapPresetIndexer*, const char*) -> const void* {
            return nullptr;
        }};
};

TEST(ClapPresets, TheBrowserLearnsOfEverySoundUnderBothNamesOfTheFactory) {
    const Browser draft(CLAP_PRESET_DISCOVERY_DRAFT, 3);
    EXPECT_EQ(draft.presets.size(), 3U);
    const Browser browser(CLAP_PRESET_DISCOVERY);
    ASSERT_EQ(browser.locations.size(), 1U);
    EXPECT_EQ(browser.locations[0].location, nullptr);
    ASSERT_EQ(browser.presets.size(), 256U);
    std::set<std::string> keys;
    for (size_t i = 0; i < browser.presets.size(); i++) {
        const Preset& preset = browser.presets[i];
        const bool is_gm = i < MAX_INSTRUMENTS;
        const TarqSettings& bank = is_gm ? shipped_gm_bank() : shipped_originals();
        const Instrument& sound = bank.get_instrument(unsigned(i % MAX_INSTRUMENTS));
        keys.insert(preset.key);
        EXPECT_EQ(preset.name, sound.get_name());
        EXPECT_EQ(preset.plugin, std::string("clap:") + PLUGIN_ID);
        EXPECT_EQ(preset.soundpack, browser.soundpacks.at(is_gm ? 0 : 1));
        EXPECT_EQ(preset.features.count("instrument"), 1U);
        EXPECT_EQ(preset.features.count(std::string(sound.get_text(InstrumentText::CATEGORY))), 1U);
        EXPECT_GE(preset.features.size(), 3U) << preset.name; // a tag beside these
        EXPECT_EQ(preset.features.count(""), 0U);
    }
    EXPECT_EQ(keys.size(), 256U);
}

std::vector<std::string> told;

const ClapHostPresetLoad HOST_LOAD = {
    .on_error =
        [](const clap_host*, uint32_t, const char*, const char* key, int32_t, const char* text) {
            told.push_back(std::string("failed ") + (key != nullptr ? key : "null") + ": " + text);
        },
    .loaded = [](const clap_host*, uint32_t, const char*,
                 const char* key) { told.push_back(std::string("loaded ") + key); }};

TEST(ClapPresets, ALoadedSoundIsTheFirstChannelsProgram) {
    told.clear();
    ClapTestHost host(false, [](const std::string& id) -> const void* {
        return id == CLAP_PRESET_LOAD_DRAFT ? &HOST_LOAD : nullptr;
    });
    const auto& draft = host.get<ClapPluginPresetLoad>(CLAP_PRESET_LOAD_DRAFT);
    const auto& load = host.get<ClapPluginPresetLoad>(CLAP_PRESET_LOAD);
    EXPECT_EQ(&draft, &load);
    host.set(0x1000, 5);
    host.set(0x1010, 9);
    host.flush();
    const auto take = [&](const char* key) {
        return load.from_location(host.plugin, CLAP_PRESET_IN_PLUGIN, nullptr, key);
    };
    EXPECT_TRUE(take("originals/17"));
    EXPECT_EQ(host.value(0x1000), 5.0);
    EXPECT_EQ(host.value(0x1010), 5.0);
    const Instrument& sound = shipped_originals().get_instrument(17);
    EXPECT_EQ(host.text(0x1000, 5.0), "5: " + sound.get_name());
    for (const ControllerInfo& info : channel_controller_rows()) {
        if (info.number != CTRL_PITCH_BEND_MSB && info.number != CTRL_PITCH_BEND_LSB) {
            EXPECT_EQ(host.value(info.number), double(sound.get_controller(info.number)))
                << info.key;
        }
    }
    EXPECT_NE(host.rescanned & CLAP_PARAM_RESCAN_VALUES, 0U);
    EXPECT_EQ(host.dirty_marks, 1);

    const std::string before = host.save();
    for (const char* key : {"", "gm", "gm/", "gm/128", "gm/-1", "gm/1x", "other/1"})
        EXPECT_FALSE(take(key)) << key;
    EXPECT_FALSE(take(nullptr));
    EXPECT_FALSE(load.from_location(host.plugin, CLAP_PRESET_IN_FILE, "/nowhere.tqi", nullptr));
    EXPECT_FALSE(load.from_location(host.plugin, CLAP_PRESET_IN_FILE, nullptr, nullptr));
    EXPECT_FALSE(load.from_location(host.plugin, 7, nullptr, "gm/1"));
    EXPECT_EQ(host.save(), before);
    ASSERT_EQ(told.size(), 12U);
    EXPECT_EQ(told[0], "loaded originals/17");
    EXPECT_EQ(told[1], "failed : there is no such sound");
}

} // namespace

} // namespace tarquil
