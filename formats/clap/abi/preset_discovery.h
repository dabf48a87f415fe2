// CLAP's factory "preset-discovery": what a host's browser learns of presets before there is a
// plug-in.

#pragma once

#include <clap/version.h>

#include <cstddef>
#include <cstdint>

namespace tarquil {

inline constexpr char CLAP_PRESET_DISCOVERY[] = "clap.preset-discovery-factory/2";
// The same under its name as a draft.
inline constexpr char CLAP_PRESET_DISCOVERY_DRAFT[] = "clap.preset-discovery-factory/draft-2";

// Of presets, locations and sound packs.
inline constexpr uint32_t CLAP_PRESET_IS_FACTORY_CONTENT = 1 << 0;

struct ClapUniversalPluginId {
    const char* abi; // "clap"
    const char* id;
};

// The host's side of one reading.
struct ClapPresetReceiver {
    using Text = void(CLAP_ABI*)(const ClapPresetReceiver* receiver, const char* text);

    void* receiver_data;
    void(CLAP_ABI* on_error)(const ClapPresetReceiver* receiver, int32_t os_error,
                             const char* message);
    // False: no more is wanted.
    bool(CLAP_ABI* begin_preset)(const ClapPresetReceiver* receiver, const char* name,
                                 const char* load_key);
    // Of the preset that has begun.
    void(CLAP_ABI* add_plugin_id)(const ClapPresetReceiver* receiver,
                                  const ClapUniversalPluginId* plugin_id);
    Text set_soundpack_id;
    void(CLAP_ABI* set_flags)(const ClapPresetReceiver* receiver, uint32_t flags);
    Text add_creator;
    Text set_description;
    void(CLAP_ABI* set_timestamps)(const ClapPresetReceiver* receiver, uint64_t creation,
                                   uint64_t modification);
    Text add_feature;
    void(CLAP_ABI* add_extra_info)(const ClapPresetReceiver* receiver, const char* key,
                                   const char* value);
};
static_assert(sizeof(void*) != 8 || (offsetof(ClapPresetReceiver, add_feature) == 72 &&
                                     sizeof(ClapPresetReceiver) == 88));

struct ClapPresetFiletype {
    const char* name;
    const char* description;
    const char* file_extension;
};

struct ClapPresetLocation {
    uint32_t flags;
    const char* name;
    uint32_t kind;        // ClapPresetPlace
    const char* location; // null within the plug-in
};
static_assert(sizeof(void*) != 8 || sizeof(ClapPresetLocation) == 32);

struct ClapPresetSoundpack {
    uint32_t flags;
    const char* id;
    const char* name;
    const char* description;
    const char* homepage_url;
    const char* vendor;
    const char* image_path;
    uint64_t release_timestamp; // 0: not known
};
static_assert(sizeof(void*) != 8 || sizeof(ClapPresetSoundpack) == 64);

struct ClapPresetProviderDescriptor {
    clap_version_t clap_version;
    const char* id;
    const char* name;
    const char* vendor;
};

struct ClapPresetProvider {
    const ClapPresetProviderDescriptor* descriptor;
    void* provider_data;
    bool(CLAP_ABI* init)(const ClapPresetProvider* provider);
    void(CLAP_ABI* destroy)(const ClapPresetProvider* provider);
    bool(CLAP_ABI* get_metadata)(const ClapPresetProvider* provider, uint32_t kind,
                                 const char* location, const ClapPresetReceiver* receiver);
    const void*(CLAP_ABI* get_extension)(const ClapPresetProvider* provider, const char* id);
};

// The host's side of all.
struct ClapPresetIndexer {
    clap_version_t clap_version;
    const char* name;
    const char* vendor;
    const char* url;
    const char* version;
    void* indexer_data;
    bool(CLAP_ABI* declare_filetype)(const ClapPresetIndexer* indexer,
                                     const ClapPresetFiletype* filetype);
    bool(CLAP_ABI* declare_location)(const ClapPresetIndexer* indexer,
                                     const ClapPresetLocation* location);
    bool(CLAP_ABI* declare_soundpack)(const ClapPresetIndexer* indexer,
                                      const ClapPresetSoundpack* soundpack);
    const void*(CLAP_ABI* get_extension)(const ClapPresetIndexer* indexer, const char* id);
};
static_assert(sizeof(void*) != 8 || (offsetof(ClapPresetIndexer, declare_filetype) == 56 &&
                                     sizeof(ClapPresetIndexer) == 88));

struct ClapPresetDiscoveryFactory { // any thread
    uint32_t(CLAP_ABI* count)(const ClapPresetDiscoveryFactory* factory);
    const ClapPresetProviderDescriptor*(CLAP_ABI* get_descriptor)(
        const ClapPresetDiscoveryFactory* factory, uint32_t index);
    const ClapPresetProvider*(CLAP_ABI* create)(const ClapPresetDiscoveryFactory* factory,
                                                const ClapPresetIndexer* indexer,
                                                const char* provider_id);
};

} // namespace tarquil
