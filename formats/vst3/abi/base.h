// VST 3's binary interface: identities, results, and what every object answers.
//
// Interfaces are classes without data whose functions stand in the order of the published
// interface; on Linux their calls are plain virtual calls.

#pragma once

#include <array>
#include <cstdint>
#include <cstring>

namespace tarquil::vst3 {

using Result = int32_t;
inline constexpr Result NO_INTERFACE = -1;
inline constexpr Result OK = 0;
inline constexpr Result NO = 1; // "false"
inline constexpr Result BAD_ARGUMENT = 2;
inline constexpr Result NOT_IMPLEMENTED = 3;

using Bool = uint8_t;
using Id = std::array<uint8_t, 16>;
using ParameterId = uint32_t;
using String128 = char16_t[128];

// An identity as it is published: four words, their bytes highest first.
constexpr Id make_id(uint32_t a, uint32_t b, uint32_t c, uint32_t d) {
    Id id{};
    const uint32_t words[] = {a, b, c, d};
    for (size_t i = 0; i < id.size(); i++)
        id[i] = uint8_t(words[i / 4] >> (8 * (3 - i % 4)));
    return id;
}

inline bool is_id(const uint8_t* asked, const Id& id) {
    return std::memcmp(asked, id.data(), id.size()) == 0;
}

class Unknown {
  public:
    static constexpr Id ID = make_id(0, 0, 0xC0000000, 0x46);

    virtual Result query_interface(const uint8_t* id, void** object) = 0;
    virtual uint32_t add_ref() = 0;
    virtual uint32_t release() = 0;

  protected:
    ~Unknown() = default;
};

class PluginBase : public Unknown {
  public:
    static constexpr Id ID = make_id(0x22888DDB, 0x156E45AE, 0x8358B348, 0x08190625);

    virtual Result initialize(Unknown* host) = 0;
    virtual Result terminate() = 0;

  protected:
    ~PluginBase() = default;
};

class Stream : public Unknown {
  public:
    static constexpr Id ID = make_id(0xC3BF6EA2, 0x30994752, 0x9B6BF990, 0x1EE33E9B);

    // May take fewer bytes than it is asked to.
    virtual Result read(void* buffer, int32_t bytes, int32_t* bytes_read) = 0;
    virtual Result write(void* buffer, int32_t bytes, int32_t* bytes_written) = 0;
    virtual Result seek(int64_t position, int32_t mode, int64_t* result) = 0;
    virtual Result tell(int64_t* position) = 0;

  protected:
    ~Stream() = default;
};

// `Interface* asked` of an object, released with this.
template <typename Interface> class Held {
  public:
    Held() = default;
    explicit Held(Unknown* object) { ask(object); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() { reset(); }

    void ask(Unknown* object) {
        reset();
        void* found = nullptr;
        if (object != nullptr && object->query_interface(Interface::ID.data(), &found) == OK)
            held = static_cast<Interface*>(found);
    }
    void reset() {
        if (held != nullptr)
            held->release();
        held = nullptr;
    }
    Interface* get() const { return held; }
    Interface* operator->() const { return held; }
    explicit operator bool() const { return held != nullptr; }

  private:
    Interface* held = nullptr;
};

} // namespace tarquil::vst3
