// What hosts find in the module.

#include "formats/vst3/abi/factory.h"
#include "formats/vst3/synth.h"
#include "formats/vst3/text.h"

namespace tarquil::vst3 {

namespace {

constexpr const char* NAME = "Tarquil";
constexpr const char* VENDOR = "Tarquil";
constexpr const char* CATEGORY = "Audio Module Class";
constexpr const char* SUB_CATEGORIES = "Instrument|Synth|Stereo";
constexpr const char* INTERFACE_VERSION = "VST 3.7";

// NOLINTNEXTLINE(*-virtual-class-destructor): there is one, for as long as the module
class PluginFactory final : public Factory3 {
  public:
    Result query_interface(const uint8_t* id, void** object) override {
        const bool is_known = is_id(id, Unknown::ID) || is_id(id, Factory::ID) ||
                              is_id(id, Factory2::ID) || is_id(id, Factory3::ID);
        *object = is_known ? static_cast<Factory3*>(this) : nullptr;
        return is_known ? OK : NO_INTERFACE;
    }
    // There is one, for as long as the module.
    uint32_t add_ref() override { return 1; }
    uint32_t release() override { return 1; }

    Result get_factory_info(FactoryInfo* info) override {
        if (info == nullptr)
            return BAD_ARGUMENT;
        *info = {};
        put_text(info->vendor, VENDOR);
        info->flags = FACTORY_IS_UNICODE;
        return OK;
    }
    int32_t count_classes() override { return 1; }

    Result get_class_info(int32_t index, ClassInfo* info) override {
        if (index != 0 || info == nullptr)
            return BAD_ARGUMENT;
        *info = {.id = Synth::CLASS_ID, .cardinality = MANY_INSTANCES, .category = {}, .name = {}};
        put_text(info->category, CATEGORY);
        put_text(info->name, NAME);
        return OK;
    }
    Result get_class_info_2(int32_t index, ClassInfo2* info) override {
        if (index != 0 || info == nullptr)
            return BAD_ARGUMENT;
        fill(*info);
        return OK;
    }
    Result get_class_info_unicode(int32_t index, ClassInfo3* info) override {
        if (index != 0 || info == nullptr)
            return BAD_ARGUMENT;
        fill(*info);
        return OK;
    }
    Result set_host_context(Unknown* /*context*/) override { return OK; }

    Result create_instance(const uint8_t* class_id, const uint8_t* id, void** object) override {
        if (object == nullptr)
            return BAD_ARGUMENT;
        *object = nullptr;
        if (class_id == nullptr || id == nullptr || !is_id(class_id, Synth::CLASS_ID))
            return NO_INTERFACE;
        Component* const synth = new Synth;
        const Result found = synth->query_interface(id, object);
        synth->release();
        return found;
    }

  private:
    template <typename Info> static void fill(Info& info) {
        info = {};
        info.id = Synth::CLASS_ID;
        info.cardinality = MANY_INSTANCES;
        put_text(info.category, CATEGORY);
        put_text(info.name, NAME);
        put_text(info.sub_categories, SUB_CATEGORIES);
        put_text(info.vendor, VENDOR);
        put_text(info.version, TARQUIL_VERSION);
        put_text(info.sdk_version, INTERFACE_VERSION);
    }
};

} // namespace

} // namespace tarquil::vst3

#define TARQUIL_EXPORT extern "C" __attribute__((visibility("default")))

TARQUIL_EXPORT tarquil::vst3::Factory* GetPluginFactory() {
    static tarquil::vst3::PluginFactory factory;
    return &factory;
}

// Linux's hosts call both around the module's use.
TARQUIL_EXPORT bool ModuleEntry(void* /*module*/) {
    return true;
}
TARQUIL_EXPORT bool ModuleExit() {
    return true;
}
