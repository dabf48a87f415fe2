// VST 3's binary interface: what a module offers.

#pragma once

#include "formats/vst3/abi/base.h"

namespace tarquil::vst3 {

struct FactoryInfo {
    char vendor[64];
    char url[256];
    char email[128];
    int32_t flags;
};
static_assert(sizeof(FactoryInfo) == 452);
inline constexpr int32_t FACTORY_IS_UNICODE = 0x10;

struct ClassInfo {
    Id id;
    int32_t cardinality;
    char category[32];
    char name[64];
};
static_assert(sizeof(ClassInfo) == 116);
inline constexpr int32_t MANY_INSTANCES = 0x7FFFFFFF;

struct ClassInfo2 {
    Id id;
    int32_t cardinality;
    char category[32];
    char name[64];
    uint32_t flags;
    char sub_categories[128];
    char vendor[64];
    char version[64];
    char sdk_version[64];
};
static_assert(sizeof(ClassInfo2) == 440);

struct ClassInfo3 {
    Id id;
    int32_t cardinality;
    char category[32];
    char16_t name[64];
    uint32_t flags;
    char sub_categories[128];
    char16_t vendor[64];
    char16_t version[64];
    char16_t sdk_version[64];
};
static_assert(sizeof(ClassInfo3) == 696);

class Factory : public Unknown {
  public:
    static constexpr Id ID = make_id(0x7A4D811C, 0x52114A1F, 0xAED9D2EE, 0x0B43BF9F);

    virtual Result get_factory_info(FactoryInfo* info) = 0;
    virtual int32_t count_classes() = 0;
    virtual Result get_class_info(int32_t index, ClassInfo* info) = 0;
    virtual Result create_instance(const uint8_t* class_id, const uint8_t* id, void** object) = 0;

  protected:
    ~Factory() = default;
};

class Factory2 : public Factory {
  public:
    static constexpr Id ID = make_id(0x0007B650, 0xF24B4C0B, 0xA464EDB9, 0xF00B2ABB);

    virtual Result get_class_info_2(int32_t index, ClassInfo2* info) = 0;

  protected:
    ~Factory2() = default;
};

class Factory3 : public Factory2 {
  public:
    static constexpr Id ID = make_id(0x4555A2AB, 0xC1234E57, 0x9B122910, 0x36878931);

    virtual Result get_class_info_unicode(int32_t index, ClassInfo3* info) = 0;
    virtual Result set_host_context(Unknown* context) = 0;

  protected:
    ~Factory3() = default;
};

} // namespace tarquil::vst3
