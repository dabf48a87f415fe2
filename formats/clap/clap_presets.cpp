// The shipped sounds as presets of the host's browser.

#include "formats/clap/clap_presets.h"

#include <clap/plugin-features.h>

#include <charconv>
#include <memory>
#include <string>

#include "formats/clap/abi/preset_load.h"
#include "formats/clap/clap_plugin.h"
#include "formats/common/preset_banks.h"

namespace tarquil {

namespace {

constexpr ClapPresetProviderDescriptor DESCRIPTOR = {.clap_version = CLAP_VERSION,
                                                     .id = "org.tarquil.tarquil.presets",
                                                     .name = "Tarquil's sounds",
                                                     .vendor = "Tarquil"};

struct Provider {
    explicit Provider(const ClapPresetIndexer& declaring) : indexer(declaring) {}

    const ClapPresetIndexer& indexer;
    ClapPresetProvider interface {};
};

std::string soundpack_id(const PresetBank& bank) {
    return std::string(ClapPlugin::DESCRIPTOR.id) + "." + bank.symbol;
}

std::string load_key(const PresetBank& bank, unsigned program) {
    return std::string(bank.symbol) + "/" + std::to_string(program);
}

bool init(const ClapPresetProvider* provider) {
    const ClapPresetIndexer& indexer = static_cast<Provider*>(provider->provider_data)->indexer;
    constexpr ClapPresetLocation LOCATION = {.flags = CLAP_PRESET_IS_FACTORY_CONTENT,
                                             .name = "Tarquil",
                                             .kind = CLAP_PRESET_IN_PLUGIN,
                                             .location = nullptr};
    if (!indexer.declare_location(&indexer, &LOCATION))
        return false;
    for (const PresetBank& bank : PRESET_BANKS) {
        const std::string id = soundpack_id(bank);
        const ClapPresetSoundpack soundpack = {.flags = CLAP_PRESET_IS_FACTORY_CONTENT,
                                               .id = id.c_str(),
                                               .name = bank.name,
                                               .description = nullptr,
                                               .homepage_url = nullptr,
                                               .vendor = DESCRIPTOR.vendor,
                                               .image_path = nullptr,
                                               .release_timestamp = 0};
        indexer.declare_soundpack(&indexer, &soundpack); // the sounds go without as well
    }
    return true;
}

void destroy(const ClapPresetProvider* provider) {
    delete static_cast<Provider*>(provider->provider_data);
}

void add_features(const ClapPresetReceiver& receiver, const Instrument& sound) {
    const auto add = [&](const std::string& feature) {
        if (!feature.empty())
            receiver.add_feature(&receiver, feature.c_str());
    };
    add(CLAP_PLUGIN_FEATURE_INSTRUMENT);
    const std::string category(sound.get_text(InstrumentText::CATEGORY));
    add(category);
    const std::string_view tags = sound.get_text(InstrumentText::TAGS);
    for (size_t start = 0; start < tags.size();) {
        const size_t end = std::min(tags.find(' ', start), tags.size());
        const std::string tag(tags.substr(start, end - start));
        if (tag != category)
            add(tag);
        start = end + 1;
    }
}

void describe(const ClapPresetReceiver& receiver, const PresetBank& bank, const Instrument& sound) {
    const ClapUniversalPluginId plugin = {.abi = "clap", .id = ClapPlugin::DESCRIPTOR.id};
    receiver.add_plugin_id(&receiver, &plugin);
    receiver.set_soundpack_id(&receiver, soundpack_id(bank).c_str());
    receiver.set_flags(&receiver, CLAP_PRESET_IS_FACTORY_CONTENT);
    const auto tell = [&](ClapPresetReceiver::Text take, InstrumentText which) {
        const std::string text(sound.get_text(which));
        if (!text.empty())
            take(&receiver, text.c_str());
    };
    tell(receiver.add_creator, InstrumentText::AUTHOR);
    tell(receiver.set_description, InstrumentText::COMMENT);
    add_features(receiver, sound);
}

bool get_metadata(const ClapPresetProvider* /*provider*/, uint32_t kind, const char* /*location*/,
                  const ClapPresetReceiver* receiver) {
    if (kind != CLAP_PRESET_IN_PLUGIN || receiver == nullptr)
        return false;
    for (const PresetBank& bank : PRESET_BANKS) {
        for (unsigned program = 0; program < MAX_INSTRUMENTS; program++) {
            const Instrument& sound = bank.bank().get_instrument(program);
            if (!receiver->begin_preset(receiver, sound.get_name().c_str(),
                                        load_key(bank, program).c_str()))
                return true; // the host has had enough
            describe(*receiver, bank, sound);
        }
    }
    return true;
}

uint32_t count(const ClapPresetDiscoveryFactory* /*factory*/) {
    return 1;
}

const ClapPresetProviderDescriptor* get_descriptor(const ClapPresetDiscoveryFactory* /*factory*/,
                                                   uint32_t index) {
    return index == 0 ? &DESCRIPTOR : nullptr;
}

const ClapPresetProvider* create(const ClapPresetDiscoveryFactory* /*factory*/,
                                 const ClapPresetIndexer* indexer, const char* id) {
    if (indexer == nullptr || !clap_version_is_compatible(indexer->clap_version) || id == nullptr ||
        std::string_view(id) != DESCRIPTOR.id)
        return nullptr;
    auto provider = std::make_unique<Provider>(*indexer);
    provider->interface = {
        .descriptor = &DESCRIPTOR,
        .provider_data = provider.get(),
        .init = init,
        .destroy = destroy,
        .get_metadata = get_metadata,
        .get_extension = [](const ClapPresetProvider* /*provider*/,
                            const char* /*id*/) -> const void* { return nullptr; }};
    return &provider.release()->interface; // the host's destroy deletes it
}

} // namespace

const ClapPresetDiscoveryFactory CLAP_PRESETS = {
    .count = count, .get_descriptor = get_descriptor, .create = create};

const Instrument* find_clap_preset(std::string_view load_key) {
    const size_t slash = load_key.find('/');
    if (slash == std::string_view::npos)
        return nullptr;
    const std::string_view digits = load_key.substr(slash + 1);
    unsigned program = MAX_INSTRUMENTS;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), program);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size() ||
        program >= MAX_INSTRUMENTS)
        return nullptr;
    for (const PresetBank& bank : PRESET_BANKS) {
        if (load_key.substr(0, slash) == bank.symbol)
            return &bank.bank().get_instrument(program);
    }
    return nullptr;
}

} // namespace tarquil
